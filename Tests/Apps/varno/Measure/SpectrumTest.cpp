#include "Measure/Spectrum.h"
#include "Measure/MeasuredEffect.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

// Powers of signals whose content is known.

namespace varno::test {
namespace {

constexpr double kRateHz = 48'000.0;
constexpr int kToneHz = 2999;

Samples sumOf(const Samples& first, const Samples& second) {
    Samples sum(first.size());
    std::ranges::transform(first, second, sum.begin(), std::plus());
    return sum;
}

Samples second(double frequencyHz, double levelDB) {
    return sine(frequencyHz, levelDB, 1.0, kRateHz);
}

// Of a sine of that level: half the square of its peak value.
double powerOf(double levelDB) {
    return magnitude(levelDB) * magnitude(levelDB) / 2.0;
}

TEST(ToneSpectrumTest, AToneAloneHasNothingBesideIt) {
    const ToneSpectrum spectrum(second(kToneHz, -12.0), kToneHz);
    EXPECT_NEAR(spectrum.tone() / powerOf(-12.0), 1.0, 1e-6);
    // What single precision leaves.
    EXPECT_LT(spectrum.harmonics(), powerOf(-140.0));
    EXPECT_LT(spectrum.inharmonics(), powerOf(-140.0));
}

TEST(ToneSpectrumTest, SumsHarmonicsUpToHalfTheRate) {
    const auto signal =
        sumOf(second(kToneHz, 0.0), sumOf(second(2.0 * kToneHz, -20.0), second(8.0 * kToneHz, -30.0)));
    EXPECT_NEAR(ToneSpectrum(signal, kToneHz).harmonics() / (powerOf(-20.0) + powerOf(-30.0)), 1.0, 1e-5);
}

TEST(ToneSpectrumTest, SumsTheRestWithinHearingAndNamesTheLargest) {
    // 8 and 23,000 Hz are beyond hearing, a constant is no product.
    auto signal = sumOf(second(kToneHz, 0.0), sumOf(second(8.0, -10.0), second(23'000.0, -10.0)));
    signal = sumOf(signal, sumOf(second(100.0, -40.0), second(17'777.0, -37.0)));
    std::ranges::transform(signal, signal.begin(), [](float sample) { return sample + 0.25F; });
    const ToneSpectrum spectrum(signal, kToneHz);
    EXPECT_NEAR(spectrum.inharmonics() / (powerOf(-40.0) + powerOf(-37.0)), 1.0, 1e-4);
    EXPECT_EQ(spectrum.largestInharmonicHz(), 17'777);
    EXPECT_NEAR(spectrum.power(100) / powerOf(-40.0), 1.0, 1e-4);
}

TEST(ToneSpectrumTest, CountsBothEndsOfHearing) {
    const auto signal = sumOf(second(kToneHz, 0.0), sumOf(second(16.0, -40.0), second(20'000.0, -40.0)));
    EXPECT_NEAR(ToneSpectrum(signal, kToneHz).inharmonics() / (2.0 * powerOf(-40.0)), 1.0, 1e-4);
}

} // namespace
} // namespace varno::test
