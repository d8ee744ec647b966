#include "AudioFile/Dither.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <vector>

namespace varno::test {
namespace {

constexpr std::size_t kCount = 100'000;

std::vector<double> noise(std::uint64_t channel) {
    TpdfNoise source(channel);
    std::vector<double> values(kCount);
    std::generate(values.begin(), values.end(), [&] { return source.next(); });
    return values;
}

TEST(DitherTest, OptionsNameTheirKinds) {
    EXPECT_EQ(ditherFromOption("tpdf"), Dither::kTpdf);
    EXPECT_EQ(ditherFromOption("none"), Dither::kNone);
    EXPECT_EQ(ditherFromOption("rpdf"), std::nullopt);
    EXPECT_EQ(ditherFromOption(""), std::nullopt);
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
    const auto count = static_cast<double>(kCount);
    EXPECT_NEAR(sum / count, 0.0, 0.005);
    EXPECT_NEAR(squares / count, 1.0 / 6.0, 0.002);
    EXPECT_NEAR(static_cast<double>(beyondHalf) / count, 0.25,
                0.005); // a uniform one would have half of them there
}

TEST(DitherTest, EveryRunIsTheSame) {
    EXPECT_EQ(noise(0), noise(0));
    EXPECT_EQ(noise(1), noise(1));
}

TEST(DitherTest, ChannelsAreUncorrelated) {
    const std::vector<double> left = noise(0);
    const std::vector<double> right = noise(1);
    double product = 0.0;
    for (std::size_t i = 0; i < kCount; ++i) {
        product += left[i] * right[i];
    }
    EXPECT_NEAR(product / static_cast<double>(kCount), 0.0, 0.002);
}

} // namespace
} // namespace varno::test
