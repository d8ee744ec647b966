#include "DemoGain_ValueText.h"

#include "DemoGain_Coefficients.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace {

using DemoGain_ValueText::InUnit;
using DemoGain_ValueText::Normalized;
using DemoGain_ValueText::Parse;
using DemoGain_ValueText::Settings;
using DemoGain_ValueText::Write;

constexpr int kLastStep = static_cast<int>(kDemoGain_KnobSteps) - 1;
constexpr int kLastCurve = static_cast<int>(kDemoGain_CurveSteps) - 1;

const SDemoGain_Parameter& parameter(const char* id) {
    return *DemoGain_FindParameter(id);
}

double valueOfStep(int step, int last) {
    return static_cast<double>(step) / last;
}

// Every curve, with the UK switch off and on.
std::vector<Settings> everySettings() {
    std::vector<Settings> all;
    for (int curve = 0; curve <= kLastCurve; ++curve) {
        for (const float uk : {0.0F, 1.0F}) {
            all.push_back({.mRatio = static_cast<float>(valueOfStep(curve, kLastCurve)), .mUK = uk});
        }
    }
    return all;
}

TEST(DemoGain_ValueText, writesValuesAsPeopleSayThem) {
    EXPECT_EQ(Write(parameter("Gain"), 0.0), "-20.0 dB");
    EXPECT_EQ(Write(parameter("Gain"), 0.5), "0.0 dB");
    EXPECT_EQ(Write(parameter("Gain"), 0.4999), "0.0 dB") << "no sign";
    EXPECT_EQ(Write(parameter("Volume"), 1.0), "+20.0 dB");
    EXPECT_EQ(Write(parameter("Volume"), 0.4125), "-3.5 dB");
    EXPECT_EQ(Write(parameter("Hot"), static_cast<double>(0.07F)), "7.0 %");
    EXPECT_EQ(Write(parameter("Mix"), 1.0), "100.0 %");
    EXPECT_EQ(Write(parameter("Atk"), 0.0), "0.41 ms");
    EXPECT_EQ(Write(parameter("Atk"), 1.0), "41.7 ms");
    EXPECT_EQ(Write(parameter("Rls"), 0.5), "210 ms");
    EXPECT_EQ(Write(parameter("Ratio"), 0.5), "5");
    EXPECT_EQ(Write(parameter("HP"), 0.5), "off") << "on above 0.5, as the routine has it";
    EXPECT_EQ(Write(parameter("HP"), 1.0), "on");
    EXPECT_EQ(Write(parameter("MasterBypassID"), 0.0), "off");
}

TEST(DemoGain_ValueText, writesLongTimesInSeconds) {
    const Settings sixthCurve{.mRatio = 5.0F / 7.0F};
    const std::string text = Write(parameter("Rls"), 1.0, sixthCurve);
    EXPECT_EQ(text.substr(text.size() - 2), " s");
    EXPECT_GT(InUnit(parameter("Rls"), 1.0, sixthCurve), 1000.0);
    EXPECT_NEAR(*Parse(parameter("Rls"), text, sixthCurve), 1.0, 0.01);
}

TEST(DemoGain_ValueText, reportsWhetherTheUnitWasWritten) {
    using DemoGain_ValueText::ParseInUnit;
    EXPECT_EQ(ParseInUnit(parameter("Gain"), "-60 dB")->mValue, -60.0) << "not limited";
    EXPECT_TRUE(ParseInUnit(parameter("Gain"), "-60 dB")->mHasUnit);
    EXPECT_FALSE(ParseInUnit(parameter("Gain"), "3")->mHasUnit);
    EXPECT_TRUE(ParseInUnit(parameter("Atk"), "1 s")->mHasUnit);
    EXPECT_EQ(ParseInUnit(parameter("Atk"), "1 s")->mValue, 1000.0);
    EXPECT_FALSE(ParseInUnit(parameter("HP"), "on")->mHasUnit);
    EXPECT_FALSE(ParseInUnit(parameter("Gain"), "3 ms").has_value());
}

