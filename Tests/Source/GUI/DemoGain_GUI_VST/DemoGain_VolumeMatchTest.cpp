#include "GUI/DemoGain_GUI_VST/DemoGain_VolumeMatch.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr float kLoud = 1.0F;
constexpr float kHalf = 0.5F;
constexpr float kSilent = 0.0F;
constexpr double kUnity = 0.5; // The volume that stands for 0 dB.
constexpr std::uint32_t kTickMs = 30;

// A matcher with a clock of the test, and the volume that it writes.
class VolumeMatchTest : public ::testing::Test {
protected:
    // One tick after another `ms`; whether the volume was written.
    bool tick(float input, float output, std::uint32_t ms = kTickMs) {
        now += ms;
        const std::optional<double> written = match.Tick(now, input, output, volume);
        volume = written.value_or(volume);
        return written.has_value();
    }

    // Asks for a series with the clock read just now, so that its first measurement takes its full time.
    void startSeries() {
        match.RequestRestart();
        tick(kLoud, kLoud);
        tick(kLoud, kLoud); // the time before counts too, so this measures at once
        match.RequestRestart();
    }

    // The volume at which a first measurement of these peaks aims.
    static double targetOf(float input, float output) {
        DemoGain_VolumeMatch fresh;
        fresh.RequestRestart();
        fresh.Tick(DemoGain_VolumeMatch::kMeasurementMs, input, output, kUnity);
        // A tick's time counts only where the peak before it was audible: now, or never.
        double reached = fresh.Tick(DemoGain_VolumeMatch::kMeasurementMs, input, output, kUnity).value_or(-1);
        for (int i = 0; i < 20; ++i) {
            reached = fresh.Tick(DemoGain_VolumeMatch::kMeasurementMs, 0, 0, reached).value_or(reached);
        }
        return reached;
    }

    DemoGain_VolumeMatch match;
    double volume = kUnity;
    std::uint32_t now = 1000;
};

TEST_F(VolumeMatchTest, DoesNothingUnasked) {
    for (int i = 0; i < 1000; ++i) {
        ASSERT_FALSE(tick(kLoud, kHalf));
    }
    EXPECT_FALSE(match.IsRestartRequested());
}

TEST_F(VolumeMatchTest, TakesARequestAtTheNextTick) {
    match.RequestRestart();
    EXPECT_TRUE(match.IsRestartRequested());
    tick(kSilent, kSilent);
    EXPECT_FALSE(match.IsRestartRequested());
}

TEST_F(VolumeMatchTest, ANewObjectCountsTheWholeClockAtItsFirstSignal) {
    match.RequestRestart();
    EXPECT_FALSE(tick(kLoud, kHalf)) << "the peak before this tick was silent";
    EXPECT_TRUE(tick(kLoud, kHalf)) << "1060 ms at once";
}

TEST_F(VolumeMatchTest, ANewObjectOnAYoungClockWaits) {
    now = 0;
    match.RequestRestart();
    int ticks = 1;
    while (!tick(kLoud, kHalf)) {
        ++ticks;
    }
    EXPECT_EQ(ticks, 10) << "300 ms of the clock";
}

TEST_F(VolumeMatchTest, MeasuresAfter300MillisecondsOfSignal) {
    startSeries();
    EXPECT_FALSE(tick(kLoud, kHalf, 10)) << "no peak yet: the clock is not read";
    EXPECT_FALSE(tick(kLoud, kHalf, 289)) << "299 ms since the clock was read";
    EXPECT_TRUE(tick(kLoud, kHalf, 1));
}

TEST_F(VolumeMatchTest, APauseCountsWholeOnceTheSignalIsBack) {
    startSeries();
    tick(kLoud, kHalf, 10);
    EXPECT_TRUE(tick(kLoud, kHalf, 290));
    while (tick(kSilent, kSilent, 1)) {
    }
    for (int i = 0; i < 100; ++i) {
        ASSERT_FALSE(tick(kSilent, kSilent)) << "silence is not measured";
    }
    EXPECT_FALSE(tick(kLoud, kHalf, 1));
    EXPECT_TRUE(tick(kLoud, kHalf, 1)) << "the pause of 3 s is more than a measurement takes";
}

