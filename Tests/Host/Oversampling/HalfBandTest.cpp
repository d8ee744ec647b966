#include "Host/Oversampling/HalfBand.h"

#include "Host/Oversampling/HalfBandKernels.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <numbers>

namespace varno {
namespace {

// Gain at a frequency in parts of the higher of the two rates; its phase is that of the delay.
template<std::size_t kPairs>
double gainAt(const HalfBand<kPairs>& filter, double frequency) {
    double gain = 0.5;
    for (std::size_t i = 0; i < kPairs; ++i) {
        const auto distance = static_cast<double>(2 * (kPairs - i) - 1);
        gain += 2.0 * filter.pairs[i] * std::cos(2.0 * std::numbers::pi * frequency * distance);
    }
    return gain;
}

double decibelsOf(double gain) {
    return 20.0 * std::log10(std::max(std::fabs(gain), 1e-12));
}

template<std::size_t kPairs>
double largestGainDB(const HalfBand<kPairs>& filter, double from, double to) {
    double largest = -240.0;
    for (double frequency = from; frequency <= to; frequency += (to - from) / 2000.0) {
        largest = std::max(largest, decibelsOf(gainAt(filter, frequency)));
    }
    return largest;
}

// Both directions together: twice the ripple of each stage that a factor has.
double rippleDB(double frequencyHz, double rateHz) {
    const double sum = decibelsOf(gainAt(kFirstHalfBand, frequencyHz / rateHz / 2)) +
                       decibelsOf(gainAt(kSecondHalfBand, frequencyHz / rateHz / 4)) +
                       decibelsOf(gainAt(kThirdHalfBand, frequencyHz / rateHz / 8));
    return 2.0 * sum;
}

TEST(HalfBand, PassesTheAudibleRange) {
    for (double frequency = 0.0; frequency <= 20000.0; frequency += 10.0) {
        EXPECT_NEAR(rippleDB(frequency, 48000.0), 0.0, 0.02) << frequency;
    }
    for (double frequency = 0.0; frequency <= 19000.0; frequency += 10.0) {
        EXPECT_NEAR(rippleDB(frequency, 44100.0), 0.0, 0.02) << frequency;
    }
}

// The images of what passes, at 48 kHz: from 28 kHz, from 76 kHz and from 172 kHz on.
TEST(HalfBand, StopsTheImages) {
    EXPECT_LT(largestGainDB(kFirstHalfBand, 28.0 / 96.0, 0.5), -96.0);
    EXPECT_LT(largestGainDB(kSecondHalfBand, 76.0 / 192.0, 0.5), -92.0);
    EXPECT_LT(largestGainDB(kThirdHalfBand, 172.0 / 384.0, 0.5), -92.0);
}

TEST(HalfBand, PassesAConstantUnchanged) {
    EXPECT_NEAR(gainAt(kFirstHalfBand, 0.0), 1.0, 1e-7);
    EXPECT_NEAR(gainAt(kSecondHalfBand, 0.0), 1.0, 1e-7);
    EXPECT_NEAR(gainAt(kThirdHalfBand, 0.0), 1.0, 1e-7);
}

// The coefficients are part of the sound: no compiler and no machine may have others.
TEST(HalfBand, HasTheSameBitsEverywhere) {
    const auto sumOf = [](const auto& filter) {
        std::uint64_t sum = 0;
        for (const float pair : filter.pairs) {
            sum = sum * 0x9E3779B97F4A7C15U + std::bit_cast<std::uint32_t>(pair);
        }
        return sum;
    };
    EXPECT_EQ(sumOf(kFirstHalfBand), 14471962650754660775U);
    EXPECT_EQ(sumOf(kSecondHalfBand), 15575945158647942486U);
    EXPECT_EQ(sumOf(kThirdHalfBand), 12436542720910000375U);
}

TEST(HalfBand, ComputesWhatTheFormulasStand) {
    for (const double x : {0.0, 0.1, 1.0, 3.75, 9.0, 12.0}) {
        EXPECT_NEAR(besselI0(x) / std::cyl_bessel_i(0.0, x), 1.0, 1e-13) << x;
    }
    for (const double x : {0.0, 1e-6, 0.25, 0.5, 0.999, 1.0}) {
        EXPECT_NEAR(squareRoot(x), std::sqrt(x), 1e-15) << x;
    }
    EXPECT_NEAR(kaiserBeta(60.0), 5.65326, 1e-12);
}

} // namespace
} // namespace varno
