#include "Tests/Apps/varno/Support/ProgramTest.h"

#include <nlohmann/json.hpp>

#include <filesystem>
#include <sndfile.h>

// Several files in one command.

namespace varno::test {
namespace {

using nlohmann::json;

constexpr int kFiles = 9;

class RenderJobs : public ProgramTest {
protected:
    RenderJobs() {
        for (int i = 0; i < kFiles; ++i) {
            makeMusic(name(i), kWav16, 1 + i % 2, 3000 + 500 * ((i * 5) % kFiles), 44'100);
            mNames.push_back(name(i));
        }
        std::filesystem::create_directory(mFolder.path() / "wet");
    }

    static std::string name(int i) { return "in" + std::to_string(i) + ".wav"; }

    std::vector<std::string> words(const std::vector<std::string>& options) const {
        std::vector<std::string> result = {"render", "--out-dir", "wet"};
        result.insert(result.end(), options.begin(), options.end());
        result.insert(result.end(), mNames.begin(), mNames.end());
        return result;
    }

    std::vector<json> summaries(const std::string& out) const {
        std::vector<json> result;
        std::istringstream lines(out);
        for (std::string line; std::getline(lines, line);) {
            result.push_back(json::parse(line));
        }
        return result;
    }

    std::vector<std::string> mNames;
};

TEST_F(RenderJobs, ProduceWhatSingleRendersProduce) {
    varnoOut(words({"--jobs", "4", "--set", "Hot=0.5"}));
    for (const auto& input : mNames) {
        varnoOut({"render", "--set", "Hot=0.5", input, "single-" + input});
        EXPECT_EQ(content("wet/" + input), content("single-" + input)) << input;
    }
}

TEST_F(RenderJobs, ReportInTheOrderOfTheInputs) {
    for (const std::string jobs : {"1", "2", "16"}) {
        const auto reports = summaries(varnoOut(words({"--force", "--json", "--jobs", jobs})));
        ASSERT_EQ(reports.size(), mNames.size());
        for (std::size_t i = 0; i < mNames.size(); ++i) {
            EXPECT_EQ(reports[i]["input"], mNames[i]);
            EXPECT_EQ(reports[i]["output"], "wet/" + mNames[i]);
        }
    }
}

TEST_F(RenderJobs, FailuresDoNotStopTheOthers) {
    writeFile(path("in3.wav"), "");
    std::filesystem::remove(path("in7.wav"));
    const auto outcome = varno(words({"--jobs", "3", "--json"}));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "varno: in3.wav: is empty; expected an audio file\n"
                           "varno: in7.wav: cannot be read: No such file or directory\n");
    const auto reports = summaries(outcome.out);
    ASSERT_EQ(reports.size(), mNames.size());
    EXPECT_EQ(reports[3], json::parse(R"({"input": "in3.wav", "output": "wet/in3.wav",
                                          "error": "in3.wav: is empty; expected an audio file"})"));
    for (int i = 0; i < kFiles; ++i) {
        const bool failed = i == 3 || i == 7;
        EXPECT_EQ(std::filesystem::exists(path("wet/" + name(i))), !failed) << i;
    }
}

TEST_F(RenderJobs, RefuseExistingOutputsOneByOne) {
    writeFile(path("wet/in5.wav"), "old");
    const auto outcome = varno(words({"--jobs", "2"}));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err,
              "varno: wet/in5.wav: exists already; expected a new name, or --force to replace it\n");
    EXPECT_EQ(content("wet/in5.wav"), Bytes{"old"});
}

TEST_F(RenderJobs, NeverWriteOverAnInput) {
    const Bytes before = content("in0.wav");
    const auto outcome = varno({"render", "--force", "--out-dir", ".", "in0.wav", "in1.wav"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.err, "varno: ./in0.wav: is the input file in0.wav; expected another file\n");
    EXPECT_EQ(content("in0.wav"), before);
}

TEST_F(RenderJobs, NeverWriteOverAnotherInput) {
    std::filesystem::copy(path("in0.wav"), path("wet/in1.wav"));
    const Bytes before = content("wet/in1.wav");
    const auto outcome = varno({"render", "--force", "--out-dir", "wet", "in1.wav", "wet/in1.wav"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.err, "varno: wet/in1.wav: is the input file wet/in1.wav; expected another file\n");
    std::filesystem::create_hard_link(path("wet/in1.wav"), path("other.wav"));
    const auto linked = varno({"render", "--force", "--out-dir", "wet", "in1.wav", "other.wav"});
    EXPECT_EQ(linked.status, 2);
    EXPECT_EQ(linked.err, "varno: wet/in1.wav: is the input file other.wav; expected another file\n");
    EXPECT_EQ(content("wet/in1.wav"), before);
}

TEST_F(RenderJobs, NeedTheirFolder) {
    const auto outcome = varno({"render", "--out-dir", "none", "in0.wav"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err,
              "varno: none/in0.wav: cannot be written: No such file or directory; expected a folder "
              "that exists and can be written to\n");
}

TEST_F(RenderJobs, DryRunChecksThemAll) {
    writeFile(path("in2.wav"), "no audio");
    const auto outcome = varno(words({"--dry-run", "--json"}));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(summaries(outcome.out).size(), mNames.size());
    EXPECT_TRUE(std::filesystem::is_empty(path("wet")));
}

TEST_F(RenderJobs, SaveSettingsOnce) {
    varnoOut(words({"--jobs", "2", "--set", "Hot=0.5", "--save-preset", "p.txt"}));
    EXPECT_NE(readFile(path("p.txt")).find("Hottitude 0.5000000000"), std::string::npos);
}

} // namespace
} // namespace varno::test