TEST_F(VolumeMatchTest, SignalMustExceedTheLevelThatCounts) {
    match.RequestRestart();
    for (int i = 0; i < 100; ++i) {
        ASSERT_FALSE(tick(0.01F, kHalf));
    }
    tick(0.0101F, kHalf);
    EXPECT_TRUE(tick(kSilent, kSilent)) << "what counts is the peak of the tick before";
}

TEST_F(VolumeMatchTest, TheClockMayWrap) {
    match.RequestRestart();
    tick(kLoud, kLoud);
    tick(kLoud, kLoud); // reads a clock that is not yet below zero
    now = std::numeric_limits<std::uint32_t>::max() - 99;
    tick(kLoud, kLoud, 0);
    tick(kLoud, kLoud, 0); // a step back of nearly the whole range, and on
    match.RequestRestart();
    tick(kLoud, kHalf, 50);
    EXPECT_FALSE(tick(kLoud, kHalf, 249)) << "299 ms across the end";
    EXPECT_LT(now, 1000U);
    EXPECT_TRUE(tick(kLoud, kHalf, 1));
}

TEST_F(VolumeMatchTest, AClockFarAheadCountsAsNegativeAndMeasuresNothingYet) {
    now = 0x80000000U;
    match.RequestRestart();
    tick(kLoud, kHalf);
    EXPECT_FALSE(tick(kLoud, kHalf)) << "signal time is signed: the whole clock is below zero";
}

TEST_F(VolumeMatchTest, AimsAtTheRatioOfThePeaks) {
    EXPECT_NEAR(targetOf(1.0F, 0.5F), (20 * std::log10(2.0) + 20) * 0.025, 1e-12);
    EXPECT_NEAR(targetOf(1.0F, 0.5F), 0.6505, 1e-4);
    EXPECT_DOUBLE_EQ(targetOf(kHalf, kHalf), 0.5);
    EXPECT_DOUBLE_EQ(targetOf(0.5F, 1.0F), (20 * std::log10(0.5) + 20) * 0.025);
}

TEST_F(VolumeMatchTest, LimitsTheRatioTo20dBEitherWay) {
    EXPECT_DOUBLE_EQ(targetOf(1.0F, 0.0F), 1.0) << "no output counts as 0.01: 40 dB";
    EXPECT_DOUBLE_EQ(targetOf(0.02F, 0.0F), (20 * std::log10(double(0.02F) / 0.01) + 20) * 0.025);
    EXPECT_DOUBLE_EQ(targetOf(0.02F, 1.0F), 0.0);
}

// Each measurement clears the peaks for the next one: an input that has become silent measures 0.
TEST_F(VolumeMatchTest, NoInputAimsAtTheLowestVolume) {
    match.RequestRestart();
    EXPECT_FALSE(tick(0.011F, kSilent));
    EXPECT_TRUE(tick(kSilent, kLoud));
    while (tick(kSilent, kSilent)) {
    }
    EXPECT_DOUBLE_EQ(volume, 0.0);
}

TEST_F(VolumeMatchTest, GlidesInTenTicks) {
    match.RequestRestart();
    tick(kLoud, kHalf);
    const double target = targetOf(kLoud, kHalf);
    for (int i = 1; i <= 9; ++i) {
        ASSERT_TRUE(tick(kLoud, kHalf, 1));
        EXPECT_NEAR(volume, kUnity + (target - kUnity) * i / 10, 1e-12);
    }
    ASSERT_TRUE(tick(kLoud, kHalf, 1));
    EXPECT_NEAR(volume, target, 1e-12);
    tick(kLoud, kHalf, 1); // at most a rounding error's tick
    EXPECT_DOUBLE_EQ(volume, target);
    EXPECT_FALSE(tick(kLoud, kHalf, 1));
}

