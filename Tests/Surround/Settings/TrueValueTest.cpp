#include "Surround/Settings/TrueValue.h"

#include "Tests/Integration/HostedEffect.h"

#include <gtest/gtest.h>

namespace varno::test {
namespace {

using Settings = DemoGain_ValueText::Settings;

std::optional<double> typed(const std::string& id, const std::string& text, const Settings& settings = {}) {
    const TypedValue value = typedValue(id, text, settings);
    EXPECT_EQ(value.normalized.has_value(), value.refusal.empty()) << text;
    return value.normalized;
}

std::string refusal(const std::string& id, const std::string& text, const Settings& settings = {}) {
    return typedValue(id, text, settings).refusal;
}

TEST(TrueValue, isWrittenAsPeopleSayIt) {
    EXPECT_EQ(spokenValue("Gain", 0.425, {}), "-3.0 dB");
    EXPECT_EQ(spokenValue("Mix", 0.4, {}), "40.0 %");
    EXPECT_EQ(spokenValue("Ratio", 0.5, {}), "curve 5");
    EXPECT_EQ(spokenValue("HP", 1.0, {}), "on");
    EXPECT_EQ(spokenValue("Atk", 0.0, {}), "0.41 ms");
    EXPECT_EQ(spokenValue("MasterBypassID", 0.0, {}), "off");
    EXPECT_EQ(spokenValue("gain", 0.0, {}), "");
}

TEST(TrueValue, isReadWithItsUnitAndWithout) {
    EXPECT_NEAR(*typed("Gain", "-3 dB"), 0.425, 1e-12);
    EXPECT_NEAR(*typed("Gain", "-3"), 0.425, 1e-12);
    EXPECT_NEAR(*typed("Gain", "1"), 0.525, 1e-12) << "no normalized value";
    EXPECT_NEAR(*typed("Volume", " +2,5db "), 0.5625, 1e-12);
    EXPECT_NEAR(*typed("Mix", "40 %"), 0.4, 1e-12);
    EXPECT_NEAR(*typed("Mix", "40"), 0.4, 1e-12);
    EXPECT_EQ(typed("Gain", "20.04 dB"), 1.0) << "rounds to the end of the range";
    const double attack = *typed("Atk", "2.4 ms");
    EXPECT_EQ(spokenValue("Atk", attack, {}), "2.40 ms");
    EXPECT_EQ(typed("Atk", "2.4"), attack);
    EXPECT_EQ(typed("Atk", "0.0024 s"), attack);
}

TEST(TrueValue, belongsToTheOtherSettings) {
    const Settings last{.mRatio = 1.0F};
    EXPECT_NE(typed("Atk", "2.4 ms", last), typed("Atk", "2.4 ms"));
    EXPECT_EQ(spokenValue("Atk", *typed("Atk", "2.4 ms", last), last), "2.40 ms");
    EXPECT_TRUE(dependsOnOthers("Atk"));
    EXPECT_TRUE(dependsOnOthers("Rls"));
    EXPECT_FALSE(dependsOnOthers("Gain"));
    EXPECT_FALSE(dependsOnOthers("none"));
}

TEST(TrueValue, readsCurves) {
    for (const char* text : {"5", "curve 5", "Curve5", "CURVE  5", "#5", " # 5 "}) {
        EXPECT_NEAR(*typed("Ratio", text), 4.0 / 7.0, 1e-12) << text;
    }
    EXPECT_EQ(typed("Ratio", "1"), 0.0);
    EXPECT_EQ(typed("Ratio", "8"), 1.0);
    for (const char* text : {"0", "9", "0.5", "curve", "#", "curve curve 5", "cur 5", ""}) {
        EXPECT_FALSE(typed("Ratio", text)) << text;
    }
}

TEST(TrueValue, readsSwitches) {
    for (const char* text : {"on", "ON", " on ", "1", " 1 "}) {
        EXPECT_EQ(typed("HP", text), 1.0) << text;
    }
    for (const char* text : {"off", "Off", "0"}) {
        EXPECT_EQ(typed("HP", text), 0.0) << text;
    }
    for (const char* text : {"2", "yes", "0.5", "", "o n"}) {
        EXPECT_FALSE(typed("HP", text)) << text;
    }
    EXPECT_FALSE(typed("Ratio", "off"));
    EXPECT_NEAR(*typed("Gain", "1"), 0.525, 1e-12) << "no switch";
}

TEST(TrueValue, refusesWithWhatWasExpected) {
    EXPECT_EQ(refusal("Gain", "loud"), "Gain: expected a level from -20 to 20 dB, found \"loud\"");
    EXPECT_EQ(refusal("Volume", "30 dB"), "Volume: expected a level from -20 to 20 dB, found \"30 dB\"");
    EXPECT_EQ(refusal("Mix", "-1"), "Mix: expected a share from 0 to 100 %, found \"-1\"");
    EXPECT_EQ(refusal("Mix", "3 dB"), "Mix: expected a share from 0 to 100 %, found \"3 dB\"");
    EXPECT_EQ(refusal("Atk", "1 h"), "Attack: expected a time from 0.41 to 41.7 ms, found \"1 h\"");
    EXPECT_EQ(refusal("Ratio", "9"), "Ratio: expected a curve from 1 to 8, found \"9\"");
    EXPECT_EQ(refusal("HP", ""), "High Pass: expected off or on, found \"\"");
    EXPECT_EQ(refusal("MasterBypassID", "x"), "Master Bypass: expected off or on, found \"x\"");
    EXPECT_EQ(refusal("gain", "1"), "gain: is no parameter of the effect");
}

TEST(TrueValue, namesBothUnitsOfARangeOfTimes) {
    // The longest release is above a second, the shortest below.
    for (const float uk : {0.0F, 1.0F}) {
        for (int curve = 0; curve < 8; ++curve) {
            const Settings settings{.mRatio = static_cast<float>(curve) / 7.0F, .mUK = uk};
            const auto& row = *DemoGain_FindParameter("Rls");
            const auto range = DemoGain_ValueText::RangeInUnit(row, settings);
            const std::string low = DemoGain_ValueText::WriteInUnit(row, range.mLow);
            const std::string high = DemoGain_ValueText::WriteInUnit(row, range.mHigh);
            const std::string shown =
                low.substr(low.find(' ')) == high.substr(high.find(' ')) ? low.substr(0, low.find(' ')) : low;
            std::string expected = "Release: expected a time from ";
            expected.append(shown).append(" to ").append(high).append(", found \"x\"");
            EXPECT_EQ(refusal("Rls", "x", settings), expected);
        }
    }
}

TEST(TrueValue, isReadAsItIsWritten) {
    for (const SDemoGain_Parameter& row : kDemoGain_Parameters) {
        const int last = static_cast<int>(row.mSteps) - 1;
        for (int step = 0; step <= last; ++step) {
            const std::string text = spokenValue(row.mIdentifier, normalizedOfStep(step, last + 1), {});
            const auto value = typed(row.mIdentifier, text);
            ASSERT_TRUE(value) << row.mIdentifier << ' ' << text;
            EXPECT_EQ(spokenValue(row.mIdentifier, *value, {}), text) << row.mIdentifier;
        }
    }
}

class TrueValueOfInstance : public HostedEffect {};

TEST_F(TrueValueOfInstance, dependsOnCurveSwitchAndRate) {
    const auto instance = makeInstance(module(), 2, 96000.0);
    instance->setNormalized("Ratio", 0.25);
    instance->setNormalized("UK", 1.0);
    const Settings settings = unitSettings(*instance);
    EXPECT_EQ(settings.mRatio, 0.25F);
    EXPECT_EQ(settings.mUK, 1.0F);
    EXPECT_EQ(settings.mSampleRateHz, 96000.0);
}

} // namespace
} // namespace varno::test
