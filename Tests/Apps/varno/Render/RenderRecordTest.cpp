#include "Tests/Apps/varno/Support/ProgramTest.h"

#include "Render/RenderRecord.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/stat.h>
#include <thread>
#include <vector>

// What varno render --record keeps, and what --skip-existing makes of it.

namespace varno::test {
namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::MatchesRegex;

class RenderRecordTest : public ProgramTest {
protected:
    RenderRecordTest() {
        makeMusic("a.wav", kWav16, 2, 3000);
        makeMusic("b.wav", kWav16, 1, 2000);
    }

    std::vector<std::string> words(const std::vector<std::string>& options) const {
        std::vector<std::string> all = {"render", "--out-dir", ".",      "--container",
                                        "flac",   "--record",  "record", "--json"};
        all.insert(all.end(), options.begin(), options.end());
        all.insert(all.end(), {"a.wav", "b.wav"});
        return all;
    }

    // The names of the outputs that are rendered, and not skipped.
    std::string renderedWith(std::vector<std::string> options) const {
        options.emplace_back("--skip-existing");
        std::string names;
        for (const json& report : linesOf(varnoOut(words(options)))) {
            names += report.at("skipped") ? "" : report.at("input").get<std::string>().substr(0, 1);
        }
        return names;
    }

    static std::vector<json> linesOf(const std::string& text) {
        std::vector<json> result;
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
            result.push_back(json::parse(line));
        }
        return result;
    }

    std::string record() const { return content("record").content; }
    void append(const std::string& text) const { std::ofstream(path("record"), std::ios::app) << text; }
};

TEST_F(RenderRecordTest, HasTheReportOfEachOutput) {
    const std::string printed = varnoOut(words({}));
    EXPECT_EQ(record(), printed);
    for (const json& report : linesOf(printed)) {
        const json& made = report.at("made_of");
        EXPECT_EQ(made.at("version"), VARNO_VERSION);
        EXPECT_THAT(made.at("settings").get<std::string>(), MatchesRegex("[0-9a-f]{32}"));
        EXPECT_THAT(made.at("input").get<std::string>(), MatchesRegex("[0-9a-f]{32}"));
    }
    const std::vector<json> lines = linesOf(printed);
    EXPECT_EQ(lines.at(0).at("made_of").at("settings"), lines.at(1).at("made_of").at("settings"));
    EXPECT_NE(lines.at(0).at("made_of").at("input"), lines.at(1).at("made_of").at("input"));
}

TEST_F(RenderRecordTest, IsWhatIsSkippedBy) {
    EXPECT_EQ(renderedWith({}), "ab");
    EXPECT_EQ(renderedWith({}), "");
    EXPECT_EQ(linesOf(record()).size(), 2U);
}

TEST_F(RenderRecordTest, OtherSettingsAreRenderedAgainAndSoAreTheFormerOnes) {
    writeFile(path("moves.csv"), "0,Hot,0.5\n");
    writeFile(path("moves2.csv"), "0,Hot,0.6\n");
    const std::vector<std::vector<std::string>> settings = {{},
                                                            {"--set", "Hot=0.5"},
                                                            {"--set", "Hot=0.6"},
                                                            {"--set", "MasterBypassID=on"},
                                                            {"--preset", "drum-bus"},
                                                            {"--quality", "2x"},
                                                            {"--compensate"},
                                                            {"--tail", "0.01"},
                                                            {"--format", "pcm24"},
                                                            {"--dither", "none"},
                                                            {"--truncated"},
                                                            {"--automate", "moves.csv"},
                                                            {"--automate", "moves2.csv"},
                                                            {"--module", VARNO_MODULE_BUNDLE},
                                                            {}};
    for (const auto& each : settings) {
        EXPECT_EQ(renderedWith(each), "ab") << testing::PrintToString(each);
        EXPECT_EQ(renderedWith(each), "") << testing::PrintToString(each);
    }
}

// Options that need stereo.
TEST_F(RenderRecordTest, MidAndSideAndChannelsAreOtherSettings) {
    const auto isSkipped = [this](std::vector<std::string> options) {
        options.insert(options.begin(), {"render", "--out-dir", ".", "--container", "flac", "--record",
                                         "record", "--json", "--skip-existing"});
        options.emplace_back("a.wav");
        return linesOf(varnoOut(options)).at(0).at("skipped").get<bool>();
    };
    EXPECT_FALSE(isSkipped({}));
    EXPECT_FALSE(isSkipped({"--mid-side"}));
    EXPECT_TRUE(isSkipped({"--mid-side"}));
    EXPECT_FALSE(isSkipped({}));
    EXPECT_FALSE(isSkipped({"--channels", "1,2"}));
    EXPECT_TRUE(isSkipped({"--channels", "1,2"}));
    EXPECT_FALSE(isSkipped({"--channels", "1-2"}));
}

TEST_F(RenderRecordTest, TheOutputIsThatOfTheNewSettings) {
    varnoOut(words({}));
    varnoOut(words({"--skip-existing", "--set", "Hot=0.9"}));
    const Bytes again = content("a.flac");
    varnoOut({"render", "--set", "Hot=0.9", "a.wav", "alone.flac"});
    EXPECT_EQ(again, content("alone.flac"));
}

// The value of an attack in milliseconds depends on the sample rate, which the text alone shows.
TEST_F(RenderRecordTest, TextsOfValuesAreSettings) {
    const std::string half = varnoOut({"params", "--set", "Hot=0.5"});
    EXPECT_EQ(half, varnoOut({"params", "--set", "Hot=50 %"}));
    EXPECT_EQ(renderedWith({"--set", "Hot=0.5"}), "ab");
    EXPECT_EQ(renderedWith({"--set", "Hot=50 %"}), "ab");
}

