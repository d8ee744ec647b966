// The conversion beside another library's best.
#include "Host/Oversampling/RateConverter.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <numbers>
#include <random>
#include <soxr.h>
#include <vector>

namespace varno {
namespace {

constexpr double kRateHz = 48000.0;
constexpr std::size_t kFrames = 12000;
// Both ends are left out of the comparison: there the filters have different lengths.
constexpr std::size_t kEdge = 2000;

// Many tones up to a frequency, with random phases; peak below 1.
std::vector<float> soundUpTo(double highestHz, double rateHz, std::size_t samples) {
    constexpr int kTones = 60;
    std::mt19937 random(5);
    std::uniform_real_distribution<double> phase(0.0, 2.0 * std::numbers::pi);
    std::vector<double> sum(samples);
    for (int tone = 1; tone <= kTones; ++tone) {
        const double turn = 2.0 * std::numbers::pi * highestHz * tone / kTones / rateHz;
        const double start = phase(random);
        for (std::size_t i = 0; i < samples; ++i) {
            sum[i] += std::sin(turn * static_cast<double>(i) + start) / kTones;
        }
    }
    return {sum.begin(), sum.end()};
}

std::vector<float> convertedBySoxr(const std::vector<float>& sound, double fromHz, double toHz) {
    std::vector<float> result(
        static_cast<std::size_t>(std::lround(static_cast<double>(sound.size()) * toHz / fromHz)));
    const soxr_quality_spec_t quality = soxr_quality_spec(SOXR_VHQ, 0);
    std::size_t done = 0;
    EXPECT_EQ(soxr_oneshot(fromHz, toHz, 1, sound.data(), sound.size(), nullptr, result.data(), result.size(),
                           &done, nullptr, &quality, nullptr),
              nullptr);
    EXPECT_EQ(done, result.size());
    return result;
}

// The largest difference between two sounds, of which the first is late by so many samples.
double largestDifference(const std::vector<float>& late, std::size_t delay, const std::vector<float>& sound,
                         std::size_t edge) {
    double largest = 0.0;
    for (std::size_t i = edge; i + edge < sound.size() && i + delay < late.size(); ++i) {
        largest = std::max(largest, std::abs(double{late[i + delay]} - double{sound[i]}));
    }
    return largest;
}

class RateConverterJudgeTest : public testing::TestWithParam<std::int32_t> {};

TEST_P(RateConverterJudgeTest, RaisesAsSoxrDoes) {
    const std::int32_t factor = GetParam();
    const std::vector<float> sound = soundUpTo(19900.0, kRateHz, kFrames);
    Upsampler upsampler(factor, kFrames, chooseHalfBandKernels());
    const float* const high = upsampler.process(sound.data(), kFrames);
    const std::vector<float> found(high, high + kFrames * static_cast<std::size_t>(factor));
    const double difference = largestDifference(found, static_cast<std::size_t>(converterDelay(factor)),
                                                convertedBySoxr(sound, kRateHz, kRateHz * factor),
                                                kEdge * static_cast<std::size_t>(factor));
    EXPECT_LT(20.0 * std::log10(difference), -85.0) << factor;
}

// With sound above what passes: 28 kHz and more must be gone.
TEST_P(RateConverterJudgeTest, LowersAsSoxrDoes) {
    const std::int32_t factor = GetParam();
    const double highHz = kRateHz * factor;
    const std::size_t samples = kFrames * static_cast<std::size_t>(factor);
    std::vector<float> sound = soundUpTo(19900.0, highHz, samples);
    for (std::size_t i = 0; i < samples; ++i) {
        const double turn = 2.0 * std::numbers::pi * static_cast<double>(i) / highHz;
        sound[i] += static_cast<float>(0.3 * std::sin(turn * 28100.0) + 0.3 * std::sin(turn * 45000.0));
    }
    std::vector<float> padded = sound;
    padded.resize(samples + kKernelSlack);
    const auto delay = static_cast<std::size_t>(converterDelay(factor));
    const std::size_t extra = static_cast<std::size_t>(factor) - 1 - delay % static_cast<std::size_t>(factor);
    Downsampler downsampler(factor, kFrames, extra, chooseHalfBandKernels());
    std::vector<float> found(kFrames);
    downsampler.process(padded.data(), found.data(), kFrames);
    const double difference = largestDifference(
        found, (delay + extra - static_cast<std::size_t>(factor) + 1) / static_cast<std::size_t>(factor),
        convertedBySoxr(sound, highHz, kRateHz), kEdge);
    EXPECT_LT(20.0 * std::log10(difference), -85.0) << factor;
}

INSTANTIATE_TEST_SUITE_P(Factors, RateConverterJudgeTest, testing::Values(2, 4, 8));

} // namespace
} // namespace varno
