#include "Render/DemoLoop.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>

namespace varno::test {
namespace {

double levelDB(const std::vector<float>& samples, std::size_t from, std::size_t count) {
    double squares = 0.0;
    for (std::size_t i = from; i < from + count; ++i) {
        squares += static_cast<double>(samples[i]) * static_cast<double>(samples[i]);
    }
    return 10.0 * std::log10(squares / static_cast<double>(count));
}

class DemoLoopTest : public testing::Test {
protected:
    static const StereoSamples& loop() {
        static const StereoSamples samples = makeDemoLoop();
        return samples;
    }
};

TEST_F(DemoLoopTest, IsEightSecondsOfStereoAt48Kilohertz) {
    EXPECT_EQ(kDemoLoopRateHz, 48'000);
    for (const std::vector<float>& channel : loop()) {
        EXPECT_EQ(channel.size(), 384'000U);
    }
}

TEST_F(DemoLoopTest, PeaksAtMinusThreeDecibels) {
    float peak = 0.0F;
    for (const std::vector<float>& channel : loop()) {
        for (const float sample : channel) {
            peak = std::max(peak, std::abs(sample));
        }
    }
    EXPECT_NEAR(20.0 * std::log10(peak), -3.0, 1e-4);
}

TEST_F(DemoLoopTest, SoundsThroughoutWithADrummersDynamics) {
    constexpr std::size_t kBeatFrames = 24'000;
    for (std::size_t beat = 0; beat < 16; ++beat) {
        const double level = levelDB(loop()[0], beat * kBeatFrames, kBeatFrames);
        EXPECT_GT(level, -24.0) << beat;
        EXPECT_LT(level, -10.0) << beat;
    }
}

TEST_F(DemoLoopTest, HasWidthButKeepsItsWeightInTheMiddle) {
    std::vector<float> middle(loop()[0].size());
    std::vector<float> side(loop()[0].size());
    for (std::size_t i = 0; i < middle.size(); ++i) {
        middle[i] = 0.5F * (loop()[0][i] + loop()[1][i]);
        side[i] = 0.5F * (loop()[0][i] - loop()[1][i]);
    }
    const double distanceDB = levelDB(middle, 0, middle.size()) - levelDB(side, 0, side.size());
    EXPECT_GT(distanceDB, 10.0);
    EXPECT_LT(distanceDB, 30.0);
}

TEST_F(DemoLoopTest, HasNoOffset) {
    for (const std::vector<float>& channel : loop()) {
        double sum = 0.0;
        for (const float sample : channel) {
            sum += static_cast<double>(sample);
        }
        EXPECT_LT(std::abs(sum / static_cast<double>(channel.size())), 0.003);
    }
}

TEST_F(DemoLoopTest, LoopsWithoutASeam) {
    for (const std::vector<float>& channel : loop()) {
        EXPECT_LT(std::abs(channel.front() - channel.back()), 0.1F);
    }
}

// FNV-1a of all samples' bits. Every compiler and machine must produce the same number. After an intended
// change of the loop this test fails and prints the new number.
TEST_F(DemoLoopTest, IsTheSameToTheBitEverywhere) {
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const std::vector<float>& channel : loop()) {
        for (const float sample : channel) {
            hash = (hash ^ std::bit_cast<std::uint32_t>(sample)) * 0x100000001B3U;
        }
    }
    EXPECT_EQ(hash, 9408848021013928526U);
}

} // namespace
} // namespace varno::test