TEST_F(RenderRecordTest, WhatDoesNotChangeTheSoundDoesNotMatter) {
    EXPECT_EQ(renderedWith({}), "ab");
    EXPECT_EQ(renderedWith({"--block", "100", "--jobs", "2", "--save-preset", "p.txt"}), "");
}

TEST_F(RenderRecordTest, AnotherInputIsRenderedAgain) {
    EXPECT_EQ(renderedWith({}), "ab");
    makeMusic("b.wav", kWav16, 1, 2001);
    EXPECT_EQ(renderedWith({}), "b");
    EXPECT_EQ(renderedWith({}), "");
}

TEST_F(RenderRecordTest, WhatIsGoneIsRenderedAgain) {
    EXPECT_EQ(renderedWith({}), "ab");
    std::filesystem::remove(path("a.flac"));
    EXPECT_EQ(renderedWith({}), "a");
}

TEST_F(RenderRecordTest, WhatItDoesNotHaveIsRenderedAgain) {
    varnoOut({"render", "--out-dir", ".", "--container", "flac", "a.wav"});
    EXPECT_EQ(renderedWith({}), "ab");
}

TEST_F(RenderRecordTest, AnotherVersionIsRenderedAgain) {
    EXPECT_EQ(renderedWith({}), "ab");
    std::string text = record();
    const std::string version = "\"version\":\"" VARNO_VERSION "\"";
    const auto place = text.find(version);
    ASSERT_NE(place, std::string::npos);
    writeFile(path("record"), text.replace(place, version.size(), R"("version":"0.9.0")"));
    EXPECT_EQ(renderedWith({}), "a");
}

TEST_F(RenderRecordTest, LinesThatAreNoReportAreLeftAlone) {
    EXPECT_EQ(renderedWith({}), "ab");
    const std::string before = record();
    // The last one was cut off.
    const std::string others = "no report\n[]\n{}\n{\"output\":1}\n{\"output\":\"a.flac\",\"made_of\":[]}\n"
                               "{\"output\":\"b.flac\",\"error\":\"failed\"}\n\n{\"input\":\"a.wav\",\"outp";
    append(others);
    EXPECT_EQ(renderedWith({}), "");
    makeMusic("a.wav", kWav16, 2, 3001);
    EXPECT_EQ(renderedWith({}), "a");
    const std::string after = record();
    EXPECT_TRUE(after.starts_with(before + others + "\n{\"input\":\"a.wav\",\"output\":\"./a.flac\""))
        << after;
    EXPECT_EQ(renderedWith({}), "");
}

TEST_F(RenderRecordTest, TheLastReportCounts) {
    EXPECT_EQ(renderedWith({}), "ab");
    const std::string first = record();
    EXPECT_EQ(renderedWith({"--set", "Hot=0.5"}), "ab");
    EXPECT_EQ(renderedWith({}), "ab");
    writeFile(path("record"), first);
    EXPECT_EQ(renderedWith({}), "");
}

TEST_F(RenderRecordTest, FailuresAndDryRunsAreNotKept) {
    makeMusic("c.wav", kWav16, 2, 100);
    std::filesystem::resize_file(path("c.wav"), 60);
    varno({"render", "--record", "record", "c.wav", "c.flac"});
    varnoOut(words({"--dry-run"}));
    EXPECT_FALSE(std::filesystem::exists(path("record")));
}

TEST_F(RenderRecordTest, PipesAreRenderedEachTime) {
    for (int i = 0; i < 2; ++i) {
        const auto outcome = run({"bash", "-c",
                                  "cat a.wav | exec '" VARNO_PROGRAM "' render --skip-existing --json "
                                  "--record record - c.flac"},
                                 {.folder = mFolder.path()});
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        EXPECT_EQ(json::parse(outcome.out).at("skipped"), false);
        EXPECT_TRUE(json::parse(outcome.out).at("made_of").at("input").is_null());
    }
}

TEST_F(RenderRecordTest, SeveralAppendAtOnce) {
    constexpr int kThreads = 4;
    constexpr int kLines = 500;
    // Many pages of memory: the system shows the size that the file has between two pages.
    const std::string line(20000, 'x');
    {
        std::vector<std::jthread> threads;
        for (int thread = 0; thread < kThreads; ++thread) {
            threads.emplace_back([&] {
                const RenderRecord record(path("record"), "");
                for (int number = 0; number < kLines; ++number) {
                    record.add(line + "\n");
                }
            });
        }
    }
    int count = 0;
    std::istringstream lines(record());
    for (std::string written; std::getline(lines, written); ++count) {
        ASSERT_TRUE(written == line) << "line " << count << " has " << written.size() << " characters";
    }
    EXPECT_EQ(count, kThreads * kLines);
}

TEST_F(RenderRecordTest, AFileIsNeeded) {
    EXPECT_EQ(refusal(2, {"render", "--record", "record"}),
              "option --record needs INPUT and OUTPUT, found none");
    EXPECT_EQ(refusal(2, {"render", "--record", ".", "a.wav", "c.flac"}),
              ".: is no file that can keep a record; expected the name of a file");
    EXPECT_EQ(refusal(2, {"render", "--record", "/dev/null", "a.wav", "c.flac"}),
              "/dev/null: is no file that can keep a record; expected the name of a file");
    EXPECT_EQ(refusal(2, {"render", "--record", "a.wav", "a.wav", "c.flac"}),
              "a.wav: is the input file a.wav; expected another file");
    EXPECT_THAT(refusal(1, {"render", "--record", "none/record", "a.wav", "c.flac"}),
                HasSubstr("none/record: cannot be written: No such file or directory"));
}

} // namespace
} // namespace varno::test
