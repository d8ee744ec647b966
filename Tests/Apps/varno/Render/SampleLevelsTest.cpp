#include "Render/SampleLevels.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace varno::test {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

SampleLevels levelsOf(const std::vector<float>& samples) {
    SampleLevels levels;
    levels.add(samples.data(), static_cast<int>(samples.size()));
    return levels;
}

TEST(SampleLevels, FindsThePeakWhereverItIs) {
    for (const std::size_t at : {0U, 63U, 64U, 127U, 128U, 129U}) {
        for (const float sample : {0.75F, -0.75F}) {
            std::vector<float> samples(130, 0.25F);
            samples[at] = sample;
            EXPECT_EQ(levelsOf(samples).peak(), 0.75) << at;
            EXPECT_EQ(levelsOf(samples).unusable(), 0);
        }
    }
}

TEST(SampleLevels, CountsWhatIsNotUsableAndLeavesItOutOfThePeak) {
    for (const float sample :
         {kNaN, -kNaN, kInfinity, -kInfinity, std::nextafter(1e30F, kInfinity), -2e30F}) {
        for (const std::size_t at : {0U, 63U, 64U, 129U}) {
            std::vector<float> samples(130, 0.25F);
            samples[at] = sample;
            EXPECT_EQ(levelsOf(samples).unusable(), 1) << sample << " at " << at;
            EXPECT_EQ(levelsOf(samples).peak(), 0.25) << sample << " at " << at;
        }
    }
    EXPECT_EQ(levelsOf({1e30F, -1e30F}).unusable(), 0);
    EXPECT_EQ(levelsOf(std::vector<float>(130, kNaN)).unusable(), 130);
}

TEST(SampleLevels, AddUpOverBlocksAndChannels) {
    const float left[] = {0.1F, kNaN};
    const float right[] = {-0.5F, kInfinity};
    SampleLevels levels;
    levels.add(left, 2);
    levels.add(right, 2);
    levels.add(left, 2);
    EXPECT_EQ(levels.peak(), 0.5);
    EXPECT_EQ(levels.unusable(), 3);
}

} // namespace
} // namespace varno::test
