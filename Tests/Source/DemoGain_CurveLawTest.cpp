#include "DemoGain_CurveLaw.h"

#include "DemoGain_Coefficients.h"
#include "DemoGain_MeterLaw.h"
#include "Tests/Support/AlgFixture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace varno::test::curveLaw {

namespace {

constexpr double kRate = 48000.0;
constexpr int kCurves = 8;

DemoGain::GainCurve curveOf(int n, float attack, float release) {
    return DemoGain_ComputeCurve(
        {.mAttack = attack, .mRelease = release, .mUK = 0.0F, .mRatio = static_cast<float>(n) / 7.0F});
}

// The gain in dB that the routine's meter shows once a constant signal has lasted for long.
float settledGain(int n, const AlgParameters& others, float amplitude) {
    AlgParameters parameters = others;
    parameters.ratio = static_cast<float>(n) / 7.0F;
    constexpr std::int32_t kFrames = 4800;
    constexpr int kBuffers = 100; // 10 s, many times the longest time constant but for that of one curve
    AlgInstance instance(1, kRate);
    instance.set(parameters);
    const std::vector<float> input(kFrames, amplitude);
    std::vector<float> output(kFrames);
    const float* in = input.data();
    float* out = output.data();
    for (int i = 0; i < kBuffers; ++i) {
        instance.taps().fill(0.0F);
        instance.process(&in, &out, kFrames);
    }
    return instance.taps()[eMeterTap_GainReductionLeft] / DemoGain::kMeterPerDB;
}

TEST(DemoGain_CurveLaw, IsWhatTheRoutineSettlesAt) {
    // Rounding holds the slowest follower this far from where it goes, dB.
    constexpr float kClose = 0.06F;
    AlgParameters parameters;
    parameters.release = 0.3F;
    for (int n = 0; n < kCurves; ++n) {
        const DemoGain::GainCurve curve = curveOf(n, parameters.attack, parameters.release);
        // Above 1 the detector's level is the magnitude itself.
        for (const float amplitude : {1.25F, 2.0F, 4.0F, 5.5F, 10.0F}) {
            const float level = 20.0F * std::log10(amplitude);
            EXPECT_NEAR(settledGain(n, parameters, amplitude), curve.settledLevel(level) - level, kClose)
                << "curve " << n + 1 << " at " << level << " dB";
        }
    }
}

TEST(DemoGain_CurveLaw, HasThreeParts) {
    for (int n = 0; n < kCurves; ++n) {
        const DemoGain::GainCurve curve = curveOf(n, 0.5F, 0.5F);
        EXPECT_EQ(curve.gain(-30.0F), -0.000001F) << "the start of the knee belongs to what is below it";
        EXPECT_EQ(curve.gain(-80.0F), -0.000001F);
        EXPECT_EQ(curve.gain(15.0F), curve.knee(15.0F));
        EXPECT_EQ(curve.gain(24.0F), curve.mTopGain);
        EXPECT_EQ(curve.mTopGain, curve.knee(15.0F));
        EXPECT_NEAR(curve.settledLevel(-40.0F), -40.0F, 1e-4F);
    }
}

TEST(DemoGain_CurveLaw, HasTheCoefficientsOfThePackets) {
    const SDemoGain_Dynamics packets = DemoGain_ComputeDynamics({0.9F, 0.1F, 0.0F, 1.0F}, 192000.0);
    const DemoGain::GainCurve curve = curveOf(kCurves - 1, 0.9F, 0.1F);
    for (std::size_t i = 0; i < std::size(packets.mCurve); ++i) {
        EXPECT_EQ(curve.mC[i], packets.mCurve[i]) << i;
    }
    EXPECT_EQ(curve.mThreshold, packets.mThreshold);
}

} // namespace
} // namespace varno::test::curveLaw