TEST_F(VolumeMatchTest, GlidesDownwardsAsWell) {
    volume = 0.9;
    match.RequestRestart();
    tick(kHalf, kHalf);
    double last = volume;
    while (tick(kHalf, kHalf, 1)) {
        ASSERT_LT(volume, last);
        ASSERT_GE(volume, 0.5);
        last = volume;
    }
    EXPECT_DOUBLE_EQ(volume, 0.5);
}

TEST_F(VolumeMatchTest, AGlideOfNoDistanceWritesOnce) {
    match.RequestRestart();
    tick(kHalf, kHalf);
    EXPECT_TRUE(tick(kHalf, kHalf, 1));
    EXPECT_DOUBLE_EQ(volume, 0.5);
    EXPECT_FALSE(tick(kHalf, kHalf, 1));
}

TEST_F(VolumeMatchTest, AGlideGoesOnFromItsOwnPositionNotFromTheHosts) {
    match.RequestRestart();
    match.Tick(1000, kLoud, kHalf, kUnity);
    const double first = match.Tick(1001, kLoud, kHalf, kUnity).value_or(0);
    const double second = match.Tick(1002, kLoud, kHalf, 0.0).value_or(0);
    EXPECT_NEAR(second - first, first - kUnity, 1e-12);
}

TEST_F(VolumeMatchTest, ASeriesIsFiveMeasurementsAndAimsAtTheirMean) {
    constexpr std::uint32_t kWholeMs = DemoGain_VolumeMatch::kMeasurementMs;
    startSeries();
    double sum = 0.0;
    for (int i = 1; i <= DemoGain_VolumeMatch::kSeriesLength; ++i) {
        const float output = i % 2 == 0 ? kLoud : kHalf;
        tick(kLoud, output, 1); // the peak that makes the next tick count
        const double before = volume;
        ASSERT_TRUE(tick(kSilent, kSilent, kWholeMs)) << i;
        sum += targetOf(kLoud, output);
        EXPECT_NEAR(volume, before + (sum / i - before) / 10, 1e-12) << i;
    }
    int glide = 0;
    while (tick(kLoud, kHalf, kWholeMs)) {
        ++glide;
    }
    EXPECT_LE(glide, 10) << "no sixth measurement: only the glide ends";
    EXPECT_NEAR(volume, sum / DemoGain_VolumeMatch::kSeriesLength, 1e-12);
    for (int i = 0; i < 100; ++i) {
        ASSERT_FALSE(tick(kLoud, kHalf, kWholeMs));
    }
}

TEST_F(VolumeMatchTest, ARestartDropsGlideAndHistory) {
    match.RequestRestart();
    tick(kLoud, kHalf);
    ASSERT_TRUE(tick(kLoud, kHalf));
    match.RequestRestart();
    EXPECT_FALSE(tick(kLoud, kLoud)) << "the glide has ended where it was";
    EXPECT_FALSE(tick(kLoud, kLoud, 1)) << "the clock has been read: a full measurement is due";
    ASSERT_TRUE(tick(kLoud, kLoud, DemoGain_VolumeMatch::kMeasurementMs));
    while (tick(kSilent, kSilent, 1)) {
    }
    EXPECT_DOUBLE_EQ(volume, kUnity) << "the mean holds nothing of the series before";
}

TEST_F(VolumeMatchTest, ARestartDropsThePeaks) {
    startSeries();
    tick(kLoud, kLoud);
    match.RequestRestart();
    tick(kHalf, kHalf / 2);
    ASSERT_TRUE(tick(kHalf, kHalf / 2, DemoGain_VolumeMatch::kMeasurementMs));
    while (tick(kSilent, kSilent, 1)) {
    }
    EXPECT_NEAR(volume, targetOf(kHalf, kHalf / 2), 1e-12);
}

TEST_F(VolumeMatchTest, MetersThatReadNoNumberAreIgnored) {
    constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    match.RequestRestart();
    for (int i = 0; i < 100; ++i) {
        ASSERT_FALSE(tick(kNaN, kNaN));
    }
    tick(kInfinity, kInfinity);
    ASSERT_TRUE(tick(kNaN, kNaN));
    EXPECT_TRUE(volume >= 0.0 && volume <= 1.0);
}

} // namespace
