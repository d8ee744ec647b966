#include "Surround/MeterReader.h"

#include "Tests/Integration/HostedEffect.h"

#include <gtest/gtest.h>

namespace varno::test {
namespace {

using std::chrono::milliseconds;

TEST(PeakHold, KeepsThePeakForItsTime) {
    PeakHold hold;
    PeakHold::TimePoint now;
    EXPECT_EQ(hold.follow(0.5, now), 0.5);
    now += PeakHold::kHoldTime;
    EXPECT_EQ(hold.follow(0.2, now), 0.5);
    now += milliseconds(1);
    EXPECT_EQ(hold.follow(0.2, now), 0.2);
    now += milliseconds(1);
    EXPECT_EQ(hold.follow(0.3, now), 0.3); // higher at once
    now += PeakHold::kHoldTime - milliseconds(1);
    EXPECT_EQ(hold.follow(0.3, now), 0.3); // reached again
    now += PeakHold::kHoldTime;
    EXPECT_EQ(hold.follow(0.1, now), 0.3);
}

class MeterReaderTest : public HostedEffect {
protected:
    // Tap 0 is gain reduction, 2 the input's level, 3 the output's.
    BarMeters read(float reduction, float input, float output) {
        MeterBank& meters = instance->meters();
        meters.reset();
        meters.taps()[0] = reduction;
        meters.taps()[2] = input;
        meters.taps()[3] = output;
        meters.afterBuffer(0);
        return reader.read(meters, now);
    }

    // Ends before the module.
    void TearDown() override {
        instance.reset();
        HostedEffect::TearDown();
    }

    std::unique_ptr<Instance> instance = makeInstance(module());
    MeterReader reader{instance->effect()};
    PeakHold::TimePoint now;
};

TEST_F(MeterReaderTest, ReadsLevelsAndReductionInDecibels) {
    const BarMeters meters = read(0.25F, 0.1F, 1.0F);
    EXPECT_EQ(meters.levels[0].nowDB, -20.0);
    EXPECT_EQ(meters.levels[1].nowDB, 0.0);
    EXPECT_EQ(meters.reductionNowDB, -8.0);
    EXPECT_EQ(meters.reductionDB, -8.0);
}

TEST_F(MeterReaderTest, HoldsPeaks) {
    read(0.25F, 0.5F, 0.5F);
    const BarMeters meters = read(0.0F, 0.0F, 0.1F);
    EXPECT_EQ(meters.levels[0].nowDB, std::nullopt);
    EXPECT_EQ(meters.levels[0].peakDB, -6.0);
    EXPECT_EQ(meters.levels[1].nowDB, -20.0);
    EXPECT_EQ(meters.reductionNowDB, 0.0);
    EXPECT_EQ(meters.reductionDB, -8.0);
    now += PeakHold::kHoldTime + milliseconds(1);
    EXPECT_EQ(read(0.0F, 0.0F, 0.1F).levels[0].peakDB, std::nullopt);
}

TEST_F(MeterReaderTest, BelowTheScaleIsSilence) {
    EXPECT_EQ(read(0.0F, 0.00099F, 0.00101F).levels[0].nowDB, std::nullopt);
    EXPECT_EQ(read(0.0F, 0.0F, 0.00102F).levels[1].nowDB, -59.8);
}

} // namespace
} // namespace varno::test
