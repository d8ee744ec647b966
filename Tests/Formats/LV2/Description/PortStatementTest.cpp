// The one table about ports that the module cannot tell, held against the module.
#include "LV2/Description/PortStatement.h"

#include "DemoGain_Coefficients.h"
#include "DemoGain_ParameterTable.h"

#include <gtest/gtest.h>
#include <string_view>

namespace varno {
namespace {

TEST(PortTexts, areThereForEveryParameterOnce) {
    std::size_t saved = 0;
    for (const SDemoGain_Parameter& row : kDemoGain_Parameters) {
        if (std::string_view(row.mIdentifier) == cDemoGain_MasterBypassID) {
            continue;
        }
        ++saved;
        EXPECT_STREQ(parameterPortText(row.mIdentifier).parameterID, row.mIdentifier);
    }
    EXPECT_EQ(parameterPortTexts().size(), saved);
}

TEST(PortTexts, areThereForNothingElse) {
    EXPECT_THROW(parameterPortText("gain"), std::out_of_range);
    EXPECT_THROW(parameterPortText(cDemoGain_MasterBypassID), std::out_of_range);
    EXPECT_THROW(meterComment("gain"), std::out_of_range);
}

TEST(PortTexts, knowTheLawOfTheLevels) {
    EXPECT_EQ(DemoGain_LevelDB(0.0F), kLevelLowDB);
    EXPECT_EQ(DemoGain_LevelDB(1.0F), kLevelHighDB);
    for (const int levelDB : kLabelledLevelsDB) {
        const float value = (static_cast<float>(levelDB) - kLevelLowDB) / (kLevelHighDB - kLevelLowDB);
        EXPECT_NEAR(DemoGain_LevelDB(value), static_cast<float>(levelDB), 1e-5F);
    }
}

TEST(PortTexts, callLevelsAndCurvesSoAlone) {
    for (const ParameterPortText& text : parameterPortTexts()) {
        const std::string_view id = text.parameterID;
        const bool isLevel = id == cDemoGain_GainID || id == cDemoGain_VolumeID;
        EXPECT_EQ(text.meaning == ValueMeaning::kLevel, isLevel) << id;
        EXPECT_EQ(text.meaning == ValueMeaning::kCurve, id == cDemoGain_RatioID) << id;
    }
}

// A scale point's value chooses the curve that its label names.
TEST(PortTexts, numberTheCurvesAsTheRoutineDoes) {
    constexpr int kCurves = static_cast<int>(kDemoGain_CurveSteps);
    for (int curve = 0; curve < kCurves; ++curve) {
        const float value = static_cast<float>(curve) / static_cast<float>(kCurves - 1);
        EXPECT_EQ(DemoGain_CurveIndex(value), curve);
    }
}

} // namespace
} // namespace varno
