#include "Render/DemoLoop.h"
#include "Tests/Apps/varno/Support/ProgramTest.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <set>
#include <sndfile.h>
#include <sstream>

// The factory presets as the program offers them.

namespace varno::test {
namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::StartsWith;

class PresetsCommand : public ProgramTest {
protected:
    std::vector<std::string> names() const {
        std::istringstream lines(varnoOut({"presets", "--names"}));
        std::vector<std::string> names;
        for (std::string line; std::getline(lines, line);) {
            names.push_back(line);
        }
        return names;
    }
    // What the preset's file holds before the line with its purpose.
    std::string settingsOf(const std::string& name) const {
        const std::string text = json::parse(varnoOut({"presets", "--json", name}))["text"];
        return text.substr(0, text.rfind('\n', text.size() - 2));
    }
};

TEST_F(PresetsCommand, ListsNamesAndPurposes) {
    // Made by: varno presets
    EXPECT_EQ(varnoOut({"presets"}), readFile(std::string(VARNO_GOLDEN_FOLDER) + "/presets-list.txt"));
}

TEST_F(PresetsCommand, ListsADozenAsJson) {
    const json presets = json::parse(varnoOut({"presets", "--json"}));
    EXPECT_EQ(presets.size(), names().size());
    EXPECT_GE(presets.size(), 12U);
    EXPECT_EQ(presets[0]["name"], "bass-firm");
    EXPECT_THAT(presets[0]["purpose"].get<std::string>(), StartsWith("Evens out a bass"));
}

TEST_F(PresetsCommand, NamesArePlainAndPurposesFitALine) {
    const json presets = json::parse(varnoOut({"presets", "--json"}));
    for (const auto& preset : presets) {
        EXPECT_THAT(preset["name"].get<std::string>(), MatchesRegex("[a-z]+(-[a-z]+)*"));
        EXPECT_THAT(preset["purpose"].get<std::string>(), MatchesRegex("[A-Z].{10,70}\\."));
    }
}

TEST_F(PresetsCommand, ShowsOneAsTextAndAsPeopleReadIt) {
    // Made by: varno presets voice-close
    EXPECT_EQ(varnoOut({"presets", "Voice-Close"}),
              readFile(std::string(VARNO_GOLDEN_FOLDER) + "/presets-voice-close.txt"));
}

TEST_F(PresetsCommand, WhatItShowsIsThatPresetAgain) {
    writeFile(path("copy.txt"), varnoOut({"presets", "drum-punch"}));
    EXPECT_EQ(varnoOut({"params", "--preset", "copy.txt"}), varnoOut({"params", "--preset", "drum-punch"}));
}

TEST_F(PresetsCommand, ShowsAFileToo) {
    makeMusic("in.wav", kWavFloat, 2, 480);
    varnoOut({"render", "--set", "Hot=0.25", "--save-preset", "mine.txt", "in.wav", "out.wav"});
    const json preset = json::parse(varnoOut({"presets", "--json", "mine.txt"}));
    EXPECT_EQ(preset["name"], "mine");
    EXPECT_EQ(preset["purpose"], "");
    EXPECT_EQ(
        preset["parameters"][7],
        json::parse(
            R"({"id": "Hot", "label": "Hottitude", "value": 0.25, "text": "0.25", "true_text": "25.0 %"})"));
}

TEST_F(PresetsCommand, RefusesWhatIsNone) {
    const std::string expected =
        R"(preset "mixglue": there is neither a factory preset nor a file of this name; )"
        R"(did you mean "mix-glue"?)";
    EXPECT_EQ(refusal(2, {"presets", "mixglue"}), expected);
    EXPECT_EQ(refusal(2, {"params", "--preset", "mixglue"}), expected);
    EXPECT_EQ(refusal(2, {"render", "--preset", "mixglue", "in.wav", "out.wav"}), expected);
    EXPECT_EQ(refusal(1, {"presets", "none.txt"}), "none.txt: cannot be read: No such file or directory");
    EXPECT_EQ(refusal(1, {"presets", "--module", "None.aaxplugin", "./mix-glue"}),
              "./mix-glue: cannot be read: No such file or directory");
}

// Each factory preset.

TEST_F(PresetsCommand, EachComesBackExactly) {
    makeMusic("in.wav", kWavFloat, 2, 480);
    for (const auto& name : names()) {
        varnoOut({"render", "--force", "--preset", name, "--save-preset", "back.txt", "in.wav", "out.wav"});
        EXPECT_EQ(readFile(path("back.txt")), settingsOf(name)) << name;
    }
}

double rmsOf(const std::vector<double>& samples) {
    double sum = 0.0;
    for (const double sample : samples) {
        sum += sample * sample;
    }
    return std::sqrt(sum / static_cast<double>(samples.size()));
}

// Drums and bass that peak at -6 dBFS.
TEST_F(PresetsCommand, EachRendersAsLoudAsItsInputWithoutClipping) {
    constexpr double kGain = 0.70794578438413791; // the loop itself peaks at -3 dBFS
    constexpr double kMostChangeDB = 3.0;
    Sound loop;
    loop.format = kWavFloat;
    loop.channels = kDemoLoopChannels;
    loop.rateHz = kDemoLoopRateHz;
    const auto samples = makeDemoLoop();
    for (std::size_t frame = 0; frame < samples[0].size(); ++frame) {
        for (const auto& channel : samples) {
            loop.reals.push_back(kGain * static_cast<double>(channel[frame]));
        }
    }
    writeSound(path("loop.wav"), loop);
    for (const auto& name : names()) {
        const json summary =
            json::parse(varnoOut({"render", "--json", "--force", "--preset", name, "loop.wav", "out.wav"}));
        EXPECT_LT(summary["peak_out_dbfs"].get<double>(), 0.0) << name;
        EXPECT_GT(summary["gain_reduction_db"].get<double>(), 0.0) << name;
        const auto output = readReals(path("out.wav")).reals;
        EXPECT_NE(output, loop.reals) << name;
        EXPECT_NEAR(20.0 * std::log10(rmsOf(output) / rmsOf(loop.reals)), 0.0, kMostChangeDB) << name;
    }
}

TEST_F(PresetsCommand, EachDiffersFromTheOthers) {
    std::set<std::string> settings;
    for (const auto& name : names()) {
        EXPECT_TRUE(settings.insert(settingsOf(name)).second) << name;
    }
}

TEST_F(PresetsCommand, TheDocumentNamesEach) {
    const std::string document = readFile(VARNO_DOCUMENTS "/presets.md");
    const json presets = json::parse(varnoOut({"presets", "--json"}));
    for (const auto& preset : presets) {
        const std::string row = "| `" + preset["name"].get<std::string>() + "` | ";
        EXPECT_THAT(document, HasSubstr(row + preset["purpose"].get<std::string>() + " |\n"));
    }
}

} // namespace
} // namespace varno::test
