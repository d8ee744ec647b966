#include "DemoGain_ValueText.h"
#include "Tests/Apps/varno/Support/ProgramTest.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>

// What varno measure finds, beside what the formulas of the effect and a render of the same signal yield.

namespace varno::test {
namespace {

using nlohmann::json;

class MeasuredFigures : public ProgramTest {
protected:
    // The rows of one figure.
    json rows(const std::string& figure, std::vector<std::string> options = {}) const {
        options.insert(options.begin(), {"measure", "--json", figure});
        const json found = json::parse(varnoOut(options));
        EXPECT_EQ(found.at("figures").size(), 1U);
        EXPECT_EQ(found.at("figures").at(0).at("name"), figure);
        return found.at("figures").at(0).at("rows");
    }
    static json rowWith(const json& rows, const json& part) {
        const auto found = std::ranges::find_if(rows, [&](const json& row) {
            return std::ranges::all_of(part.items(),
                                       [&](const auto& item) { return row.at(item.key()) == item.value(); });
        });
        EXPECT_NE(found, rows.end()) << part;
        return found == rows.end() ? json() : *found;
    }
};

const SDemoGain_Parameter& parameter(std::string_view id) {
    return *std::ranges::find(kDemoGain_Parameters, id, &SDemoGain_Parameter::mIdentifier);
}

TEST_F(MeasuredFigures, FindsTheTimesOfTheFormulas) {
    for (const auto& row : rows("times")) {
        const double curve = std::stod(row.at("curve").get<std::string>());
        const DemoGain_ValueText::Settings settings{.mRatio = static_cast<float>((curve - 1.0) / 7.0),
                                                    .mUK = row.at("uk") == "on" ? 1.0F : 0.0F};
        const double knob = row.at("knob");
        const double attackMS = DemoGain_ValueText::InUnit(parameter("Atk"), knob, settings);
        const double releaseMS = DemoGain_ValueText::InUnit(parameter("Rls"), knob, settings);
        // In single precision, the slowest followers stop a little before their target.
        const double tolerance = curve == 6.0 ? 0.03 : 0.01;
        const double slowMS = curve == 6.0 ? 1041.7 : 208.3;
        EXPECT_NEAR(row.at("attack_ms").get<double>() / attackMS, 1.0, 0.01) << row;
        EXPECT_NEAR(row.at("release_ms").get<double>() / releaseMS, 1.0, tolerance) << row;
        EXPECT_NEAR(row.at("slow_ms").get<double>() / slowMS, 1.0, tolerance) << row;
    }
}

TEST_F(MeasuredFigures, FindsTheShorterAttackOfTheLastCurveAtAnotherRate) {
    const json part = {{"curve", "8"}, {"knob", 1.0}};
    const double at48 = rowWith(rows("times"), part).at("attack_ms");
    const double at96 = rowWith(rows("times", {"--rate", "96000"}), part).at("attack_ms");
    EXPECT_NEAR(at48 / at96, 2.0, 0.01);
}

TEST_F(MeasuredFigures, FindsWhatARenderOfTheSameToneFinds) {
    shell("sox -n -r 48000 -b 16 -c 1 " + path("tone.wav") + " synth 12 sine 1000 gain -0.01");
    const auto rmsDB = [&](const std::string& name) {
        return std::stod(shell("sox " + path(name) + " -n trim 11 stats 2>&1 | awk '/^RMS lev/ {print $4}'"));
    };
    varnoOut({"render", "--quiet", "--set", "Hot=0", "--set", "Ratio=#4", path("tone.wav"), path("out.wav")});
    const json row = rowWith(rows("curves"), {{"level_db", 0.0}});
    EXPECT_NEAR(row.at("curve_4").get<double>(), rmsDB("out.wav") - rmsDB("tone.wav"), 0.05);
}

TEST_F(MeasuredFigures, FindsTheCornersOfTheFilters) {
    const json found = rows("detector");
    // A filter of first order with its corner at 120 Hz.
    for (const double frequencyHz : {30.0, 120.0, 1000.0}) {
        const double ratio = frequencyHz / 120.0;
        const double expected = 20.0 * std::log10(ratio / std::sqrt(1.0 + ratio * ratio));
        EXPECT_NEAR(rowWith(found, {{"frequency_hz", frequencyHz}}).at("high_pass_db").get<double>(),
                    expected, 0.1);
    }
    // Around 7 kHz the signal counts 2.5 times.
    EXPECT_NEAR(rowWith(found, {{"frequency_hz", 7000.0}}).at("band_db").get<double>(),
                20.0 * std::log10(2.5), 0.1);
    EXPECT_NEAR(rowWith(found, {{"frequency_hz", 20.0}}).at("band_db").get<double>(), 0.0, 0.1);
}

TEST_F(MeasuredFigures, FindsNoDistortionWithoutDriveAndMuchWithIt) {
    const json found = rows("drive");
    EXPECT_LT(rowWith(found, {{"level_db", -24.0}, {"hot", 0.0}}).at("harmonics_percent").get<double>(),
              0.01);
    EXPECT_EQ(rowWith(found, {{"level_db", -24.0}, {"hot", 0.0}}).at("change_db"), 0.0);
    EXPECT_GT(rowWith(found, {{"level_db", -12.0}, {"hot", 0.4}}).at("harmonics_percent").get<double>(),
              10.0);
    EXPECT_LT(rowWith(found, {{"level_db", -12.0}, {"hot", 0.4}}).at("change_db").get<double>(), -8.0);
}

TEST_F(MeasuredFigures, FindsWhereAHarmonicFoldsTo) {
    // The third harmonic of 14,983 Hz is 44,949 Hz, which folds to 3,051 Hz.
    const json row = rowWith(rows("aliasing"), {{"level_db", -12.0}, {"hot", 0.4}, {"tone_hz", 14983.0}});
    EXPECT_EQ(row.at("largest_hz"), 3051.0);
    EXPECT_GE(row.at("sum_db"), row.at("largest_db"));
    EXPECT_NEAR(row.at("sum_db").get<double>(), -13.7, 0.3);
}

TEST_F(MeasuredFigures, AppliesSettings) {
    // Twice the gain is half the way up the curve.
    const json usual = rowWith(rows("curves"), {{"level_db", 0.0}});
    const json louder = rowWith(rows("curves", {"--set", "Gain=6dB"}), {{"level_db", -6.0}});
    EXPECT_NEAR(louder.at("curve_1").get<double>(), usual.at("curve_1").get<double>() + 6.0, 0.05);
}

} // namespace
} // namespace varno::test
