// The port for the factor of oversampling.
#include "Tests/Formats/LV2/HostedPlugin.h"
#include "Tests/Integration/OversampledEffect.h"
#include "Tests/Support/Signal.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace varno::test {
namespace {

class Quality : public OversampledEffect {
protected:
    // What the effect makes of a sound of one channel at a factor, in the form of renderChecked.
    Signal alone(std::int32_t factor, const Signal& input) {
        OversampledInstance effect(module(), factor, 1, 48000.0, {{"Hot", 0.5F}, {"Ratio", 0.75F}});
        Signal output = input;
        effect.process(output[0]);
        return output;
    }

    static void start(HostedPlugin& plugin, float quality) {
        plugin.set({{"hot", 0.5F}, {"ratio", 0.75F}, {"quality", quality}});
        plugin.activate();
    }
};

TEST_F(Quality, hasTheBitsOfTheEffectAtThatFactorFromTheFirstFrameOn) {
    const Signal input = drums(1, 9600, 48000.0, 3);
    for (const std::int32_t factor : kOversamplingFactors) {
        const Signal expected = alone(factor, input);
        for (const std::vector<std::int32_t>& blocks : {std::vector<std::int32_t>{}, {0, 1, 64, 700}}) {
            HostedPlugin plugin(1);
            start(plugin, static_cast<float>(factor));
            const RenderOutcome outcome = renderChecked(plugin.processor(), input, {.blocks = blocks});
            EXPECT_EQ(textOf(outcome.complaints), "");
            EXPECT_EQ(firstDifference(expected, outcome.output), "") << factor;
            EXPECT_EQ(plugin.port("latency"),
                      static_cast<float>(oversampledLatency(factor, kDemoGain_LatencyFrames)));
        }
    }
}

TEST_F(Quality, ofNoFactorIsTheNextLowerOne) {
    const std::pair<float, float> values[] = {{-1.0F, 1.0F},
                                              {1.9F, 1.0F},
                                              {2.0F, 41.0F},
                                              {3.0F, 41.0F},
                                              {7.9F, 46.0F},
                                              {100.0F, 48.0F},
                                              {std::numeric_limits<float>::infinity(), 48.0F},
                                              {std::numeric_limits<float>::quiet_NaN(), 1.0F}};
    for (const auto& [quality, latency] : values) {
        HostedPlugin plugin(1);
        start(plugin, quality);
        renderChecked(plugin.processor(), silence(1, 64));
        EXPECT_EQ(plugin.port("latency"), latency) << quality;
    }
}

TEST_F(Quality, isLoweredWhereItDoesNotFitTheRate) {
    HostedPlugin plugin(1, 96000.0);
    start(plugin, 8.0F);
    renderChecked(plugin.processor(), silence(1, 64));
    EXPECT_EQ(plugin.port("latency"), 46.0F);
    EXPECT_EQ(plugin.port("quality"), 8.0F);
}

TEST_F(Quality, changesWithinTwentyMillisecondsAndTheLatencyWithIt) {
    HostedPlugin plugin(1);
    start(plugin, 1.0F);
    std::vector<float> sound(480); // 10 ms
    const float* inputs[] = {sound.data()};
    float* outputs[] = {sound.data()};
    const auto peakOfRun = [&] {
        for (std::size_t frame = 0; frame < sound.size(); ++frame) {
            sound[frame] = frame % 48 < 24 ? 0.1F : -0.1F;
        }
        plugin.process(inputs, outputs, 480);
        return *std::ranges::max_element(sound);
    };
    peakOfRun();
    plugin.port("quality") = 4.0F;
    peakOfRun();
    EXPECT_EQ(plugin.port("latency"), 46.0F); // after the first half
    EXPECT_EQ(sound.back(), 0.0F);
    const float fadedIn = peakOfRun();
    EXPECT_EQ(plugin.port("latency"), 46.0F);
    EXPECT_NEAR(peakOfRun(), fadedIn, 0.1F * fadedIn);
    EXPECT_GT(fadedIn, 0.01F);
}

// The gain reduction goes on from where it is.
TEST_F(Quality, keepsTheGainReductionWhereItChanges) {
    HostedPlugin plugin(1);
    start(plugin, 1.0F);
    const Signal input = noise(1, 48000, 5, -6.0);
    renderChecked(plugin.processor(), input);
    const float before = plugin.port("grl");
    EXPECT_GT(before, 0.05F);
    for (const float quality : {8.0F, 2.0F, 1.0F}) {
        plugin.port("quality") = quality;
        renderChecked(plugin.processor(), noise(1, 2400, 6, -6.0), {.blocks = {64}});
        EXPECT_NEAR(plugin.port("grl"), before, 0.25F * before) << quality;
    }
}

} // namespace
} // namespace varno::test
