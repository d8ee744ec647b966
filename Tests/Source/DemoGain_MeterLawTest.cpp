#include "DemoGain_MeterLaw.h"

#include <gtest/gtest.h>

#include <cmath>

namespace varno::test::meterLaw {

namespace {

TEST(DemoGain_MeterLaw, NoReductionShowsAsOne) {
    EXPECT_EQ(DemoGain_MeterValue(0.0F), 1.0F);
}

TEST(DemoGain_MeterLaw, FullReductionShowsSlightlyBelowZero) {
    EXPECT_NEAR(DemoGain_MeterValue(1.0F), -0.0051F, 1e-5F);
    EXPECT_EQ(DemoGain_MeterValue(1.0F), 1.0F - ((2.1271815F - 2.0384471F) + 0.916367F));
}

TEST(DemoGain_MeterLaw, FollowsThePolynomialInBetween) {
    for (int step = 0; step <= 100; ++step) {
        const double x = step / 100.0;
        const double y = 2.1271815 * x - 2.0384471 * std::pow(x, 3) + 0.916367 * std::pow(x, 5);
        EXPECT_NEAR(DemoGain_MeterValue(static_cast<float>(x)), 1.0 - y, 1e-6) << x;
    }
}

// Every other grouping of the same operations differs here in the last bits.
TEST(DemoGain_MeterLaw, IsComputedInItsGrouping) {
    EXPECT_EQ(DemoGain_MeterValue(597.0F / 1024.0F), 0x1.a2095p-4F);
}

TEST(DemoGain_MeterLaw, MoreReductionNeverShowsAsLess) {
    for (int step = 1; step <= 100; ++step) {
        const float x = static_cast<float>(step) / 100.0F;
        EXPECT_LT(DemoGain_MeterValue(x), DemoGain_MeterValue(x - 0.01F)) << x;
    }
}

} // namespace
} // namespace varno::test::meterLaw
