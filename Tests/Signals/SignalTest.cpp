#include "Signals/Signal.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace varno::signals;

namespace {

constexpr std::size_t kSignalFrames = 48000;
constexpr double kSignalRateHz = 48000.0;

float peakOf(const std::vector<float>& samples) {
    float peak = 0.0F;
    for (const float sample : samples) {
        peak = std::max(peak, std::fabs(sample));
    }
    return peak;
}

} // namespace

TEST(SignalSources, AreTheSameEachTimeAndDifferByChannel) {
    EXPECT_EQ(firstDifference(noise(2, kSignalFrames, 5, 0.0), noise(2, kSignalFrames, 5, 0.0)), "");
    EXPECT_NE(firstDifference(noise(2, kSignalFrames, 5, 0.0), noise(2, kSignalFrames, 6, 0.0)), "");
    for (const Signal& signal :
         {noise(2, kSignalFrames, 5, 0.0), swell(2, kSignalFrames, 5, 0.0),
          sweep(2, kSignalFrames, kSignalRateHz), drums(2, kSignalFrames, kSignalRateHz, 5),
          impulse(2, kSignalFrames), step(2, kSignalFrames, 0.0), subnormals(2, kSignalFrames, 5)}) {
        EXPECT_EQ(signal.size(), 2U);
        EXPECT_EQ(framesOf(signal), kSignalFrames);
        EXPECT_NE(firstDifference(signal[0], signal[1]), "");
    }
}

TEST(SignalSources, PeakAtTheStatedLevel) {
    EXPECT_NEAR(peakOf(noise(1, kSignalFrames, 5, -6.0)[0]), amplitudeOf(-6.0), 1e-3F);
    EXPECT_NEAR(peakOf(swell(1, kSignalFrames, 5, 12.0)[0]), amplitudeOf(12.0), 0.2F);
    EXPECT_NEAR(peakOf(sweep(1, kSignalFrames, kSignalRateHz)[0]), 1.0F, 1e-3F);
    EXPECT_EQ(peakOf(silence(1, kSignalFrames)[0]), 0.0F);
    EXPECT_EQ(peakOf(impulse(1, kSignalFrames)[0]), 1.0F);
    EXPECT_EQ(peakOf(step(1, kSignalFrames, 12.0)[0]), amplitudeOf(12.0));
    EXPECT_EQ(amplitudeOf(0.0), 1.0F);
    EXPECT_EQ(amplitudeOf(600.0), 1e30F);
}

TEST(SignalSources, DrumsAreLoudAndRest) {
    const std::vector<float> drum = drums(1, kSignalFrames, kSignalRateHz, 5)[0];
    EXPECT_GT(peakOf(drum), 1.0F);
    EXPECT_LE(peakOf(drum), amplitudeOf(6.0));
    EXPECT_GT(std::count(drum.begin(), drum.end(), 0.0F), static_cast<std::ptrdiff_t>(kSignalFrames / 5));
}

TEST(SignalSources, SubnormalsAreSubnormal) {
    const Signal signal = subnormals(1, 1000, 5);
    for (const float sample : signal[0]) {
        EXPECT_FALSE(std::isnormal(sample));
        EXPECT_TRUE(std::isfinite(sample));
    }
}