TEST(DemoGain_ValueText, knowsTheRangesInUnits) {
    using DemoGain_ValueText::RangeInUnit;
    EXPECT_EQ(RangeInUnit(parameter("Gain")).mLow, -20.0);
    EXPECT_EQ(RangeInUnit(parameter("Gain")).mHigh, 20.0);
    EXPECT_EQ(RangeInUnit(parameter("Ratio")).mHigh, 7.0);
    for (const Settings& settings : everySettings()) {
        for (const char* const id : {"Atk", "Rls"}) {
            const auto range = RangeInUnit(parameter(id), settings);
            for (int step = 0; step <= kLastStep; ++step) {
                const double ms = InUnit(parameter(id), valueOfStep(step, kLastStep), settings);
                EXPECT_GE(ms, range.mLow);
                EXPECT_LE(ms, range.mHigh);
            }
        }
    }
}

TEST(DemoGain_ValueText, onlyTimesDependOnOthers) {
    for (const SDemoGain_Parameter& row : kDemoGain_Parameters) {
        const bool isTime = row.mIdentifier == std::string("Atk") || row.mIdentifier == std::string("Rls");
        EXPECT_EQ(DemoGain_ValueText::DependsOnOthers(row), isTime) << row.mIdentifier;
    }
}

TEST(DemoGain_ValueText, readsWhatPeopleType) {
    EXPECT_EQ(Parse(parameter("Gain"), "0 dB"), 0.5);
    EXPECT_EQ(Parse(parameter("Gain"), "  +10DB "), 0.75);
    EXPECT_EQ(Parse(parameter("Gain"), "-10"), 0.25);
    EXPECT_EQ(Parse(parameter("Gain"), "−10 dB"), 0.25) << "the minus of the panel";
    EXPECT_EQ(Parse(parameter("Gain"), "-2,5 dB"), 17.5 / 40.0) << "a comma for the point";
    EXPECT_EQ(Parse(parameter("Mix"), "25%"), 0.25);
    EXPECT_EQ(Parse(parameter("Mix"), "25"), 0.25);
    EXPECT_EQ(Parse(parameter("UK"), "On"), 1.0);
    EXPECT_EQ(Parse(parameter("UK"), "off"), 0.0);
    EXPECT_EQ(Parse(parameter("Ratio"), "1"), 0.0);
    EXPECT_EQ(Parse(parameter("Ratio"), " 8 "), 1.0);
    EXPECT_EQ(Parse(parameter("Rls"), "0.2 s"), Parse(parameter("Rls"), "200 ms"));
    EXPECT_EQ(Parse(parameter("Rls"), "200"), Parse(parameter("Rls"), "200ms"));
}

TEST(DemoGain_ValueText, takesTheNearestEndForWhatLiesBeyondTheRange) {
    EXPECT_EQ(Parse(parameter("Gain"), "30 dB"), 1.0);
    EXPECT_EQ(Parse(parameter("Gain"), "-30 dB"), 0.0);
    for (const char* id : {"Atk", "Rls"}) {
        EXPECT_EQ(Parse(parameter(id), "0 ms"), 0.0) << id;
        EXPECT_EQ(Parse(parameter(id), "-5 ms"), 0.0) << id;
        EXPECT_EQ(Parse(parameter(id), "60 s"), 1.0) << id;
    }
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    for (const SDemoGain_Parameter& row : kDemoGain_Parameters) {
        EXPECT_EQ(InUnit(row, kNaN), InUnit(row, 0.0)) << row.mIdentifier;
        EXPECT_EQ(InUnit(row, -1.0), InUnit(row, 0.0)) << row.mIdentifier;
        EXPECT_EQ(InUnit(row, 2.0), InUnit(row, 1.0)) << row.mIdentifier;
    }
}

TEST(DemoGain_ValueText, refusesWhatIsNoValueOfTheParameter) {
    for (const char* text : {"", " ", "dB", "+", "loud", "3 ms", "3 %", "3 dB dB", "3 s", "nan", "inf",
                             "1e999", "--3", "+-3", ".", "-."}) {
        EXPECT_EQ(Parse(parameter("Gain"), text), std::nullopt) << text;
    }
    for (const char* text : {"", "0", "9", "1.0", "five", "on"}) {
        EXPECT_EQ(Parse(parameter("Ratio"), text), std::nullopt) << text;
    }
    EXPECT_EQ(Parse(parameter("HP"), "maybe"), std::nullopt);
    EXPECT_EQ(Parse(parameter("Atk"), "3 dB"), std::nullopt);
}

