#include "Host/MeterBank.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace varno {
namespace {

constexpr double kRate = 48000.0;

// Plays a second of silence after a tap of 1.0, in buffers of one size, and tells the value at the end.
float afterASecond(std::int32_t frames) {
    MeterBank meters({1}, kRate);
    meters.beforeBuffer();
    meters.taps()[0] = 1.0F;
    meters.afterBuffer(frames);
    for (std::int32_t done = 0; done < static_cast<std::int32_t>(kRate); done += frames) {
        meters.beforeBuffer();
        meters.afterBuffer(frames);
    }
    return meters.value(0);
}

TEST(MeterBankTest, FallsByTimeWhateverTheBufferSize) {
    const double expected = std::pow(10.0, -kMeterFallDBPerSecond / 20.0);
    for (const std::int32_t frames : {1, 32, 480, 1000, 4800}) {
        EXPECT_NEAR(expected, afterASecond(frames), 2e-3 * expected) << frames;
    }
}

TEST(MeterBankTest, TapsLieContiguouslyInTheOrderOfTheirIdentifiers) {
    MeterBank meters({7, 5, 3}, kRate);
    meters.taps()[1] = 0.5F;
    meters.taps()[2] = 0.25F;
    meters.afterBuffer(10);
    EXPECT_EQ(0.0F, meters.value(*meters.indexOf(7)));
    EXPECT_EQ(0.5F, meters.value(*meters.indexOf(5)));
    EXPECT_EQ(0.25F, meters.value(*meters.indexOf(3)));
    EXPECT_EQ(std::nullopt, meters.indexOf(4));
}

TEST(MeterBankTest, KeepsThePeakWhileTheValueFalls) {
    MeterBank meters({1}, kRate);
    meters.taps()[0] = 0.8F;
    meters.afterBuffer(4800);
    meters.beforeBuffer();
    meters.afterBuffer(4800);
    EXPECT_LT(meters.value(0), 0.8F);
    EXPECT_EQ(0.8F, meters.peak(0));
    meters.clearPeak(0);
    EXPECT_EQ(0.0F, meters.peak(0));
}

TEST(MeterBankTest, ClipsAboveFullScaleOnly) {
    MeterBank meters({1}, kRate);
    meters.taps()[0] = 1.0F;
    meters.afterBuffer(1);
    EXPECT_FALSE(meters.clipped(0));
    meters.taps()[0] = 1.0001F;
    meters.afterBuffer(1);
    EXPECT_TRUE(meters.clipped(0));
    meters.clearClip(0);
    EXPECT_FALSE(meters.clipped(0));
}

TEST(MeterBankTest, EndsAtZero) {
    MeterBank meters({1, 2}, kRate);
    meters.taps()[0] = 2.0F * kMeterFloor;
    meters.taps()[1] = std::numeric_limits<float>::quiet_NaN();
    meters.afterBuffer(48000);
    meters.beforeBuffer();
    EXPECT_EQ(0.0F, meters.taps()[0]);
    EXPECT_EQ(0.0F, meters.taps()[1]);
}

TEST(MeterBankTest, ABufferOfNoFramesDoesNotMakeItFall) {
    MeterBank meters({1}, kRate);
    meters.taps()[0] = 0.5F;
    meters.afterBuffer(0);
    meters.beforeBuffer();
    EXPECT_EQ(0.5F, meters.taps()[0]);
}

TEST(MeterBankTest, ResetPutsEverythingToZero) {
    MeterBank meters({1}, kRate);
    meters.taps()[0] = 2.0F;
    meters.afterBuffer(1);
    meters.reset();
    EXPECT_EQ(0.0F, meters.taps()[0]);
    EXPECT_EQ(0.0F, meters.value(0));
    EXPECT_EQ(0.0F, meters.peak(0));
    EXPECT_FALSE(meters.clipped(0));
}

} // namespace
} // namespace varno
