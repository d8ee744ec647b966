#include "Surround/SizeSteps.h"

#include <gtest/gtest.h>

namespace varno::test {
namespace {

TEST(SizeSteps, GoUpAndDownToTheEnds) {
    EXPECT_EQ(SizeSteps::next(1.0, 1), 1.25);
    EXPECT_EQ(SizeSteps::next(1.0, -1), 0.75);
    EXPECT_EQ(SizeSteps::next(0.75, -1), 0.75);
    EXPECT_EQ(SizeSteps::next(3.0, 1), 3.0);
    EXPECT_EQ(SizeSteps::next(2.0, 1), 3.0);
}

TEST(SizeSteps, AreWrittenInPercent) {
    EXPECT_EQ(SizeSteps::text(0.75), "75 %");
    EXPECT_EQ(SizeSteps::text(1.25), "125 %");
}

TEST(SizeSteps, FitIntoARoom) {
    EXPECT_EQ(SizeSteps::fitting(3.0, 690, 454, 1920, 1080), 2.0);
    EXPECT_EQ(SizeSteps::fitting(1.0, 690, 454, 1920, 1080), 1.0);
    EXPECT_EQ(SizeSteps::fitting(3.0, 690, 454, 690, 454), 1.0);
    EXPECT_EQ(SizeSteps::fitting(3.0, 690, 454, 689, 454), 0.75);
    EXPECT_EQ(SizeSteps::fitting(3.0, 690, 454, 690, 453), 0.75);
    EXPECT_EQ(SizeSteps::fitting(3.0, 690, 454, 10, 10), 0.75);
}

} // namespace
} // namespace varno::test
