#include "AudioFile/Quantizer.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <tuple>
#include <vector>

namespace varno::test {
namespace {

constexpr std::size_t kNoiseValues = 100'000;

std::vector<double> noise(std::uint64_t channel) {
    TpdfNoise source(channel);
    std::vector<double> values(kNoiseValues);
    std::generate(values.begin(), values.end(), [&] { return source.next(); });
    return values;
}

TEST(DitherTest, NamesOfTheKinds) {
    EXPECT_EQ(ditherFromName("tpdf"), Dither::kTpdf);
    EXPECT_EQ(ditherFromName("none"), Dither::kNone);
    EXPECT_EQ(ditherFromName("rpdf"), std::nullopt);
    EXPECT_EQ(ditherFromName(""), std::nullopt);
}

TEST(DitherTest, IsTriangularOverTwoSteps) {
    double sum = 0.0;
    double squares = 0.0;
    std::size_t beyondHalf = 0;
    for (const double value : noise(0)) {
        ASSERT_LT(std::abs(value), 1.0);
        sum += value;
        squares += value * value;
        beyondHalf += std::abs(value) > 0.5 ? 1U : 0U;
    }
    const auto count = static_cast<double>(kNoiseValues);
    EXPECT_NEAR(sum / count, 0.0, 0.005);
    EXPECT_NEAR(squares / count, 1.0 / 6.0, 0.002);
    // With uniform noise it would be 0.5.
    EXPECT_NEAR(static_cast<double>(beyondHalf) / count, 0.25, 0.005);
}

TEST(DitherTest, EveryRunIsTheSame) {
    EXPECT_EQ(noise(0), noise(0));
    EXPECT_EQ(noise(1), noise(1));
}

TEST(DitherTest, ChannelsAreUncorrelated) {
    const std::vector<double> left = noise(0);
    const std::vector<double> right = noise(1);
    double product = 0.0;
    for (std::size_t i = 0; i < kNoiseValues; ++i) {
        product += left[i] * right[i];
    }
    EXPECT_NEAR(product / static_cast<double>(kNoiseValues), 0.0, 0.002);
}

// The integer of `bits` bits that the quantizer makes.
std::int32_t integer(SampleQuantizer& quantizer, int bits, double sample) {
    std::int32_t result = 0;
    quantizer.quantize({&sample, 1}, &result);
    return result >> (32 - bits);
}

std::int32_t integer(int bits, double sample) {
    SampleQuantizer quantizer(bits, Dither::kNone, 1);
    return integer(quantizer, bits, sample);
}

TEST(SampleQuantizerTest, EveryIntegerComesBack) {
    for (const int bits : {8, 13, 14, 16}) {
        for (int value = -(1 << (bits - 1)); value < 1 << (bits - 1); ++value) {
            ASSERT_EQ(integer(bits, std::ldexp(value, 1 - bits)), value) << bits;
        }
    }
}

TEST(SampleQuantizerTest, TheEndsOfTheLongIntegersComeBack) {
    for (const int bits : {24, 32}) {
        const std::int64_t end = std::int64_t{1} << (bits - 1);
        for (const std::int64_t value :
             {-end, -end + 1, -std::int64_t{1}, std::int64_t{0}, end - 2, end - 1}) {
            EXPECT_EQ(integer(bits, std::ldexp(static_cast<double>(value), 1 - bits)), value) << bits;
        }
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
    SampleQuantizer quantizer(16, Dither::kNone, 1);
    EXPECT_EQ(integer(quantizer, 16, 1.0), 32767);
    EXPECT_EQ(integer(quantizer, 16, -1.0), -32768);
    EXPECT_EQ(integer(quantizer, 16, 1.0 + 0.4 / 32768.0), 32767);
    EXPECT_EQ(quantizer.clipped(),
              0); // full scale does not count as clipped, nor less than half a step beyond
    EXPECT_EQ(integer(quantizer, 16, 1.0 + 0.6 / 32768.0), 32767);
    EXPECT_EQ(integer(quantizer, 16, -1.5), -32768);
    EXPECT_EQ(integer(quantizer, 16, 1e30), 32767);
    EXPECT_EQ(quantizer.clipped(), 3);
}

TEST(SampleQuantizerTest, InfinitiesAndNoNumbersAreClippedToo) {
    SampleQuantizer quantizer(24, Dither::kNone, 1);
    EXPECT_EQ(integer(quantizer, 24, std::numeric_limits<double>::infinity()), 8388607);
    EXPECT_EQ(integer(quantizer, 24, -std::numeric_limits<double>::infinity()), -8388608);
    EXPECT_EQ(integer(quantizer, 24, std::numeric_limits<double>::quiet_NaN()), 0);
    EXPECT_EQ(quantizer.clipped(), 3);
}

// Without dither a signal below half a step becomes 0; with dither the mean keeps its value.
TEST(SampleQuantizerTest, DitherKeepsWhatLiesBelowAStep) {
    constexpr int kCount = 100'000;
    SampleQuantizer quantizer(16, Dither::kTpdf, 1);
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
    SampleQuantizer quantizer(16, Dither::kTpdf, 1);
    for (int i = 0; i < 1000; ++i) {
        EXPECT_GE(integer(quantizer, 16, 32767.0 / 32768.0), 32765);
        EXPECT_LE(integer(quantizer, 16, -1.0), -32766);
    }
    EXPECT_EQ(quantizer.clipped(), 0); // samples that exceed full scale by the noise alone do not count
}

// The limits of rounding and clipping, their neighbours on both sides, and noise between them.
std::vector<float> awkwardSamples(int bits) {
    std::vector<float> samples = {
        std::numeric_limits<float>::quiet_NaN(),  std::numeric_limits<float>::infinity(),
        -std::numeric_limits<float>::infinity(),  std::numeric_limits<float>::max(),
        std::numeric_limits<float>::denorm_min(), -0.0F};
    const auto step = std::ldexp(1.0F, 1 - bits);
    for (const float edge : {0.5F * step, 1.5F * step, 1.0F - step, 1.0F, 1.0F + 0.5F * step, 1.0F + step}) {
        for (const float sample : {edge, std::nextafter(edge, 0.0F), std::nextafter(edge, 2.0F)}) {
            samples.push_back(sample);
            samples.push_back(-sample);
        }
    }
    std::mt19937 random(1);
    std::uniform_real_distribution<float> range(-1.1F, 1.1F);
    while (samples.size() < 3000) {
        samples.push_back(range(random));
    }
    return samples;
}

// The literal evaluation for one sample.
std::int32_t plainInteger(int bits, double sample, double noise) {
    const double most = std::ldexp(1.0, bits - 1);
    const double steps = (std::isnan(sample) ? 0.0 : sample * most) + noise;
    return static_cast<std::int32_t>(std::nearbyint(std::min(std::max(steps, -most), most - 1.0)));
}

bool isClipped(int bits, double sample) {
    return !(std::abs(sample) * std::ldexp(1.0, bits - 1) <= std::ldexp(1.0, bits - 1) + 0.5);
}

struct Quantized {
    std::vector<std::int32_t> integers;
    std::int64_t clipped = 0;

    bool operator==(const Quantized&) const = default;
};

struct Format {
    int bits;
    Dither dither;
    std::size_t channels;
};

Quantized quantizePlainly(const Format& format, const std::vector<float>& samples) {
    std::vector<TpdfNoise> noise;
    for (std::size_t channel = 0; channel < format.channels; ++channel) {
        noise.emplace_back(channel);
    }
    Quantized result;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double lift = format.dither == Dither::kTpdf ? noise[i % format.channels].next() : 0.0;
        result.integers.push_back(plainInteger(format.bits, samples[i], lift));
        result.clipped += isClipped(format.bits, samples[i]) ? 1 : 0;
    }
    return result;
}

// In portions that are not a whole number of frames, pieces or vectors.
template<class Integer, class Sample>
Quantized quantize(const Format& format, const std::vector<Sample>& samples) {
    constexpr std::size_t kPortion = 997;
    SampleQuantizer quantizer(format.bits, format.dither, format.channels);
    std::vector<Integer> out(samples.size());
    for (std::size_t done = 0; done < samples.size(); done += kPortion) {
        quantizer.quantize({samples.data() + done, std::min(kPortion, samples.size() - done)},
                           out.data() + done);
    }
    Quantized result{{out.begin(), out.end()}, quantizer.clipped()};
    for (std::int32_t& integer : result.integers) {
        integer >>= static_cast<int>(8 * sizeof(Integer)) - format.bits;
    }
    return result;
}

class SampleQuantizerPlainTest : public testing::TestWithParam<std::tuple<int, Dither, std::size_t>> {};

// For all types and portions, each sample has the value that it has alone.
TEST_P(SampleQuantizerPlainTest, EqualsThePlainCalculation) {
    const auto [bits, dither, channels] = GetParam();
    const Format format{bits, dither, channels};
    const std::vector<float> singles = awkwardSamples(bits);
    const std::vector<double> doubles(singles.begin(), singles.end());
    const Quantized expected = quantizePlainly(format, singles);
    EXPECT_GT(expected.clipped, 0);
    EXPECT_TRUE(quantize<std::int32_t>(format, singles) == expected);
    EXPECT_TRUE(quantize<std::int32_t>(format, doubles) == expected);
    if (bits <= 16) {
        EXPECT_TRUE(quantize<std::int16_t>(format, singles) == expected);
        EXPECT_TRUE(quantize<std::int16_t>(format, doubles) == expected);
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, SampleQuantizerPlainTest,
                         testing::Combine(testing::Values(8, 13, 16, 24, 32),
                                          testing::Values(Dither::kNone, Dither::kTpdf),
                                          testing::Values(std::size_t{1}, std::size_t{2}, std::size_t{3})));

} // namespace
} // namespace varno::test
