#include "Host/Bypass.h"

#include "Tests/Host/FixtureTest.h"
#include "Tests/Support/RenderChecker.h"
#include "Tests/Support/Signal.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace varno {
namespace {

using test::BufferLayout;
using test::firstDifference;
using test::noise;
using test::renderChecked;
using test::Signal;

constexpr std::int32_t kFadeFrames = 480; // 10 ms at 48 kHz

// The input some frames later.
Signal delayed(const Signal& input, std::int32_t frames) {
    Signal output = input;
    for (std::vector<float>& samples : output) {
        samples.insert(samples.begin(), static_cast<std::size_t>(frames), 0.0F);
        samples.resize(input.front().size());
    }
    return output;
}

// What the fixture makes of an input: half of it.
Signal halved(const Signal& input) {
    Signal output = input;
    for (std::vector<float>& samples : output) {
        std::ranges::transform(samples, samples.begin(), [](float sample) { return sample * 0.5F; });
    }
    return output;
}

class BypassTest : public FixtureTest {
protected:
    static test::BufferProcessor processorOf(Bypass& bypass) {
        return [&](const float* const* inputs, float* const* outputs, std::int32_t frames) {
            bypass.process(inputs, outputs, frames);
        };
    }

    // Switches at frame `start`, which ends a block.
    Signal switchedAt(std::int32_t start, bool toBypass, const Signal& input,
                      const std::vector<std::int32_t>& blocks) {
        const auto instance = makeInstance({.channels = static_cast<std::int32_t>(input.size())});
        Oversampling effect(*instance, {.routineLatencyFrames = 1});
        Bypass bypass(effect);
        bypass.set(!toBypass);
        std::int32_t done = 0;
        const auto process = [&](const float* const* inputs, float* const* outputs, std::int32_t frames) {
            bypass.set(done >= start ? toBypass : !toBypass);
            bypass.process(inputs, outputs, frames);
            done += std::max(frames, 0);
        };
        const auto outcome = renderChecked(process, input, {.blocks = blocks});
        EXPECT_EQ(test::textOf(outcome.complaints), "");
        return outcome.output;
    }
};

TEST_F(BypassTest, EitherEndIsExact) {
    for (const std::int32_t channels : {1, 2}) {
        const Signal input = noise(static_cast<std::size_t>(channels), 3000, 1, 0.0);
        for (const auto layout : {BufferLayout::kSeparate, BufferLayout::kInPlace, BufferLayout::kCrossed}) {
            for (const bool isBypassed : {false, true}) {
                if (!isBypassed && layout == BufferLayout::kCrossed) {
                    continue; // the fixture processes one channel after the other
                }
                const auto instance = makeInstance({.channels = channels});
                Oversampling effect(*instance, {.routineLatencyFrames = 1});
                Bypass bypass(effect);
                EXPECT_FALSE(bypass.isBypassed());
                bypass.set(isBypassed);
                const auto outcome =
                    renderChecked(processorOf(bypass), input, {.layout = layout, .blocks = {64, 0, 1, 1500}});
                EXPECT_EQ(test::textOf(outcome.complaints), "");
                EXPECT_EQ(firstDifference(isBypassed ? delayed(input, 1) : halved(input), outcome.output),
                          "");
            }
        }
    }
}

TEST_F(BypassTest, TheInputIsDelayedByTheLatencyWhateverTheBlocks) {
    const Signal input = noise(2, 2000, 2, 0.0);
    for (const std::int32_t latency : {0, 1, 7, 600}) {
        for (const std::int32_t block : {1, 5, 7, 8, 512, 2000}) {
            const auto instance = makeInstance();
            Oversampling effect(*instance, {.routineLatencyFrames = latency});
            Bypass bypass(effect);
            bypass.set(true);
            const auto outcome = renderChecked(processorOf(bypass), input, {.blocks = {block}});
            ASSERT_EQ(firstDifference(delayed(input, latency), outcome.output), "")
                << latency << ' ' << block;
        }
    }
}

// The frames that are kept while the processed sound is heard are those that follow in the bypassed one.
TEST_F(BypassTest, NoFrameIsLostWhereTheFadeBegins) {
    const Signal input = noise(1, 2000, 3, 0.0);
    for (const std::int32_t latency : {0, 1, 7, 600}) {
        for (const std::int32_t block : {1, 3, 500}) {
            const auto instance = makeInstance({.channels = 1});
            Oversampling effect(*instance, {.routineLatencyFrames = latency});
            Bypass bypass(effect);
            std::int32_t done = 0;
            const auto process = [&](const float* const* inputs, float* const* outputs, std::int32_t frames) {
                bypass.set(done >= 999);
                bypass.process(inputs, outputs, frames);
                done += frames;
            };
            const Signal output = renderChecked(process, input, {.blocks = {block}}).output;
            const Signal expected = delayed(input, latency);
            const auto start = std::ptrdiff_t{1002 + kFadeFrames};
            EXPECT_TRUE(std::equal(output[0].begin() + start, output[0].end(), expected[0].begin() + start))
                << latency << ' ' << block;
        }
    }
}

TEST_F(BypassTest, FadesStraightWithinTenMilliseconds) {
    const Signal ones(2, std::vector<float>(2000, 1.0F));
    for (const bool toBypass : {true, false}) {
        const std::vector<float> found = switchedAt(1000, toBypass, ones, {100})[1];
        const float before = toBypass ? 0.5F : 1.0F;
        const float after = 1.5F - before;
        EXPECT_EQ(found[999], before);
        for (std::size_t frame = 0; frame < kFadeFrames; ++frame) {
            const float share = static_cast<float>(frame + 1) / static_cast<float>(kFadeFrames);
            ASSERT_NEAR(found[1000 + frame], before + (after - before) * share, 1e-6F) << frame;
        }
        EXPECT_NE(found[1000 + kFadeFrames - 2], after);
        EXPECT_TRUE(std::all_of(found.begin() + 1000 + kFadeFrames - 1, found.end(),
                                [&](float sample) { return sample == after; }));
    }
}

TEST_F(BypassTest, EveryDivisionIntoBlocksGivesTheSame) {
    for (const std::size_t channels : {std::size_t{1}, std::size_t{2}}) {
        const Signal input = noise(channels, 4000, 4, 0.0);
        for (const bool toBypass : {true, false}) {
            const Signal expected = switchedAt(1000, toBypass, input, {1000});
            for (const std::vector<std::int32_t>& blocks :
                 {std::vector<std::int32_t>{1}, {8}, {500}, {200, 0, 800}, {999, 1}}) {
                EXPECT_EQ(firstDifference(expected, switchedAt(1000, toBypass, input, blocks)), "");
            }
        }
    }
}

// Switched at the peak of a sine, where the processed one differs most.
TEST_F(BypassTest, DoesNotClick) {
    Signal sine(1, std::vector<float>(4000));
    for (std::size_t frame = 0; frame < 4000; ++frame) {
        sine[0][frame] = static_cast<float>(
            std::sin(2.0 * std::numbers::pi * 100.0 * static_cast<double>(frame) / 48000.0));
    }
    const float slope = static_cast<float>(2.0 * std::numbers::pi * 100.0 / 48000.0);
    for (const bool toBypass : {true, false}) {
        const std::vector<float> found = switchedAt(1080, toBypass, sine, {120})[0];
        float steepest = 0.0F;
        for (std::size_t frame = 1; frame < found.size(); ++frame) {
            steepest = std::max(steepest, std::abs(found[frame] - found[frame - 1]));
        }
        EXPECT_LT(steepest, slope + 0.5F / static_cast<float>(kFadeFrames) + 1e-6F);
    }
}

TEST_F(BypassTest, ItsEffectGoesOnMeanwhile) {
    const auto instance = makeInstance();
    Oversampling effect(*instance, {.routineLatencyFrames = 1});
    Bypass bypass(effect);
    bypass.set(true);
    renderChecked(processorOf(bypass), noise(2, 777, 5, 0.0), {.blocks = {100}});
    EXPECT_EQ(instance->position(), 777);
}

TEST_F(BypassTest, AResetAppliesTheStateAtOnceToSilence) {
    const auto instance = makeInstance({.channels = 1});
    Oversampling effect(*instance, {.routineLatencyFrames = 1});
    Bypass bypass(effect);
    const Signal ones(1, std::vector<float>(100, 1.0F));
    renderChecked(processorOf(bypass), ones);
    bypass.set(true);
    bypass.reset();
    EXPECT_EQ(firstDifference(delayed(ones, 1), renderChecked(processorOf(bypass), ones).output), "");
}

// 1 Hz is the lowest rate of the host: 10 ms are less than a frame.
TEST_F(BypassTest, SwitchesAtTheLowestRateToo) {
    const auto instance = makeInstance({.channels = 1, .sampleRateHz = 1.0});
    Oversampling effect(*instance, {.routineLatencyFrames = 0});
    Bypass bypass(effect);
    bypass.set(true);
    const Signal ones(1, std::vector<float>(4, 1.0F));
    EXPECT_EQ(firstDifference(ones, renderChecked(processorOf(bypass), ones).output), "");
}

} // namespace
} // namespace varno
