#include "AudioFile/Block.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numeric>

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

TEST(AudioBlockTest, HoldsOnceWhatSinglePrecisionHolds) {
    AudioBlock block(2, 4);
    const float singles[] = {0.1F, -0.2F, 1.5F, -0.0F};
    block.setInterleaved(singles, 2);
    EXPECT_EQ(block.exact(0), nullptr);
    EXPECT_EQ(block.samples()[0][1], 1.5F);
    EXPECT_EQ(block.samples()[1][0], -0.2F);
    EXPECT_TRUE(std::signbit(block.samples()[1][1]));
    const std::int16_t integers[] = {32767, -32768, 1, 0};
    block.setInterleaved(integers, 2);
    EXPECT_EQ(block.exact(0), nullptr);
    EXPECT_EQ(block.samples()[0][0], 32767.0F / 32768.0F);
    EXPECT_EQ(block.samples()[0][1], 1.0F / 32768.0F);
    EXPECT_EQ(block.samples()[1][0], -1.0F);
}

// One and two channels have loops of their own; vectorized loops take several frames at a time.
TEST(AudioBlockTest, TakesAnyNumberOfChannelsAndFrames) {
    constexpr int kMostFrames = 37;
    for (const int channels : {1, 2, 3, 8}) {
        for (int frames = 0; frames <= kMostFrames; ++frames) {
            AudioBlock block(channels, kMostFrames);
            std::vector<double> interleaved(static_cast<std::size_t>(channels * frames));
            std::iota(interleaved.begin(), interleaved.end(), 1.0);
            const std::vector<std::int16_t> integers(interleaved.begin(), interleaved.end());
            const auto check = [&](float factor) {
                for (int c = 0; c < channels; ++c) {
                    for (int i = 0; i < frames; ++i) {
                        ASSERT_EQ(block.samples()[c][i] * factor, static_cast<float>(i * channels + c + 1));
                    }
                }
            };
            block.setInterleaved(interleaved.data(), frames);
            check(1.0F);
            for (int c = 0; c < channels; ++c) {
                for (int i = 0; i < frames; ++i) {
                    ASSERT_EQ(block.exact(c)[i], i * channels + c + 1);
                }
            }
            block.setInterleaved(integers.data(), frames);
            check(32768.0F);
        }
    }
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
    EXPECT_EQ(block.samples()[1][1], 2.0F);
    EXPECT_EQ(block.exact(0), nullptr);
}

TEST(AudioBlockTest, SilenceFollowsSound) {
    AudioBlock block(1, 3);
    const float singles[] = {1.0F, 1.0F, 1.0F};
    block.setInterleaved(singles, 3);
    block.setSilence(2);
    EXPECT_EQ(block.frames(), 2);
    EXPECT_EQ(block.exact(0), nullptr);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(block.samples()[0][i], 0.0F);
    }
    const double interleaved[] = {1.0, 1.0, 1.0};
    block.setInterleaved(interleaved, 3);
    block.setSilence(2);
    EXPECT_EQ(block.frames(), 2);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(block.exact(0)[i], 0.0);
        EXPECT_EQ(block.samples()[0][i], 0.0F);
    }
}

constexpr double kFine = 1.0 / 1'000'000'000.0; // what single precision does not hold beside 0.5

TEST(AudioBlockTest, DelaysAChannelWithItsExactSamples) {
    AudioBlock block(2, 4);
    HeldSamples held(3);
    const double first[] = {0.1, 0.5 + kFine, 0.2, 0.6, 0.3, 0.7, 0.4, 0.8 + kFine};
    block.setInterleaved(first, 4);
    block.delay(1, held);
    EXPECT_EQ(std::vector(block.exact(1), block.exact(1) + 4), (std::vector{0.0, 0.0, 0.0, 0.5 + kFine}));
    EXPECT_EQ(block.samples()[1][3], 0.5F);
    EXPECT_EQ(std::vector(block.exact(0), block.exact(0) + 4), (std::vector{0.1, 0.2, 0.3, 0.4}));
    block.setSilence(2);
    block.delay(1, held);
    EXPECT_EQ(std::vector(block.exact(1), block.exact(1) + 2), (std::vector{0.6, 0.7}));
    block.setSilence(2);
    block.delay(1, held);
    EXPECT_EQ(std::vector(block.exact(1), block.exact(1) + 2), (std::vector{0.8 + kFine, 0.0}));
    EXPECT_EQ(block.samples()[1][0], 0.8F);
    EXPECT_EQ(block.samples()[0][0], 0.0F);
}

TEST(AudioBlockTest, DelaysWhatSinglePrecisionHolds) {
    AudioBlock block(1, 2);
    HeldSamples held(3);
    HeldSamples none(0);
    std::vector<float> out;
    for (const float sample : {1.0F, 3.0F, 5.0F, 7.0F}) {
        const float samples[] = {sample, sample + 1.0F};
        block.setInterleaved(samples, 2);
        block.delay(0, held);
        block.delay(0, none);
        out.insert(out.end(), block.samples()[0], block.samples()[0] + 2);
    }
    EXPECT_EQ(out, (std::vector{0.0F, 0.0F, 0.0F, 1.0F, 2.0F, 3.0F, 4.0F, 5.0F}));
    EXPECT_EQ(block.exact(0), nullptr);
}

TEST(AudioBlockTest, RemovesTheFirstFramesOfAllChannels) {
    AudioBlock block(2, 4);
    const double samples[] = {0.1, -0.1, 0.2, -0.2, 0.3, -0.3};
    block.setInterleaved(samples, 3);
    block.removeFirst(0);
    EXPECT_EQ(block.frames(), 3);
    block.removeFirst(2);
    EXPECT_EQ(block.frames(), 1);
    EXPECT_EQ(block.exact(0)[0], 0.3);
    EXPECT_EQ(block.exact(1)[0], -0.3);
    EXPECT_EQ(block.samples()[1][0], -0.3F);
    block.removeFirst(1);
    EXPECT_EQ(block.frames(), 0);
}

} // namespace
} // namespace varno::test
