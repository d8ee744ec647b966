// The host's bypass, through the port that stands for it.
#include "Tests/Formats/LV2/HostedPlugin.h"
#include "Tests/Support/Signal.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>

namespace varno::test {
namespace {

constexpr std::size_t kFadeFrames = 480; // 10 ms at 48 kHz

// The input one frame later.
Signal delayed(const Signal& input) {
    Signal output = input;
    for (std::vector<float>& samples : output) {
        std::rotate(samples.begin(), samples.end() - 1, samples.end());
        samples.front() = 0.0F;
    }
    return output;
}

Signal sine(std::size_t frames, double frequencyHz, float amplitude) {
    Signal signal(2, std::vector<float>(frames));
    for (std::size_t i = 0; i < frames; ++i) {
        const double phase = 2.0 * std::numbers::pi * frequencyHz * static_cast<double>(i) / 48000.0;
        signal[0][i] = signal[1][i] = amplitude * static_cast<float>(std::sin(phase));
    }
    return signal;
}

TEST(Bypass, passesTheDelayedInputBitForBit) {
    for (const std::size_t channels : {std::size_t{1}, std::size_t{2}}) {
        for (const BufferLayout layout :
             {BufferLayout::kSeparate, BufferLayout::kInPlace, BufferLayout::kCrossed}) {
            HostedPlugin plugin(channels);
            plugin.set({{"gain", 1.0F}, {"hot", 1.0F}, {"enabled", 0.0F}});
            const Signal input = noise(channels, 5000, 1, 12.0);
            const RenderPlan plan{.layout = layout, .blocks = {64, 1, 900}};
            EXPECT_EQ(firstDifference(delayed(input), renderChecked(plugin.processor(), input, plan).output),
                      "");
        }
    }
}

TEST(Bypass, passesSamplesThatAreNoNumbers) {
    Signal input = subnormals(2, 600, 3);
    const auto strange = {std::bit_cast<float>(0x7FC12345U), std::bit_cast<float>(0xFFA00001U), -0.0F,
                          std::numeric_limits<float>::infinity(), 1.0e38F};
    std::ranges::copy(strange, input[1].begin() + 100);
    HostedPlugin plugin(2);
    plugin.port("enabled") = 0.0F;
    const Signal output = renderChecked(plugin.processor(), input).output;
    EXPECT_EQ(firstDifference(delayed(input), output), "");
}

TEST(Bypass, isWhatIsNotAboveZero) {
    const Signal input = noise(2, 300, 5, -3.0);
    const float notANumber = std::numeric_limits<float>::quiet_NaN();
    const auto isBypassed = [&](float enabled) {
        HostedPlugin plugin(2);
        plugin.port("enabled") = enabled;
        return firstDifference(delayed(input), renderChecked(plugin.processor(), input).output).empty();
    };
    EXPECT_TRUE(isBypassed(0.0F));
    EXPECT_TRUE(isBypassed(-1.0F));
    EXPECT_FALSE(isBypassed(1.0F));
    EXPECT_FALSE(isBypassed(0.25F));
    EXPECT_FALSE(isBypassed(notANumber));
}

// The outputs of three plug-ins with the same input: one that is switched at `start`, one that never is
// bypassed and one that always is.
struct Switched {
    Signal switched;
    Signal processed;
    Signal bypassed;
};

Switched switchAt(std::size_t start, bool toBypass, const Signal& input, std::int32_t block) {
    HostedPlugin plugin(2);
    HostedPlugin processed(2);
    HostedPlugin bypassed(2);
    bypassed.port("enabled") = 0.0F;
    plugin.port("enabled") = toBypass ? 1.0F : 0.0F;
    std::size_t done = 0;
    const auto process = [&](const float* const* inputs, float* const* outputs, std::int32_t frames) {
        if (done >= start) {
            plugin.port("enabled") = toBypass ? 0.0F : 1.0F;
        }
        plugin.process(inputs, outputs, frames);
        done += static_cast<std::size_t>(frames);
    };
    const RenderPlan plan{.blocks = {block}};
    return {renderChecked(process, input, plan).output,
            renderChecked(processed.processor(), input, plan).output,
            renderChecked(bypassed.processor(), input, plan).output};
}

TEST(Bypass, isReachedAfterTenMillisecondsExactly) {
    const Signal input = noise(2, 4096, 6, -6.0);
    for (const bool toBypass : {true, false}) {
        const Switched sound = switchAt(1024, toBypass, input, 64);
        const Signal& before = toBypass ? sound.processed : sound.bypassed;
        const Signal& after = toBypass ? sound.bypassed : sound.processed;
        for (std::size_t channel = 0; channel < 2; ++channel) {
            const std::vector<float>& found = sound.switched[channel];
            EXPECT_TRUE(std::equal(found.begin(), found.begin() + 1024, before[channel].begin()));
            EXPECT_NE(found[1024 + kFadeFrames / 2], before[channel][1024 + kFadeFrames / 2]);
            EXPECT_NE(found[1024 + kFadeFrames / 2], after[channel][1024 + kFadeFrames / 2]);
            EXPECT_NE(found[1024 + kFadeFrames - 2], after[channel][1024 + kFadeFrames - 2]);
            EXPECT_TRUE(std::equal(found.begin() + 1024 + kFadeFrames - 1, found.end(),
                                   after[channel].begin() + 1024 + kFadeFrames - 1));
        }
    }
}

TEST(Bypass, fadesTheSameForEverySlicing) {
    const Signal input = noise(2, 4096, 6, -6.0);
    const Signal expected = switchAt(1024, true, input, 64).switched;
    for (const std::int32_t block : {1, 16, 128, 1024}) {
        EXPECT_EQ(firstDifference(expected, switchAt(1024, true, input, block).switched), "") << block;
    }
}

// The largest change from one sample to the next.
float steepest(const std::vector<float>& samples) {
    float largest = 0.0F;
    for (std::size_t i = 1; i < samples.size(); ++i) {
        largest = std::max(largest, std::abs(samples[i] - samples[i - 1]));
    }
    return largest;
}

TEST(Bypass, doesNotClick) {
    // Switched at the peak of the sine, and the processed one differs most from it.
    const Signal input = sine(9600, 100.0, 0.5F);
    for (const bool toBypass : {true, false}) {
        const Switched sound = switchAt(4440, toBypass, input, 120);
        const float usual = std::max(steepest(sound.processed[0]), steepest(sound.bypassed[0]));
        const float distance = std::abs(sound.processed[0][4440] - sound.bypassed[0][4440]);
        ASSERT_GT(distance, 4.0F * usual) << "a hard switch would be heard";
        EXPECT_LT(steepest(sound.switched[0]), usual + 4.0F * distance / static_cast<float>(kFadeFrames));
    }
}

TEST(Bypass, reducesNothing) {
    const Signal input = noise(2, 9600, 7, 12.0);
    HostedPlugin plugin(2);
    plugin.set({{"gain", 1.0F}, {"ratio", 1.0F}});
    renderChecked(plugin.processor(), input);
    ASSERT_GT(plugin.port("grl"), 0.1F);
    ASSERT_GT(plugin.port("grr"), 0.1F);
    plugin.port("enabled") = 0.0F;
    renderChecked(plugin.processor(), input);
    EXPECT_EQ(plugin.port("grl"), 0.0F);
    EXPECT_EQ(plugin.port("grr"), 0.0F);
    EXPECT_GT(plugin.port("inrms"), 0.0F);
    EXPECT_GT(plugin.port("outrms"), 0.0F);
    plugin.port("enabled") = 1.0F;
    renderChecked(plugin.processor(), input);
    EXPECT_GT(plugin.port("grl"), 0.1F);
}

TEST(Bypass, canTurnRoundOnItsWay) {
    const Signal input = sine(4800, 100.0, 0.5F);
    HostedPlugin plugin(2);
    HostedPlugin reference(2);
    std::int32_t run = 0;
    const auto process = [&](const float* const* inputs, float* const* outputs, std::int32_t frames) {
        plugin.port("enabled") = run++ == 5 ? 0.0F : 1.0F;
        plugin.process(inputs, outputs, frames);
    };
    const Signal found = renderChecked(process, input, {.blocks = {100}}).output;
    const Signal expected = renderChecked(reference.processor(), input, {.blocks = {100}}).output;
    EXPECT_TRUE(std::equal(found[0].begin(), found[0].begin() + 500, expected[0].begin()));
    EXPECT_NE(found[0][600], expected[0][600]);
    // Bypassed for 100 frames, so that the way back takes as long.
    EXPECT_TRUE(std::equal(found[0].begin() + 700, found[0].end(), expected[0].begin() + 700));
}

} // namespace
} // namespace varno::test
