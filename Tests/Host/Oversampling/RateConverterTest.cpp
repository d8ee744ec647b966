#include "Host/Oversampling/RateConverter.h"

#include "Tests/Reference/ReferenceHalfBand.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>
#include <random>
#include <vector>

namespace varno {
namespace {

constexpr std::size_t kMostFrames = 300;

std::vector<float> noise(std::size_t frames, unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> value(-1.0F, 1.0F);
    std::vector<float> sound(frames);
    std::ranges::generate(sound, [&] { return value(random); });
    return sound;
}

// Noise with all that a sound may hold.
std::vector<float> oddSound(std::size_t frames) {
    std::vector<float> sound = noise(frames, 4);
    const float odd[] = {std::numeric_limits<float>::quiet_NaN(),
                         std::numeric_limits<float>::infinity(),
                         -std::numeric_limits<float>::infinity(),
                         std::numeric_limits<float>::max(),
                         1e30F,
                         -1.01e30F,
                         std::numeric_limits<float>::denorm_min(),
                         std::numeric_limits<float>::min(),
                         1e-20F,
                         -0.9e-20F,
                         0.0F,
                         -0.0F};
    for (std::size_t i = 0; i < std::size(odd); ++i) {
        sound[100 + 150 * i] = odd[i];
    }
    std::fill(sound.begin() + 2000, sound.begin() + 2300, 3e-20F);
    return sound;
}

// Blocks of any length, none among them.
std::vector<std::size_t> blocksOf(std::size_t frames, unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_int_distribution<std::size_t> length(0, kMostFrames);
    std::vector<std::size_t> blocks;
    for (std::size_t left = frames; left > 0; left -= blocks.back()) {
        blocks.push_back(std::min(left, length(random)));
    }
    return blocks;
}

std::vector<float> raisedInBlocks(const std::vector<float>& sound, std::int32_t factor,
                                  const HalfBandKernels& kernels, const std::vector<std::size_t>& blocks) {
    Upsampler upsampler(factor, kMostFrames, kernels);
    std::vector<float> result;
    const float* in = sound.data();
    for (const std::size_t frames : blocks) {
        const std::vector<float> block(in, in + frames); // with its end where it ends
        const float* out = upsampler.process(block.data(), frames);
        result.insert(result.end(), out, out + frames * static_cast<std::size_t>(factor));
        in += frames;
    }
    return result;
}

std::vector<float> loweredInBlocks(const std::vector<float>& sound, std::int32_t factor,
                                   std::size_t extraDelay, const HalfBandKernels& kernels,
                                   const std::vector<std::size_t>& blocks) {
    Downsampler downsampler(factor, kMostFrames, extraDelay, kernels);
    std::vector<float> result;
    const float* in = sound.data();
    for (const std::size_t frames : blocks) {
        const std::size_t samples = frames * static_cast<std::size_t>(factor);
        std::vector<float> block(in, in + samples);
        block.resize(samples + kKernelSlack, std::numeric_limits<float>::quiet_NaN());
        std::vector<float> out(frames);
        downsampler.process(block.data(), out.data(), frames);
        result.insert(result.end(), out.begin(), out.end());
        in += samples;
    }
    return result;
}

void expectSameBits(const std::vector<float>& found, const std::vector<float>& expected) {
    ASSERT_EQ(found.size(), expected.size());
    for (std::size_t i = 0; i < found.size(); ++i) {
        ASSERT_EQ(std::bit_cast<std::uint32_t>(found[i]), std::bit_cast<std::uint32_t>(expected[i]))
            << "sample " << i << ": " << found[i] << ", expected " << expected[i];
    }
}

class RateConverterTest : public testing::TestWithParam<std::int32_t> {};

TEST_P(RateConverterTest, HasTheBitsOfTheLiteralEvaluationOnEveryInstructionSetInAnyBlocks) {
    const std::int32_t factor = GetParam();
    const std::vector<float> sound = oddSound(3001);
    const std::vector<float> high = reference::raised(sound, factor);
    std::vector<float> odd = oddSound(3001 * static_cast<std::size_t>(factor));
    const std::vector<float> low = reference::lowered(odd, factor);
    std::size_t versions = 0;
    for (const HalfBandKernels& kernels : halfBandKernels()) {
        if (!canRun(kernels)) {
            continue;
        }
        SCOPED_TRACE(kernels.name);
        ++versions;
        for (const unsigned seed : {1U, 2U, 3U}) {
            const auto blocks = blocksOf(sound.size(), seed);
            expectSameBits(raisedInBlocks(sound, factor, kernels, blocks), high);
            expectSameBits(loweredInBlocks(odd, factor, 0, kernels, blocks), low);
        }
        expectSameBits(raisedInBlocks(sound, factor, kernels, std::vector<std::size_t>(3001, 1)), high);
        expectSameBits(loweredInBlocks(odd, factor, 0, kernels, std::vector<std::size_t>(3001, 1)), low);
    }
    EXPECT_GE(versions, 1U);
}

TEST_P(RateConverterTest, DelaysByAWholeNumberOfSamples) {
    const std::int32_t factor = GetParam();
    std::vector<float> impulse(400);
    impulse[100] = 1.0F;
    const std::vector<float> high = reference::raised(impulse, factor);
    const auto peak = std::ranges::max_element(high) - high.begin();
    EXPECT_EQ(peak, 100 * factor + converterDelay(factor));
    EXPECT_EQ(high[static_cast<std::size_t>(peak)], 1.0F);
    for (std::ptrdiff_t distance = 1; distance < 90; ++distance) {
        ASSERT_FLOAT_EQ(high[static_cast<std::size_t>(peak - distance)],
                        high[static_cast<std::size_t>(peak + distance)]);
    }
}

// What is delayed by as much as is missing to the last sample of a frame comes back in whole frames.
TEST_P(RateConverterTest, ReturnsTheSoundDelayedByWholeFrames) {
    const std::int32_t factor = GetParam();
    const std::int32_t both = 2 * converterDelay(factor);
    const std::int32_t extra = (factor - 1 - both % factor + factor) % factor;
    const HalfBandKernels& kernels = chooseHalfBandKernels();
    std::vector<float> sound(4000);
    for (std::size_t i = 0; i < sound.size(); ++i) {
        const double turn = 2.0 * std::numbers::pi * static_cast<double>(i) / 48000.0;
        sound[i] = static_cast<float>(0.3 * std::sin(turn * 997.0) + 0.3 * std::sin(turn * 19990.0));
    }
    const auto blocks = blocksOf(sound.size(), 9);
    const std::vector<float> high = raisedInBlocks(sound, factor, kernels, blocks);
    const std::vector<float> back =
        loweredInBlocks(high, factor, static_cast<std::size_t>(extra), kernels, blocks);
    const std::int32_t frames = (both + extra - (factor - 1)) / factor;
    for (std::size_t i = 500; i < sound.size(); ++i) {
        ASSERT_NEAR(back[i], sound[i - static_cast<std::size_t>(frames)], 2e-5) << i;
    }
}

TEST_P(RateConverterTest, StartsWithSilenceAgain) {
    const std::int32_t factor = GetParam();
    const HalfBandKernels& kernels = chooseHalfBandKernels();
    const std::vector<float> sound = noise(kMostFrames, 5);
    const std::vector<float> silence(kMostFrames);
    Upsampler upsampler(factor, kMostFrames, kernels);
    const float* high = upsampler.process(sound.data(), sound.size());
    Downsampler downsampler(factor, kMostFrames, 1, kernels);
    std::vector<float> out(kMostFrames);
    downsampler.process(high, out.data(), kMostFrames);
    upsampler.clear();
    downsampler.clear();
    high = upsampler.process(silence.data(), kMostFrames);
    downsampler.process(high, out.data(), kMostFrames);
    EXPECT_TRUE(std::all_of(high, high + kMostFrames * static_cast<std::size_t>(factor),
                            [](float sample) { return sample == 0.0F; }));
    EXPECT_EQ(out, silence);
}

INSTANTIATE_TEST_SUITE_P(Factors, RateConverterTest, testing::Values(2, 4, 8));

TEST(HalfBandKernels, TakesTheNamedVersionElseTheFastest) {
    EXPECT_EQ(chooseHalfBandKernels().name, std::ranges::find_if(halfBandKernels(), canRun)->name);
    EXPECT_TRUE(canRun(halfBandKernels().back()));
}

} // namespace
} // namespace varno
