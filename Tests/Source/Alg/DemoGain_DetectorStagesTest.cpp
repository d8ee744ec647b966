#include "Alg/DemoGain_DetectorStages-inl.h"

#include "Alg/DemoGain_DriveStages-inl.h"
#include "Alg/DemoGain_LaneSettings-inl.h"
#include "Alg/DemoGain_State.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <limits>
#include <numbers>
#include <vector>

namespace varno::test::detectorStages {

using namespace DemoGain;
using namespace DemoGain::HWY_NAMESPACE;

namespace {

constexpr double kRate = 48000.0;
constexpr std::size_t kFrames = 48000;

// A filter's response to a cosine of `hertz` in the second half of a second: amplitude and phase.
template<class Filter>
std::complex<double> answerAt(double hertz, Filter filter) {
    std::vector<float> in(kFrames);
    std::vector<float> out(kFrames);
    const double step = 2.0 * std::numbers::pi * hertz / kRate;
    for (std::size_t n = 0; n < kFrames; ++n) {
        in[n] = static_cast<float>(std::cos(step * static_cast<double>(n)));
    }
    filter(in.data(), out.data(), kFrames);
    std::complex<double> sum;
    for (std::size_t n = kFrames / 2; n < kFrames; ++n) {
        sum += static_cast<double>(out[n]) * std::polar(1.0, -step * static_cast<double>(n));
    }
    return sum * 4.0 / static_cast<double>(kFrames);
}

std::complex<double> highPassAt(double hertz) {
    SDemoGain_Alg_State state{};
    DemoGain_ResetState(state, kRate);
    return answerAt(hertz, [&](const float* in, float* out, std::size_t frames) {
        ChunkRows<1> rows;
        HighPass<1> highPass(Group<1, 1>{{&state}, {}});
        for (std::size_t start = 0; start < frames; start += kChunkFrames) {
            const std::size_t chunk = start / kChunkFrames;
            std::copy_n(in + start, kChunkFrames, rows.mRaw[chunk]);
            sanitiseInput(state.mHp, chunk, rows);
            stepThrough(highPass, rows, kChunkFrames);
            std::copy_n(rows.mHighPassed.v, kChunkFrames, out + start);
        }
    });
}

std::complex<double> allPassAt(double hertz) {
    SDemoGain_Alg_State state{};
    DemoGain_ResetState(state, kRate);
    return answerAt(hertz, [&](const float* in, float* out, std::size_t frames) {
        ChunkRows<1> rows;
        AllPass<1> allPass(Group<1, 1>{{&state}, {}});
        for (std::size_t start = 0; start < frames; start += kChunkFrames) {
            const std::size_t chunk = start / kChunkFrames;
            std::copy_n(in + start, kChunkFrames, rows.mInput[chunk]);
            selectDetectorInput(LaneSettings{}, state.mAp, chunk, rows);
            stepThrough(allPass, rows, kChunkFrames);
            std::copy_n(rows.mAllPassed.v, kChunkFrames, out + start);
        }
    });
}

// The curve's gain where the detector's signal is `detector`.
float gainOf(const GainCurve& curve, float detector) {
    Settings settings{};
    settings.mCurve = curve;
    settings.mBandGain = 1.0F;
    settings.mGain = 1.0F;
    ChunkRows<1> rows;
    std::fill_n(rows.mDetectorIn[0], kChunkFrames, detector);
    std::fill_n(rows.mAllPassed.v, kChunkFrames, 0.0F);
    const LaneSettings lanes = spread<1>({settings});
    measureLevel(lanes, 0, rows);
    convertLevel(rows);
    computeGain(lanes, rows);
    return rows.mGain.v[3];
}

double dBOf(std::complex<double> answer) {
    return 20.0 * std::log10(std::abs(answer));
}

TEST(DemoGain_DetectorStages, SanitisesAboveTheLargestInput) {
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    const float raw[kChunkFrames] = {1e30F,     -1e30F,     std::nextafter(1e30F, kInfinity),
                                     kInfinity, -kInfinity, std::numeric_limits<float>::quiet_NaN(),
                                     -0.0F,     0.5F};
    ChunkRows<1> rows;
    std::copy_n(raw, kChunkFrames, rows.mRaw[0]);
    sanitiseInput(SDemoGain_DetectorSection{}, 0, rows);
    const float* x = rows.mInput[0];
    EXPECT_EQ(x[0], 1e30F);
    EXPECT_EQ(x[1], -1e30F);
    for (int i = 2; i < 6; ++i) {
        EXPECT_EQ(x[i], 0.0F) << i;
        EXPECT_FALSE(std::signbit(x[i])) << i;
    }
    EXPECT_TRUE(std::signbit(x[6]));
    EXPECT_EQ(x[7], 0.5F);
}

TEST(DemoGain_DetectorStages, TheHighPassTurnsAt120Hz) {
    EXPECT_NEAR(dBOf(highPassAt(120.0)), -3.01, 0.05);
    EXPECT_NEAR(dBOf(highPassAt(12.0)), -20.04, 0.1);
    EXPECT_NEAR(dBOf(highPassAt(6000.0)), 0.0, 0.05);
}

TEST(DemoGain_DetectorStages, TheAllPassPassesAllAndTurnsAt7kHz) {
    for (const double hertz : {100.0, 1000.0, 5000.0, 7000.0, 15000.0}) {
        EXPECT_NEAR(dBOf(allPassAt(hertz)), 0.0, 0.01) << hertz;
    }
    EXPECT_NEAR(std::abs(std::arg(allPassAt(7000.0))), std::numbers::pi, 0.01);
    EXPECT_NEAR(std::arg(allPassAt(10.0)), 0.0, 0.05);
}

TEST(DemoGain_DetectorStages, WeightingLeavesTheSignalWithoutEmphasis) {
    Settings settings{};
    settings.mGain = 2.0F;
    const hn::FixedTag<float, 4> d;
    const auto input = hn::Set(d, 0.75F);
    const auto allPassed = hn::Set(d, 0.25F);
    float detector[2];
    settings.mBandGain = 1.0F;
    detector[0] = hn::GetLane(emphasiseBand(d, spread<1>({settings}), input, allPassed));
    settings.mBandGain = 2.5F;
    detector[1] = hn::GetLane(emphasiseBand(d, spread<1>({settings}), input, allPassed));
    EXPECT_EQ(detector[0], 1.5F);
    EXPECT_EQ(detector[1], (0.5F * 2.5F + 1.0F) * 0.5F * 2.0F);
}

TEST(DemoGain_DetectorStages, TheGainCurveHasThreeParts) {
    // A curve that is t * -45 within the knee.
    const GainCurve curve{
        .mThreshold = -30.0F, .mTop = 15.0F, .mC = {1.0F, 0.0F, 0.0F, 0.0F}, .mTopGain = -46.0F};
    EXPECT_EQ(gainOf(curve, 0.0F), -0.000001F);
    EXPECT_EQ(gainOf(curve, 0.001F), -0.000001F);
    EXPECT_NEAR(gainOf(curve, 2.0F), -36.02F, 0.01F);
    EXPECT_EQ(gainOf(curve, 100.0F), -46.0F);
    EXPECT_EQ(gainOf(curve, -2.0F), gainOf(curve, 2.0F));
}

TEST(DemoGain_DetectorStages, TheJoinsOfTheGainCurveAreStrict) {
    // Levels in dB that LinToDb returns exactly: -80 for silence, 24 for its ceiling.
    GainCurve curve{.mThreshold = -80.0F, .mTop = -35.0F, .mC = {1.0F, 0.0F, 0.0F, 0.0F}, .mTopGain = -99.0F};
    EXPECT_EQ(gainOf(curve, 0.0F), -0.000001F) << "at the threshold there is no reduction yet";
    curve.mThreshold = -21.0F;
    curve.mTop = 24.0F;
    EXPECT_NEAR(gainOf(curve, fCeilLin), -45.0F, 1e-4F) << "at the top it is still the polynomial";
}

TEST(DemoGain_DetectorStages, LinkGivesBothChannelsTheMean) {
    const hn::FixedTag<float, 4> d;
    HWY_ALIGN float reduction[4] = {-4.0F, -8.0F, 0.0F, 0.0F};
    hn::Store(linked(d, hn::Load(d, reduction)), d, reduction);
    EXPECT_EQ(reduction[0], -6.0F);
    EXPECT_EQ(reduction[1], -6.0F);
    EXPECT_EQ(reduction[2], 0.0F);
    EXPECT_EQ(reduction[3], 0.0F);
}

} // namespace
} // namespace varno::test::detectorStages
