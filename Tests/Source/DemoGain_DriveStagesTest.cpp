#include "DemoGain_DriveStages.h"

#include "DemoGain_Conversions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace DemoGain;

namespace {

float targetOf(float v, float bias) {
    float target = -1.0F;
    clipTarget(bias, &v, &target, 1);
    return target;
}

/// The clip gain for `v` and `target` after `clipGain`.
float clipGainAfter(float clipGain, float recovery, float target) {
    const float v = 1.0F;
    float y = 0.0F;
    clip(recovery, clipGain, &v, &target, &y, 1);
    EXPECT_EQ(y, clipGain);
    return clipGain;
}

} // namespace

TEST(DemoGain_DriveStages, ClipTargetLeavesQuietSamplesAlone) {
    EXPECT_EQ(targetOf(0.0F, 0.0F), 1.0F);
    EXPECT_EQ(targetOf(0.3F, 0.2F), 1.0F);
    EXPECT_EQ(targetOf(-0.3F, 0.2F), 1.0F);
}

TEST(DemoGain_DriveStages, ClipTargetRoundsAShoulderAboveAHalf) {
    for (float v = 0.0F; v <= 1.0F; v += 0.001F) {
        const double c = ClipLevel(v, 0.0F);
        const double w = (c - 0.5) * 2.0 * 1.5707964;
        const double shoulder = ((-0.554926 * w * w * w + 1.55 * w) * 0.5 + 0.5) / c;
        EXPECT_NEAR(targetOf(v, 0.0F), c <= 0.5 ? 1.0 : shoulder, 1e-5) << v;
    }
}

TEST(DemoGain_DriveStages, ClipTargetBringsLoudSamplesToOne) {
    for (const float v : {1.0001F, 2.0F, -3.0F, 20.0F, 1e30F}) {
        EXPECT_EQ(targetOf(v, 0.0F), 1.0F / std::fabs(v));
    }
    EXPECT_EQ(targetOf(1.0F, 0.2F), 1.0F / (0.2F + 1.0F)) << "the bias counts";
}

TEST(DemoGain_DriveStages, ClipTargetStepsWhereTheLevelPassesOne) {
    const float above = std::nextafter(1.0F, 2.0F);
    EXPECT_NEAR(ClipLevel(1.0F, 0.0F), 0.988F, 1e-3F);
    EXPECT_NEAR(targetOf(1.0F, 0.0F), 0.694F, 1e-3F);
    EXPECT_EQ(targetOf(above, 0.0F), 1.0F / above);
}

TEST(DemoGain_DriveStages, ClipGainFallsAtOnceAndRecoversSlowly) {
    constexpr float kRecovery = 0.9945467F;
    EXPECT_EQ(clipGainAfter(1.0F, kRecovery, 0.1F), 0.1F);
    EXPECT_EQ(clipGainAfter(0.1F, kRecovery, 0.7F), kRecovery * 0.1F + (1.0F - kRecovery) * 0.7F);
    for (float held = 0.001F; held < 1.0F; held += 0.001F) {
        EXPECT_EQ(clipGainAfter(held, kRecovery, held), held) << "an equal target is no recovery";
    }
}

TEST(DemoGain_DriveStages, ShapeIsACubicOverTheDrive) {
    Settings settings{};
    settings.mInvDrive = 0.05F;
    for (const float y : {-1.2F, -1.0F, -0.5F, 0.0F, 0.1F, 1.0F}) {
        float z = 7.0F;
        shape(settings, &y, &z, 1);
        EXPECT_NEAR(z, (y - 0.49611F * y * y * y) * 0.05F, 1e-7F);
    }
}

TEST(DemoGain_DriveStages, OutputThatIsNotFiniteLeavesAsSilence) {
    const float sums[] = {1.0F, std::numeric_limits<float>::quiet_NaN(),
                          std::numeric_limits<float>::infinity(), std::numeric_limits<float>::max(), -2.0F};
    float output[5] = {};
    writeOutput(2.0F, sums, output, 5);
    EXPECT_EQ(output[0], 2.0F);
    EXPECT_EQ(output[1], 0.0F);
    EXPECT_EQ(output[2], 0.0F);
    EXPECT_EQ(output[3], 0.0F) << "too loud to be a number";
    EXPECT_EQ(output[4], -4.0F);
}
