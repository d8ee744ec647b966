#include "Render/GroupRender.h"
#include "Tests/Apps/varno/Support/ProgramTest.h"
#include "Tests/Support/Eventually.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <map>
#include <sndfile.h>
#include <sys/stat.h>

// Several files in one command.

namespace varno::test {
namespace {

using nlohmann::json;
using testing::Contains;
using testing::HasSubstr;
using testing::UnorderedElementsAreArray;

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

TEST(FilesTogether, AreAsManyAsLeaveNoThreadWithoutWork) {
    using Numbers = std::vector<std::size_t>;
    EXPECT_EQ(filesTogether(0, 2), Numbers{});
    EXPECT_EQ(filesTogether(16, 2), (Numbers{4, 4, 4, 2, 2}));
    EXPECT_EQ(filesTogether(6, 2), (Numbers{3, 2, 1}));
    EXPECT_EQ(filesTogether(2, 2), (Numbers{1, 1}));
    EXPECT_EQ(filesTogether(10, 2), (Numbers{4, 3, 2, 1}));
    EXPECT_EQ(filesTogether(3, 4), (Numbers{1, 1, 1}));
    EXPECT_EQ(filesTogether(9, 1), (Numbers{4, 4, 1}));
}

// Files that two threads render side by side: of two rates, one and two channels, and several lengths, some
// of which are those of others.
class RenderTogether : public ProgramTest {
protected:
    static constexpr int kTogether = 14;

    RenderTogether() {
        for (int i = 0; i < kTogether; ++i) {
            mNames.push_back("in" + std::to_string(i) + ".wav");
            makeMusic(mNames.back(), kWav16, i % 5 == 4 ? 1 : 2, 33'000 + 4000 * (i % 3),
                      i % 6 == 5 ? 44'100 : 48'000);
        }
        std::filesystem::create_directory(mFolder.path() / "alone");
        std::filesystem::create_directory(mFolder.path() / "together");
        writeFile(path("steps.csv"), "0,Hot,0.4\n0.02,Gain,0.7\n0.7,Mix,0.5\n");
    }

    std::vector<std::string> words(const std::string& folder, const std::vector<std::string>& options) const {
        std::vector<std::string> result = {"render", "--out-dir", folder};
        result.insert(result.end(), options.begin(), options.end());
        result.insert(result.end(), mNames.begin(), mNames.end());
        return result;
    }

    void expectEqualOutputs(const std::vector<std::string>& names) const {
        for (const std::string& name : names) {
            EXPECT_EQ(content("together/" + name), content("alone/" + name)) << name;
        }
    }

