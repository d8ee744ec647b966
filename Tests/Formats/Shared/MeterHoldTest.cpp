#include "Shared/MeterHold.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

// 40 ms at 48 kHz are 1920 frames.
TEST(MeterHold, showsAHigherValueAtOnce) {
    MeterHold hold(48000.0);
    EXPECT_EQ(hold.show(0.5F, 64), 0.5F);
    EXPECT_EQ(hold.show(0.75F, 1), 0.75F);
}

TEST(MeterHold, keepsAPeakForItsTime) {
    MeterHold hold(48000.0);
    hold.show(0.5F, 64);
    EXPECT_EQ(hold.show(0.25F, 1919), 0.5F);
    EXPECT_EQ(hold.show(0.25F, 1), 0.25F);
    EXPECT_EQ(hold.show(0.0F, 1919), 0.25F) << "a new value is a new peak";
}

TEST(MeterHold, startsItsTimeAnewWithEveryPeak) {
    MeterHold hold(48000.0);
    hold.show(0.5F, 64);
    hold.show(0.5F, 1900);
    EXPECT_EQ(hold.show(0.25F, 1900), 0.5F);
}

TEST(MeterHold, showsWhatFollowsALongBuffer) {
    MeterHold hold(48000.0);
    hold.show(0.5F, 64);
    EXPECT_EQ(hold.show(0.25F, 4096), 0.25F);
}

TEST(MeterHold, keepsAPeakAsLongAtEveryRate) {
    MeterHold hold(192000.0);
    hold.show(0.5F, 64);
    EXPECT_EQ(hold.show(0.25F, 7679), 0.5F);
    EXPECT_EQ(hold.show(0.25F, 1), 0.25F);
}

// A reduction reads a little below 0 and a level above 1 where the effect goes beyond its scale.
TEST(MeterHold, staysWithinItsRange) {
    MeterHold hold(48000.0);
    EXPECT_EQ(hold.show(1.5F, 512), 1.0F);
    EXPECT_EQ(hold.show(-0.1F, 48000), 0.0F);
}

TEST(MeterHold, showsNothingAfterARestart) {
    MeterHold hold(48000.0);
    hold.show(0.5F, 64);
    hold.restart();
    EXPECT_EQ(hold.show(0.0F, 0), 0.0F);
}

} // namespace
} // namespace varno
