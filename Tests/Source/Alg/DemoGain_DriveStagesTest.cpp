#include "Alg/DemoGain_DriveStages-inl.h"

#include "Alg/DemoGain_LaneSettings-inl.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace varno::test::driveStages {

using namespace DemoGain;
using namespace DemoGain::HWY_NAMESPACE;

namespace {

using Vector = hn::FixedTag<float, 4>;

float clipLevelOf(float v, float bias) {
    const Vector d;
    return hn::GetLane(ClipLevel(d, hn::Set(d, v), hn::Set(d, bias)));
}

float targetOf(float v, float bias) {
    const Vector d;
    return hn::GetLane(clipTarget(d, hn::Set(d, clipLevelOf(v, bias))));
}

// The clip gain that follows `clipGain` where the target is `target`.
float clipGainAfter(float clipGain, float recovery, float target) {
    SDemoGain_Alg_State state{};
    state.mClipCoef = recovery;
    state.mClipGain[0] = clipGain;
    ChunkRows<1> rows;
    rows.mClipTarget.v[0] = target;
    rows.mClipTargetTerm.v[0] = (1.0F - recovery) * target;
    const Group<1, 1> group{{&state}, {}};
    ClipGain<1> stage(group);
    stepThrough(stage, rows, 1);
    stage.store(group);
    EXPECT_EQ(state.mClipGain[0], rows.mClipGain.v[0]);
    return state.mClipGain[0];
}

TEST(DemoGain_DriveStages, ClipTargetLeavesQuietSamplesAlone) {
    EXPECT_EQ(targetOf(0.0F, 0.0F), 1.0F);
    EXPECT_EQ(targetOf(0.3F, 0.2F), 1.0F);
    EXPECT_EQ(targetOf(-0.3F, 0.2F), 1.0F);
}

TEST(DemoGain_DriveStages, ClipTargetRoundsAShoulderAboveAHalf) {
    for (float v = 0.0F; v <= 1.0F; v += 0.001F) {
        const double c = clipLevelOf(v, 0.0F);
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
    EXPECT_NEAR(clipLevelOf(1.0F, 0.0F), 0.988F, 1e-3F);
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
        ChunkRows<1> rows{};
        std::fill_n(rows.mDriven.v, kChunkFrames, y);
        std::fill_n(rows.mClipGain.v, kChunkFrames, 1.0F);
        shape(spread<1>({settings}), 0, rows);
        EXPECT_EQ(rows.mClipped[0][5], y);
        EXPECT_NEAR(rows.mShaped.v[5], (y - 0.49611F * y * y * y) * 0.05F, 1e-7F);
        EXPECT_EQ(rows.mShapedDifference.v[0], rows.mShaped.v[0]) << "from silence";
        EXPECT_EQ(rows.mShapedDifference.v[5], 0.0F);
    }
}

TEST(DemoGain_DriveStages, OutputThatIsNotFiniteLeavesAsSilence) {
    const float sums[kChunkFrames] = {1.0F, std::numeric_limits<float>::quiet_NaN(),
                                      std::numeric_limits<float>::infinity(),
                                      std::numeric_limits<float>::max(), -2.0F};
    Settings settings{};
    settings.mVolume = 2.0F;
    settings.mWet = 1.0F;
    ChunkRows<1> rows;
    std::fill_n(rows.mInput.history(), 1 + kChunkFrames, 0.0F);
    std::copy_n(sums, kChunkFrames, rows.mDcBlocked.v);
    Row<1> row{};
    mix<1>(spread<1>({settings}), 0, rows, row);
    const float* output = row.v;
    EXPECT_EQ(output[0], 2.0F);
    EXPECT_EQ(output[1], 0.0F);
    EXPECT_EQ(output[2], 0.0F);
    EXPECT_EQ(output[3], 0.0F) << "too loud to be a number";
    EXPECT_EQ(output[4], -4.0F);
}

} // namespace
} // namespace varno::test::driveStages