TEST(DemoGain_ValueText, readsBackWhatItWrote) {
    for (const Settings& settings : everySettings()) {
        for (const SDemoGain_Parameter& row : kDemoGain_Parameters) {
            const int last = static_cast<int>(row.mSteps) - 1;
            for (int step = 0; step <= last; ++step) {
                const std::string text = Write(row, valueOfStep(step, last), settings);
                const std::optional<double> read = Parse(row, text, settings);
                ASSERT_TRUE(read) << row.mIdentifier << " " << text;
                EXPECT_EQ(Write(row, *read, settings), text) << row.mIdentifier << " step " << step;
                if (row.mUnit.mConversion == EDemoGain_Conversion::kChoice) {
                    EXPECT_DOUBLE_EQ(*read, valueOfStep(step, last)) << row.mIdentifier;
                }
            }
        }
    }
}

TEST(DemoGain_ValueText, findsTheValueThatHasATime) {
    for (const Settings& settings : everySettings()) {
        for (const char* id : {"Atk", "Rls"}) {
            for (int step = 0; step <= kLastStep; ++step) {
                const double ms = InUnit(parameter(id), valueOfStep(step, kLastStep), settings);
                const double found = Normalized(parameter(id), ms, settings);
                EXPECT_NEAR(InUnit(parameter(id), found, settings), ms, 1e-4 * ms) << id << " " << step;
                EXPECT_LE(found, valueOfStep(step, kLastStep) + 1e-7) << "the lowest one";
            }
        }
    }
}

// The levels and choices are those of the packet computations.
TEST(DemoGain_ValueText, agreesWithTheNumbersThatTheRoutineReads) {
    for (int step = 0; step <= kLastStep; ++step) {
        const double value = valueOfStep(step, kLastStep);
        for (const char* id : {cDemoGain_GainID, cDemoGain_VolumeID}) {
            EXPECT_NEAR(InUnit(parameter(id), value), DemoGain_LevelDB(static_cast<float>(value)), 1e-5);
        }
        EXPECT_EQ(InUnit(parameter("Ratio"), value), DemoGain_CurveIndex(static_cast<float>(value)));
    }
}

// What remains of a change after the time is 1/e, by the coefficients themselves. A release coefficient is so
// near to 1 that its rounding to single precision is seen in the time.
TEST(DemoGain_ValueText, givesTheTimesOfTheFollowersCoefficients) {
    constexpr double kEpsilon = std::numeric_limits<float>::epsilon();
    for (const double sampleRate : {44100.0, 48000.0, 96000.0}) {
        for (Settings settings : everySettings()) {
            settings.mSampleRateHz = sampleRate;
            for (int step = 0; step <= kLastStep; ++step) {
                const double value = valueOfStep(step, kLastStep);
                const auto single = static_cast<float>(value);
                const SDemoGain_Dynamics dynamics =
                    DemoGain_ComputeDynamics({single, single, settings.mUK, settings.mRatio}, sampleRate);
                for (const auto& [id, coefficient] :
                     {std::pair("Atk", dynamics.mAttackCoef), {"Rls", dynamics.mReleaseCoef}}) {
                    const double samples = InUnit(parameter(id), value, settings) * sampleRate / 1000.0;
                    EXPECT_NEAR(std::log(static_cast<double>(coefficient)) * samples, -1.0,
                                kEpsilon * samples + 1e-6)
                        << id << " " << step;
                }
            }
        }
    }
}

TEST(DemoGain_ValueText, timesAreTheSameAtEverySampleRateButForTheAttackOfTheLastCurve) {
    for (Settings settings : everySettings()) {
        Settings other = settings;
        other.mSampleRateHz = 96000.0;
        EXPECT_NEAR(InUnit(parameter("Rls"), 0.3, other) / InUnit(parameter("Rls"), 0.3, settings), 1.0,
                    1e-9);
        const double ratio = InUnit(parameter("Atk"), 0.3, other) / InUnit(parameter("Atk"), 0.3, settings);
        EXPECT_NEAR(ratio, settings.mRatio == 1.0F ? 0.5 : 1.0, 1e-9);
    }
}

} // namespace
