#include "Host/CoefficientDelay.h"

#include <array>
#include <gtest/gtest.h>

namespace varno {
namespace {

// Images of one byte.
class CoefficientDelayTest : public testing::Test {
protected:
    void take(int value, std::int64_t position) {
        const std::array image = {static_cast<std::byte>(value)};
        mDelay.take(image, position);
    }
    int inForce() const { return static_cast<int>(*mDelay.inForce()); }

    CoefficientDelay mDelay{1, 10};
};

TEST_F(CoefficientDelayTest, PutsTheFirstImagesIntoForceAtOnce) {
    EXPECT_EQ(inForce(), 0);
    take(1, 0);
    EXPECT_EQ(mDelay.begin(0, 0), 0);
    take(2, 0);
    EXPECT_EQ(mDelay.begin(0, 5), 5);
    EXPECT_EQ(inForce(), 2);
}

TEST_F(CoefficientDelayTest, PutsLaterOnesIntoForceAfterTheDelay) {
    EXPECT_EQ(mDelay.begin(0, 5), 5);
    take(1, 5);
    EXPECT_EQ(mDelay.begin(5, 20), 10);
    EXPECT_EQ(inForce(), 0);
    EXPECT_EQ(mDelay.begin(15, 10), 10);
    EXPECT_EQ(inForce(), 1);
}

TEST_F(CoefficientDelayTest, KeepsTheOrder) {
    mDelay.begin(0, 1);
    take(1, 1);
    take(2, 3);
    take(3, 3);
    EXPECT_EQ(mDelay.begin(3, 100), 8);
    EXPECT_EQ(mDelay.begin(11, 92), 2);
    EXPECT_EQ(inForce(), 1);
    EXPECT_EQ(mDelay.begin(13, 90), 90);
    EXPECT_EQ(inForce(), 3);
}

TEST_F(CoefficientDelayTest, KeepsTheLastOfTooMany) {
    mDelay.begin(0, 1);
    constexpr int kTooMany = static_cast<int>(CoefficientDelay::kMostWaiting) + 3;
    for (int i = 1; i <= kTooMany; ++i) {
        take(i, i);
    }
    for (int i = 1; i < static_cast<int>(CoefficientDelay::kMostWaiting); ++i) {
        mDelay.begin(10 + i, 1);
        EXPECT_EQ(inForce(), i);
    }
    EXPECT_EQ(mDelay.begin(10 + kTooMany - 1, 1), 1);
    EXPECT_EQ(inForce(), static_cast<int>(CoefficientDelay::kMostWaiting) - 1);
    mDelay.begin(10 + kTooMany, 1);
    EXPECT_EQ(inForce(), kTooMany);
}

TEST_F(CoefficientDelayTest, ARestartTakesWhatWaitsAndWhatComes) {
    mDelay.begin(0, 1);
    take(1, 1);
    take(2, 2);
    mDelay.restart();
    EXPECT_EQ(inForce(), 2);
    EXPECT_EQ(mDelay.begin(2, 0), 0);
    take(3, 2);
    EXPECT_EQ(inForce(), 3);
    EXPECT_EQ(mDelay.begin(2, 7), 7);
    take(4, 9);
    EXPECT_EQ(inForce(), 3);
}

} // namespace
} // namespace varno
