#include "SampleQuantizer.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace varno::test {
namespace {

// The integer of `bits` bits that the quantizer makes.
std::int32_t integer(SampleQuantizer& quantizer, int bits, double sample) {
    return quantizer.quantize(sample) >> (32 - bits);
}

std::int32_t integer(int bits, double sample) {
    SampleQuantizer quantizer(bits, Dither::kNone, 0);
    return integer(quantizer, bits, sample);
}

TEST(SampleQuantizerTest, EveryIntegerComesBack) {
    for (const int bits : {8, 13, 14, 16})
        for (int value = -(1 << (bits - 1)); value < 1 << (bits - 1); ++value)
            ASSERT_EQ(integer(bits, std::ldexp(value, 1 - bits)), value) << bits;
}

TEST(SampleQuantizerTest, TheEndsOfTheLongIntegersComeBack) {
    for (const int bits : {24, 32}) {
        const std::int64_t end = std::int64_t{1} << (bits - 1);
        for (const std::int64_t value : {-end, -end + 1, -std::int64_t{1}, std::int64_t{0}, end - 2, end - 1})
            EXPECT_EQ(integer(bits, std::ldexp(static_cast<double>(value), 1 - bits)), value) << bits;
    }
}

TEST(SampleQuantizerTest, RoundsToNearestTiesToEven) {
    const double step = std::ldexp(1.0, -15);
    EXPECT_EQ(integer(16, 0.49 * step), 0);
    EXPECT_EQ(integer(16, 0.51 * step), 1);
    EXPECT_EQ(integer(16, -0.51 * step), -1);
    EXPECT_EQ(integer(16, 0.5 * step), 0);
    EXPECT_EQ(integer(16, 1.5 * step), 2);
    EXPECT_EQ(integer(16, -2.5 * step), -2);
    EXPECT_EQ(integer(16, 1000.4 * step), 1000);
}

TEST(SampleQuantizerTest, LimitsToFullScaleAndCountsWhatLiesBeyond) {
    SampleQuantizer quantizer(16, Dither::kNone, 0);
    EXPECT_EQ(integer(quantizer, 16, 1.0), 32767);
    EXPECT_EQ(integer(quantizer, 16, -1.0), -32768);
    EXPECT_EQ(integer(quantizer, 16, 1.0 + 0.4 / 32768.0), 32767);
    EXPECT_EQ(quantizer.clipped(), 0); // full scale itself is no clip, nor is less than half a step
    EXPECT_EQ(integer(quantizer, 16, 1.0 + 0.6 / 32768.0), 32767);
    EXPECT_EQ(integer(quantizer, 16, -1.5), -32768);
    EXPECT_EQ(integer(quantizer, 16, 1e30), 32767);
    EXPECT_EQ(quantizer.clipped(), 3);
}

TEST(SampleQuantizerTest, InfinitiesAndNoNumbersAreClippedToo) {
    SampleQuantizer quantizer(24, Dither::kNone, 0);
    EXPECT_EQ(integer(quantizer, 24, std::numeric_limits<double>::infinity()), 8388607);
    EXPECT_EQ(integer(quantizer, 24, -std::numeric_limits<double>::infinity()), -8388608);
    EXPECT_EQ(integer(quantizer, 24, std::numeric_limits<double>::quiet_NaN()), 0);
    EXPECT_EQ(quantizer.clipped(), 3);
}

// Without dither a signal below half a step vanishes; with it the mean keeps its value.
TEST(SampleQuantizerTest, DitherKeepsWhatLiesBelowAStep) {
    constexpr int kCount = 100'000;
    SampleQuantizer quantizer(16, Dither::kTpdf, 0);
    double sum = 0.0;
    double squares = 0.0;
    for (int i = 0; i < kCount; ++i) {
        const double value = integer(quantizer, 16, std::ldexp(0.3, -15));
        EXPECT_LE(std::abs(value), 1.0);
        sum += value;
        squares += (value - 0.3) * (value - 0.3);
    }
    EXPECT_NEAR(sum / kCount, 0.3, 0.01);
    // Triangular noise two steps wide has a variance of 1/6, rounding one of 1/12.
    EXPECT_NEAR(squares / kCount, 0.25, 0.01);
    EXPECT_EQ(integer(16, std::ldexp(0.3, -15)), 0);
}

TEST(SampleQuantizerTest, DitherNeverWrapsAround) {
    SampleQuantizer quantizer(16, Dither::kTpdf, 0);
    for (int i = 0; i < 1000; ++i) {
        EXPECT_GE(integer(quantizer, 16, 32767.0 / 32768.0), 32765);
        EXPECT_LE(integer(quantizer, 16, -1.0), -32766);
    }
    EXPECT_EQ(quantizer.clipped(), 0); // what the noise lifts over the edge is not the signal's doing
}

} // namespace
} // namespace varno::test
