#include "AudioBlock.h"

#include <gtest/gtest.h>

namespace varno::test {
namespace {

TEST(AudioBlockTest, HoldsEachSampleExactlyAndInSinglePrecision) {
    AudioBlock block(2, 4);
    const double interleaved[] = {0.1, -0.2, 2147483647.0 / 2147483648.0, 1e-300};
    block.setInterleaved(interleaved, 2);
    EXPECT_EQ(block.channels(), 2);
    EXPECT_EQ(block.capacityFrames(), 4);
    EXPECT_EQ(block.frames(), 2);
    EXPECT_EQ(block.exact(0)[0], 0.1);
    EXPECT_EQ(block.exact(1)[0], -0.2);
    EXPECT_EQ(block.exact(0)[1], 2147483647.0 / 2147483648.0);
    EXPECT_EQ(block.samples()[0][0], 0.1F);
    EXPECT_EQ(block.samples()[0][1], 1.0F);
    EXPECT_EQ(block.samples()[1][1], 0.0F);
}

TEST(AudioBlockTest, ProcessingInPlaceLeavesTheExactSamples) {
    AudioBlock block(1, 2);
    const double interleaved[] = {0.25, 0.5};
    block.setInterleaved(interleaved, 2);
    block.samples()[0][0] = -1.0F;
    EXPECT_EQ(block.exact(0)[0], 0.25);
}

TEST(AudioBlockTest, TakesPlanarSamples) {
    AudioBlock block(2, 3);
    const float left[] = {0.1F, 0.2F, 0.3F};
    const float right[] = {1.0F, 2.0F, 3.0F};
    const float* const channels[] = {left, right};
    block.setPlanar(channels, 3);
    EXPECT_EQ(block.frames(), 3);
    EXPECT_EQ(block.samples()[0][2], 0.3F);
    EXPECT_EQ(block.exact(1)[1], 2.0);
    EXPECT_EQ(block.exact(0)[0], static_cast<double>(0.1F));
}

TEST(AudioBlockTest, SilenceFollowsSound) {
    AudioBlock block(1, 3);
    const double interleaved[] = {1.0, 1.0, 1.0};
    block.setInterleaved(interleaved, 3);
    block.setSilence(2);
    EXPECT_EQ(block.frames(), 2);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(block.samples()[0][i], 0.0F);
        EXPECT_EQ(block.exact(0)[i], 0.0);
    }
}

} // namespace
} // namespace varno::test