    std::vector<std::string> mNames;
};

TEST_F(RenderTogether, HaveTheBytesThatTheyHaveAlone) {
    for (const std::vector<std::string>& options : std::vector<std::vector<std::string>>{
             {"--set", "Hot=0.4"}, {"--automate", "steps.csv", "--tail", "0.1", "--block", "480"}}) {
        std::vector<std::string> more = options;
        more.insert(more.end(), {"--force", "--jobs", "1"});
        varnoOut(words("alone", more));
        more.back() = "2";
        varnoOut(words("together", more));
        expectEqualOutputs(mNames);
    }
}

TEST_F(RenderTogether, ReportTheSameButForTheTime) {
    const auto reports = [&](const std::string& folder, const std::string& jobs) {
        std::map<std::string, json> result;
        std::istringstream lines(varnoOut(words(folder, {"--json", "--jobs", jobs})));
        for (std::string line; std::getline(lines, line);) {
            json report = json::parse(line);
            report.erase("output");
            report.erase("elapsed_s");
            report.erase("speed_x");
            result[report["input"]] = report;
        }
        return result;
    };
    const auto alone = reports("alone", "1");
    EXPECT_EQ(alone.size(), mNames.size());
    EXPECT_EQ(reports("together", "2"), alone);
}

TEST_F(RenderTogether, AFileThatFailsLeavesTheOthersAlone) {
    makeMusic("in1.wav", kWav16, 2, 100'000); // fails when it has been written in part
    varnoOut(words("alone", {"--jobs", "1"}));
    std::string command = "ulimit -f 200 && exec";
    for (const auto& word : varnoWords(words("together", {"--jobs", "2"}))) {
        command += " '" + word + "'";
    }
    const auto outcome = run({"bash", "-c", command}, {.folder = mFolder.path()});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "varno: together/in1.wav: cannot be written: File too large\n");
    EXPECT_FALSE(std::filesystem::exists(path("together/in1.wav")));
    std::vector<std::string> others = mNames;
    std::erase(others, "in1.wav");
    expectEqualOutputs(others);
}

// Pipes are rendered alone: one that waits for its content keeps no other file waiting.
TEST_F(RenderTogether, APipeKeepsNoOtherFileWaiting) {
    std::filesystem::rename(path("in0.wav"), path("content.wav"));
    ASSERT_EQ(mkfifo(path("in0.wav").c_str(), 0600), 0);
    Subprocess program(varnoWords(words("together", {"--jobs", "2"})), {.folder = mFolder.path()});
    EXPECT_TRUE(eventually([&] {
        return std::ranges::all_of(mNames, [&](const std::string& name) {
            return name == "in0.wav" || std::filesystem::exists(path("together/" + name));
        });
    }));
    EXPECT_EQ(run({"cp", path("content.wav"), path("in0.wav")}).status, 0);
    const auto outcome = program.wait();
    EXPECT_EQ(outcome.status, 0) << outcome.err;
}

TEST_F(RenderJobs, ReportEveryInputOnce) {
    for (const std::string jobs : {"1", "2", "16"}) {
        const auto reports = summaries(varnoOut(words({"--force", "--json", "--jobs", jobs})));
        ASSERT_EQ(reports.size(), mNames.size());
        std::vector<std::string> inputs;
        for (const auto& report : reports) {
            inputs.push_back(report["input"]);
            EXPECT_EQ(report["output"], "wet/" + inputs.back());
        }
        if (jobs == "1") {
            EXPECT_EQ(inputs, mNames);
        } else {
            EXPECT_THAT(inputs, UnorderedElementsAreArray(mNames));
        }
    }
}

// The second input is a pipe that nobody writes to until the first has been reported.
TEST_F(RenderJobs, AreReportedAsTheyEnd) {
    ASSERT_EQ(mkfifo(path("pipe.wav").c_str(), 0600), 0);
    Subprocess program(varnoWords({"render", "--out-dir", "wet", "in0.wav", "pipe.wav"}),
                       {.folder = mFolder.path()});
    EXPECT_TRUE(eventually([&] { return program.out().starts_with("wet/in0.wav\n"); }));
    EXPECT_FALSE(program.status().has_value());
    EXPECT_EQ(run({"cp", path("in1.wav"), path("pipe.wav")}).status, 0);
    const auto outcome = program.wait();
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("\nwet/pipe.wav\n"));
}

// Stacks of this size are refused; the calling thread renders all.
TEST_F(RenderJobs, GoOnWithoutTheThreadsThatAreRefused) {
    std::string command = "ulimit -s 200000000000 && exec";
    for (const auto& word : varnoWords(words({"--jobs", "8"}))) {
        command += " '" + word + "'";
    }
    const auto outcome = run({"bash", "-c", command}, {.folder = mFolder.path()});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    for (const auto& input : mNames) {
        EXPECT_TRUE(std::filesystem::exists(path("wet/" + input))) << input;
    }
}

TEST_F(RenderJobs, SkipWhatHasBeenRendered) {
    varnoOut({"render", "--out-dir", "wet", "in0.wav", "in1.wav"});
    const Bytes before = content("wet/in0.wav");
    const auto reports = summaries(varnoOut(words({"--skip-existing", "--json", "--set", "Hot=1"})));
    ASSERT_EQ(reports.size(), mNames.size());
    EXPECT_EQ(reports[0], json::parse(R"({"input": "in0.wav", "output": "wet/in0.wav", "skipped": true})"));
    EXPECT_EQ(reports[1]["skipped"], true);
    for (int i = 2; i < kFiles; ++i) {
        EXPECT_EQ(reports[static_cast<std::size_t>(i)]["skipped"], false);
    }
    EXPECT_EQ(content("wet/in0.wav"), before);
    EXPECT_THAT(varnoOut({"render", "--skip-existing", "in0.wav", "wet/in0.wav"}),
                "wet/in0.wav\n  exists already: skipped\n");
}

TEST_F(RenderJobs, SkipSettingsThatWereSaved) {
    const std::vector<std::string> options = {"--skip-existing", "--save-preset", "p.txt"};
    varnoOut(words(options));
    const Bytes before = content("p.txt");
    varnoOut(words(options));
    EXPECT_EQ(content("p.txt"), before);
}

TEST_F(RenderJobs, ADryRunReportsWhatIsSkipped) {
    varnoOut({"render", "in0.wav", "wet/in0.wav"});
    const auto reports = summaries(varnoOut(words({"--skip-existing", "--dry-run", "--json"})));
    EXPECT_EQ(reports.at(0)["skipped"], true);
    EXPECT_EQ(reports.at(1)["dry_run"], true);
    EXPECT_EQ(reports.at(1)["skipped"], false);
}

TEST_F(RenderJobs, SkippingContradictsReplacing) {
    EXPECT_EQ(refusal(2, words({"--skip-existing", "--force"})),
              "options --skip-existing and --force exclude each other");
    EXPECT_EQ(refusal(2, {"render", "--skip-existing"}),
              "option --skip-existing needs INPUT and OUTPUT, found none");
}

TEST_F(RenderJobs, TakeAContainerForAll) {
    const std::vector<std::pair<std::string, std::string>> kinds = {
        {"wav", "WAV"}, {"rf64", "RF64"}, {"w64", "W64"}, {"aiff", "AIFF"}, {"caf", "CAF"},
        {"au", "AU"},   {"flac", "FLAC"}, {"ogg", "Ogg"}, {"opus", "Ogg"}};
    makeMusic("x.y.wav", kWav16, 2, 3000);
    for (const auto& [kind, container] : kinds) {
        const auto reports =
            summaries(varno({"render", "--out-dir", "wet", "--json", "--container", kind, "x.y.wav"}).out);
        ASSERT_EQ(reports.size(), 1U) << kind;
        EXPECT_EQ(reports[0]["output"], "wet/x.y." + kind);
        EXPECT_EQ(reports[0]["container"], container);
        EXPECT_EQ(std::filesystem::exists(path("wet/x.y." + kind)), true);
    }
}

TEST_F(RenderJobs, AContainerNeedsAFolderAndDifferentNames) {
    EXPECT_EQ(refusal(2, {"render", "--container", "flac", "in0.wav", "out.flac"}),
              "option --container needs --out-dir; the extension of OUTPUT selects its container");
    makeMusic("in0.aiff", SF_FORMAT_AIFF | SF_FORMAT_PCM_16, 1, 3000);
    EXPECT_EQ(refusal(2, {"render", "--out-dir", "wet", "--container", "flac", "in0.wav", "in0.aiff"}),
              R"(outputs "wet/in0.flac" and "wet/in0.flac" are one file; expected one each)");
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
    EXPECT_THAT(reports, Contains(json::parse(R"({"input": "in3.wav", "output": "wet/in3.wav",
                                          "error": "in3.wav: is empty; expected an audio file"})")));
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
