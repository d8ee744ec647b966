#include "Surround/Settings/NumberText.h"
#include "Tests/Apps/varno/Support/ProgramTest.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <limits>
#include <sndfile.h>

// Settings of a render: their sources, where they are saved, and automation.

namespace varno::test {
namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

constexpr int kInputFrames = 4800;

class RenderSettings : public ProgramTest {
protected:
    RenderSettings() { makeMusic("in.wav", kWavFloat, 2, kInputFrames); }

    std::string render(const std::vector<std::string>& options) const {
        std::vector<std::string> words = {"render", "--force"};
        words.insert(words.end(), options.begin(), options.end());
        words.insert(words.end(), {"in.wav", "out.wav"});
        return varnoOut(words);
    }
    Bytes bytesWith(const std::vector<std::string>& options) const {
        render(options);
        return content("out.wav");
    }
    std::vector<double> samplesWith(const std::vector<std::string>& options) const {
        render(options);
        return readReals(path("out.wav")).reals;
    }
};

TEST_F(RenderSettings, DefaultsArePlainText) {
    render({"--save-preset", "p.txt"});
    EXPECT_EQ(readFile(path("p.txt")),
              "Varno-S 030001\n"
              "Gain 0.5000000000 Volume 0.5000000000 Hipass 0.0000000000 Band 0.0000000000\n"
              "Attack 0.5000000000 Release 0.5000000000 UK 0.0000000000 Hottitude 0.0700000003\n"
              "Ratio 0.5000000000 Mix 0.0000000000 Auto 0.0000000000 HarmSw 0.0000000000\n"
              "LinkSw 0.0000000000");
}

TEST_F(RenderSettings, StateHasHeaderAndData) {
    render({"--save-state", "s.bin"});
    const std::string state = readFile(path("s.bin"));
    ASSERT_EQ(state.size(), 56U + 220U);
    EXPECT_EQ(state.substr(0, 8), std::string("\xDC\0\0\0\xFF\xFF\xFF\xFF", 8));
    EXPECT_EQ(state.substr(8, 16), "kvrMpsdVsRDVkcle"); // codes in the byte order of the machine
    EXPECT_EQ(state.substr(24, 32), "Complete Controls State" + std::string(9, '\0'));
}

TEST_F(RenderSettings, SavedSettingsComeBack) {
    const std::vector<std::string> settings = {"--set", "Hot=0.75", "--set", "Ratio=1", "--set", "HSw=1"};
    auto saving = settings;
    saving.insert(saving.end(), {"--save-preset", "p.txt", "--save-state", "s.bin"});
    const Bytes expected = bytesWith(saving);
    EXPECT_NE(bytesWith({}), expected);
    EXPECT_EQ(bytesWith({"--preset", "p.txt"}), expected);
    EXPECT_EQ(bytesWith({"--state", "s.bin"}), expected);
}

// The effect that the program is linked with against that of the bundle.
TEST_F(RenderSettings, TheBundleGivesTheSameToTheBit) {
    makeMusic("mono.wav", kWav16, 1, kInputFrames);
    const std::vector<std::vector<std::string>> cases = {
        {"--preset", "drum-bus"},
        {"--set", "Hot=1", "--set", "Ratio=#8", "--set", "HSw=on", "--set", "LinkSw=off"},
        {"--set", "MasterBypassID=on"}};
    for (const std::string input : {"in.wav", "mono.wav"}) {
        for (const auto& settings : cases) {
            const auto outputs = [&](const std::vector<std::string>& module) {
                std::vector<std::string> words = {"render", "--force",      "--meters",
                                                  "m.csv",  "--save-state", "s.bin"};
                words.insert(words.end(), settings.begin(), settings.end());
                words.insert(words.end(), module.begin(), module.end());
                words.insert(words.end(), {input, "out.wav"});
                varnoOut(words);
                return std::vector{content("out.wav"), content("m.csv"), content("s.bin")};
            };
            EXPECT_EQ(outputs({}), outputs({"--module", VARNO_MODULE_BUNDLE}));
        }
    }
}

TEST_F(RenderSettings, StateOfAStereoFileFitsAMonoOne) {
    render({"--set", "Hot=0.75", "--save-state", "s.bin"});
    makeMusic("mono.wav", kWav16, 1, kInputFrames);
    varnoOut({"render", "--state", "s.bin", "mono.wav", "from-state.wav"});
    varnoOut({"render", "--set", "Hot=0.75", "mono.wav", "from-set.wav"});
    EXPECT_EQ(content("from-state.wav"), content("from-set.wav"));
}

TEST_F(RenderSettings, LaterSourcesWin) {
    render({"--set", "Hot=0.25", "--set", "Gain=0.6", "--set", "Mix=0.1", "--save-state", "s.bin"});
    render({"--set", "Hot=0.5", "--set", "Gain=0.7", "--save-preset", "p.txt"});
    // The preset brings all thirteen values, so nothing of the state is left.
    EXPECT_EQ(bytesWith({"--set", "Hot=1", "--preset", "p.txt", "--state", "s.bin"}),
              bytesWith({"--set", "Hot=1", "--set", "Gain=0.7"}));
    EXPECT_EQ(bytesWith({"--set", "Hot=0", "--set", "Hot=1"}), bytesWith({"--set", "Hot=1"}));
    writeFile(path("moves.csv"), "0,Hot,0.3\n");
    EXPECT_EQ(bytesWith({"--set", "Hot=1", "--automate", "moves.csv"}), bytesWith({"--set", "Hot=0.3"}));
}

TEST_F(RenderSettings, PresetsDoNotHoldTheBypass) {
    render({"--set", "MasterBypassID=on", "--save-preset", "p.txt", "--save-state", "s.bin"});
    EXPECT_EQ(bytesWith({"--preset", "p.txt", "--state", "s.bin"}), bytesWith({}));
}

TEST_F(RenderSettings, PresetValuesAreLimited) {
    writeFile(path("p.txt"), "x 30001 g -1 v 0.5 h 0 b 0 a 0.5 r 0.5 u 0 h 7 r 0.5 m nan a 0 h 0 l inf");
    const auto outcome = varno({"render", "--preset", "p.txt", "in.wav", "limited.wav"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "varno: warning: p.txt: Gain is -1, expected 0 to 1; 0 is used\n"
                           "varno: warning: p.txt: Hot is 7, expected 0 to 1; 1 is used\n"
                           "varno: warning: p.txt: Mix is no number, expected 0 to 1; 0 is used\n"
                           "varno: warning: p.txt: LinkSw is inf, expected 0 to 1; 1 is used\n");
    EXPECT_EQ(content("limited.wav"), bytesWith({"--set", "Gain=0", "--set", "Hot=1", "--set", "LinkSw=1"}));
    EXPECT_EQ(varno({"render", "--quiet", "--force", "--preset", "p.txt", "in.wav", "limited.wav"}).err, "");
}

TEST_F(RenderSettings, SavedBeforeAutomationMoves) {
    writeFile(path("moves.csv"), "0,Hot,1\n");
    render({"--automate", "moves.csv", "--save-preset", "p.txt"});
    EXPECT_THAT(readFile(path("p.txt")), HasSubstr("Hottitude 0.0700000003"));
}

TEST_F(RenderSettings, SavedFilesAreNotReplacedUnasked) {
    writeFile(path("p.txt"), "old");
    EXPECT_EQ(refusal(1, {"render", "--save-preset", "p.txt", "in.wav", "out.wav"}),
              "p.txt: exists already; expected a new name, or --force to replace it");
    EXPECT_EQ(mFolder.listing(), "in.wav p.txt");
}

TEST_F(RenderSettings, NothingIsSavedOfAFailedRender) {
    EXPECT_EQ(refusal(1, {"render", "--save-preset", "p.txt", "--save-state", "s.bin", "--meters", "m.csv",
                          "in.wav", "/dev/full"}),
              "/dev/full: cannot be written: No space left on device");
    EXPECT_EQ(mFolder.listing(), "in.wav");
}

TEST_F(RenderSettings, OutputsAppearTogetherOrNotAtAll) {
    writeFile(path("out.wav"), "old");
    for (const std::string option : {"--save-preset", "--save-state", "--meters"}) {
        EXPECT_EQ(refusal(1, {"render", "--force", option, "/dev/full", "in.wav", "out.wav"}),
                  "/dev/full: cannot be written: No space left on device");
        EXPECT_EQ(mFolder.listing(), "in.wav out.wav");
        EXPECT_EQ(content("out.wav"), Bytes{"old"});
    }
}

// A shell runs the program with this redirection.
TEST_F(RenderSettings, ASummaryThatCannotBePrintedLeavesTheOutputs) {
    std::filesystem::create_directory(mFolder.path() / "wet");
    std::filesystem::copy(path("in.wav"), path("in2.wav"));
    const Bytes expected = bytesWith({});
    const auto outcome = run({"bash", "-c",
                              "\"$0\" render --force --save-state s.bin --meters m.csv in.wav out.wav "
                              ">/dev/full; echo $? >&2; \"$0\" render --save-preset p.txt --out-dir wet "
                              "in.wav in2.wav >/dev/full; echo $? >&2",
                              VARNO_PROGRAM},
                             {.folder = mFolder.path()});
    const std::string once = "varno: standard output: cannot be written: No space left on device\n1\n";
    EXPECT_EQ(outcome.err, once + once);
    EXPECT_EQ(mFolder.listing(), "in.wav in2.wav m.csv out.wav p.txt s.bin wet");
    for (const std::string file : {"out.wav", "wet/in.wav", "wet/in2.wav"}) {
        EXPECT_EQ(content(file), expected) << file;
    }
}

// Automation.

TEST_F(RenderSettings, ParametersMoveAtTheExactSample) {
    constexpr int kMoveFrame = 1001;
    writeFile(path("moves.csv"),
              "time_s,parameter,value\n" + std::to_string(kMoveFrame / 48000.0) + ",MasterBypassID,on\n");
    const auto input = readReals(path("in.wav")).reals;
    const auto active = samplesWith({});
    const auto moved = samplesWith({"--automate", "moves.csv"});
    for (std::size_t i = 0; i < moved.size(); ++i) {
        const bool isBypassed = i >= 2 * kMoveFrame;
        ASSERT_EQ(moved[i], isBypassed ? input[i] : active[i]) << i;
    }
    EXPECT_NE(active[2 * kMoveFrame], input[2 * kMoveFrame]);
    EXPECT_NE(active[2 * kMoveFrame - 1], input[2 * kMoveFrame - 1]);
}

TEST_F(RenderSettings, LastOfSeveralMovesAtOneSampleWins) {
    writeFile(path("moves.csv"), "0.05,Hot,0\n0.05,Hot,1\n");
    writeFile(path("one.csv"), "0.05,Hot,1\n");
    EXPECT_EQ(bytesWith({"--automate", "moves.csv"}), bytesWith({"--automate", "one.csv"}));
}

TEST_F(RenderSettings, MovesReachIntoTheTail) {
    writeFile(path("moves.csv"), "0.15,Volume,0\n");
    EXPECT_NE(bytesWith({"--tail", "0.1", "--automate", "moves.csv"}), bytesWith({"--tail", "0.1"}));
}

TEST_F(RenderSettings, MovesAfterTheEndAreWarnedOf) {
    writeFile(path("moves.csv"), "0.0999,Hot,1\n0.1,Hot,0\n7,Mix,1\n");
    const auto outcome = varno({"render", "--automate", "moves.csv", "in.wav", "out.wav"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "varno: warning: moves.csv: 2 of its lines come after the end of out.wav\n");
}

TEST_F(RenderSettings, AutomationSpeaksTrueValues) {
    writeFile(path("units.csv"), "0.01,Gain,-3 dB\n0.02,Ratio,#8\n0.02,MasterBypassID,off\n");
    writeFile(path("plain.csv"), "0.01,Gain,0.425\n0.02,Ratio,1\n");
    EXPECT_EQ(bytesWith({"--automate", "units.csv"}), bytesWith({"--automate", "plain.csv"}));
    EXPECT_NE(bytesWith({"--automate", "units.csv"}), bytesWith({}));
}

// The attack is of curve 8, which begins at the same time, in a later line.
TEST_F(RenderSettings, AutomatedTimesBelongToTheCurveOfTheirTime) {
    const json curve8 =
        json::parse(varnoOut({"params", "--json", "Atk", "--set", "Ratio=#8", "--set", "Atk=1 ms"}));
    const std::string attack = textFromNumber(curve8["value"].get<double>());
    writeFile(path("units.csv"), "0.02,Atk,1 ms\n0.02,Ratio,#8\n");
    writeFile(path("plain.csv"), "0.02,Atk," + attack + "\n0.02,Ratio,1\n");
    const Bytes plain = bytesWith({"--automate", "plain.csv", "--set", "Gain=1"});
    EXPECT_EQ(bytesWith({"--automate", "units.csv", "--set", "Gain=1"}), plain);
    writeFile(path("units.csv"), "0,Ratio,#8\n0.02,Atk,1 ms\n");
    writeFile(path("plain.csv"), "0,Ratio,1\n0.02,Atk," + attack + "\n");
    EXPECT_EQ(bytesWith({"--automate", "units.csv"}), bytesWith({"--automate", "plain.csv"}));
}

TEST_F(RenderSettings, LongAutomationIsRefused) {
    writeFile(path("moves.csv"), "");
    std::filesystem::resize_file(path("moves.csv"), 64 * 1024 * 1024 + 1);
    EXPECT_EQ(refusal(1, {"render", "--automate", "moves.csv", "in.wav", "out.wav"}),
              "moves.csv: has more than 64 MiB; expected a shorter automation file");
    EXPECT_EQ(mFolder.listing(), "in.wav moves.csv");
}

// Meters.

struct MeterRow {
    double timeS;
    std::vector<double> meters;
};

std::vector<MeterRow> meterRows(const std::string& content) {
    std::istringstream lines(content);
    std::string line;
    std::getline(lines, line);
    EXPECT_EQ(line, "time_s,mtGL,mtGR,mtIR,mtOR");
    std::vector<MeterRow> rows;
    while (std::getline(lines, line)) {
        std::istringstream fields(line);
        MeterRow row{};
        fields >> row.timeS;
        for (double meter = 0.0; fields.ignore(1, ',') >> meter;) {
            row.meters.push_back(meter);
        }
        EXPECT_EQ(row.meters.size(), 4U) << line;
        rows.push_back(row);
    }
    return rows;
}

TEST_F(RenderSettings, MetersAreWrittenPerBlock) {
    const json summary = json::parse(render({"--json", "--block", "1000", "--meters", "m.csv"}));
    const auto rows = meterRows(readFile(path("m.csv")));
    ASSERT_EQ(rows.size(), 5U);
    double largest = 0.0;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_NEAR(rows[i].timeS, static_cast<double>(i) * 1000.0 / 48000.0, 1e-6);
        largest = std::max({largest, rows[i].meters[0], rows[i].meters[1]});
        EXPECT_GT(rows[i].meters[2], 0.0);
        EXPECT_GT(rows[i].meters[3], 0.0);
    }
    EXPECT_GT(largest, 0.0);
    EXPECT_NEAR(summary["gain_reduction_db"].get<double>(), 32.0 * largest, 1e-4);
}

TEST_F(RenderSettings, MetersCoverMovesWithinABlock) {
    writeFile(path("moves.csv"), "0.01,Hot,1\n0.02,Hot,0\n");
    render({"--block", "1000", "--meters", "m.csv", "--automate", "moves.csv"});
    EXPECT_EQ(meterRows(readFile(path("m.csv"))).size(), 5U);
}

TEST_F(RenderSettings, BypassedRendersReportNoGainReduction) {
    const json bypassed = json::parse(render({"--json", "--set", "MasterBypassID=on"}));
    EXPECT_EQ(bypassed["gain_reduction_db"], json());
    EXPECT_THAT(render({"--set", "MasterBypassID=on"}), Not(HasSubstr("gain reduction")));
    EXPECT_GT(json::parse(render({"--json"}))["gain_reduction_db"].get<double>(), 0.0);
}

TEST_F(RenderSettings, GainReductionIsThatOfTheBlocksThatAreNotBypassed) {
    // The last frames are quiet and the only ones that are processed.
    auto sound = readReals(path("in.wav"));
    std::for_each(sound.reals.begin() + kInputFrames, sound.reals.end(), [](double& value) { value = 0.0; });
    writeSound(path("in.wav"), sound);
    writeFile(path("moves.csv"), "0.099,MasterBypassID,0\n");
    const auto reduction = [&](const std::vector<std::string>& more) {
        std::vector<std::string> options = {"--json", "--block", "48", "--set", "Rls=0"};
        options.insert(options.end(), more.begin(), more.end());
        return json::parse(render(options))["gain_reduction_db"];
    };
    const json part = reduction({"--set", "MasterBypassID=on", "--automate", "moves.csv"});
    ASSERT_TRUE(part.is_number());
    EXPECT_LT(part.get<double>(), reduction({}).get<double>());
    writeFile(path("moves.csv"), "0,MasterBypassID,1\n");
    EXPECT_EQ(reduction({"--automate", "moves.csv"}), json());
}

// Input that no effect can process.

TEST_F(RenderSettings, UnusableSamplesAreCountedAndWarnedOf) {
    auto sound = readReals(path("in.wav"));
    sound.reals[10] = std::numeric_limits<double>::quiet_NaN();
    sound.reals[4000] = -std::numeric_limits<double>::infinity();
    sound.reals[9000] = 2e30;
    writeSound(path("in.wav"), sound);
    const auto outcome = varno({"render", "--json", "in.wav", "out.wav"});
    const std::string warning =
        "in.wav: 3 samples are not a number, infinite or above 1e30 in magnitude; the "
        "effect processes them as silence";
    EXPECT_EQ(outcome.err, "varno: warning: " + warning + '\n');
    const json summary = json::parse(outcome.out);
    EXPECT_EQ(summary["unusable_samples"], 3);
    EXPECT_EQ(summary["warnings"], json::array({warning}));
    EXPECT_TRUE(summary["peak_in_dbfs"].is_number());
    EXPECT_LT(summary["peak_in_dbfs"].get<double>(), 1.0);
}

TEST_F(RenderSettings, MetersShowTheirOwnBlockAlone) {
    // Silence in the second half: the values of the first half must not remain.
    auto sound = readReals(path("in.wav"));
    std::fill(sound.reals.begin() + kInputFrames, sound.reals.end(), 0.0);
    writeSound(path("half.wav"), sound);
    varnoOut({"render", "--block", "480", "--tail", "2", "--meters", "m.csv", "half.wav", "out.wav"});
    const auto rows = meterRows(readFile(path("m.csv")));
    ASSERT_EQ(rows.size(), 210U);
    EXPECT_GT(rows[0].meters[0], 0.0);
    EXPECT_LT(rows.back().meters[0], 0.01 * rows[4].meters[0]);
}

} // namespace
} // namespace varno::test
