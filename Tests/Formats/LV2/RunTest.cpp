// The output of a plug-in for the different ways in which hosts pass audio.
#include "Tests/Formats/LV2/HostedPlugin.h"
#include "Tests/Integration/HostedEffect.h"
#include "Tests/Support/Signal.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace varno::test {
namespace {

const PortValues kSettings = {{"gain", 0.8F}, {"hot", 0.6F}, {"ratio", 0.75F}, {"mix", 0.25F}, {"hp", 1.0F}};

// The output of `Instance` alone for the input with the same settings; that is what `varno render` runs.
class Run : public HostedEffect {
protected:
    Signal renderAlone(const Signal& input) {
        const auto instance = makeInstance(module(), static_cast<std::int32_t>(input.size()));
        automate(*instance, {{"Gain", 0.8F}, {"Hot", 0.6F}, {"Ratio", 0.75F}, {"Mix", 0.25F}, {"HP", 1.0F}});
        Signal output = render(*instance, input);
        return output;
    }

    static Signal renderHosted(const Signal& input, const RenderPlan& plan) {
        HostedPlugin plugin(input.size());
        plugin.set(kSettings);
        const RenderOutcome outcome = renderChecked(plugin.processor(), input, plan);
        EXPECT_EQ(textOf(outcome.complaints), "");
        return outcome.output;
    }
};

TEST_F(Run, givesTheBitsOfTheModuleForEverySlicing) {
    for (const std::size_t channels : {std::size_t{1}, std::size_t{2}}) {
        const Signal input = swell(channels, 20000, 7, 6.0);
        const Signal expected = renderAlone(input);
        for (const std::vector<std::int32_t>& blocks :
             {std::vector<std::int32_t>{}, {1}, {512}, {64}, {17}, {4096, 2432}, {0, 1, 1000, 3}}) {
            EXPECT_EQ(firstDifference(expected, renderHosted(input, {.blocks = blocks})), "");
        }
    }
}

TEST_F(Run, givesTheBitsOfTheModuleForEveryLayout) {
    const Signal input = drums(2, 20000, 48000.0, 3);
    const Signal expected = renderAlone(input);
    for (const BufferLayout layout : {BufferLayout::kInPlace, BufferLayout::kCrossed}) {
        for (const std::vector<std::int32_t>& blocks : {std::vector<std::int32_t>{}, {700}, {1}}) {
            const RenderPlan plan{.layout = layout, .blocks = blocks, .offset = 1};
            EXPECT_EQ(firstDifference(expected, renderHosted(input, plan)), "");
        }
    }
    const Signal same = {input[0], input[0]};
    EXPECT_EQ(firstDifference(renderAlone(same), renderHosted(same, {.layout = BufferLayout::kSharedInput})),
              "");
}

TEST_F(Run, takesAHundredThousandFramesAtOnce) {
    const Signal input = swell(2, 100000, 9, 0.0);
    EXPECT_EQ(firstDifference(renderAlone(input), renderHosted(input, {})), "");
}

TEST(RunPorts, mayBeConnectedToNothing) {
    HostedPlugin plugin(2);
    for (const char* symbol : {"in_l", "in_r", "out_l", "out_r", "gain", "hp", "mix", "linksw", "enabled",
                               "grl", "outrms", "latency"}) {
        plugin.connect(symbol, nullptr);
    }
    for (const std::uint32_t frames : {0U, 1U, 64U, 100000U}) {
        plugin.run(frames);
    }
}

TEST(RunPorts, ofInputsThatAreNotThereAreSilent) {
    std::vector<float> output(256, 1.0F);
    HostedPlugin plugin(2);
    plugin.connect("out_l", output.data());
    plugin.run(256); // in_l, in_r and out_r were never connected
    EXPECT_EQ(output, std::vector<float>(256, 0.0F));
}

TEST(RunPorts, thatAreNotThereHaveTheirDefaults) {
    const Signal input = drums(2, 9600, 48000.0, 5);
    HostedPlugin connected(2);
    HostedPlugin unconnected(2);
    for (const char* symbol : {"gain", "hot", "ratio", "volume", "atk", "rls", "enabled"}) {
        unconnected.connect(symbol, nullptr);
    }
    EXPECT_EQ(firstDifference(renderChecked(connected.processor(), input).output,
                              renderChecked(unconnected.processor(), input).output),
              "");
}

TEST(RunPorts, mayShareOneBufferForBothOutputs) {
    const Signal input = noise(1, 512, 3, -6.0);
    std::vector<float> output(512);
    HostedPlugin plugin(2);
    const float* inputs[] = {input[0].data(), input[0].data()};
    float* outputs[] = {output.data(), output.data()};
    for (const float enabled : {1.0F, 0.0F, 1.0F}) {
        plugin.port("enabled") = enabled;
        plugin.process(inputs, outputs, 512);
        EXPECT_TRUE(std::ranges::all_of(output, [](float sample) { return std::isfinite(sample); }));
    }
}

TEST(RunPorts, outOfRangeCountAsTheNearestValue) {
    const Signal input = drums(2, 9600, 48000.0, 5);
    HostedPlugin inside(2);
    inside.set({{"gain", 1.0F}, {"hot", 0.0F}});
    HostedPlugin outside(2);
    const float infinity = std::numeric_limits<float>::infinity();
    outside.set({{"gain", 7.0F}, {"hot", -infinity}});
    EXPECT_EQ(firstDifference(renderChecked(inside.processor(), input).output,
                              renderChecked(outside.processor(), input).output),
              "");
}

TEST(RunPorts, thatHoldNoNumberCountAsNotMoved) {
    const Signal input = drums(2, 9600, 48000.0, 5);
    const float notANumber = std::numeric_limits<float>::quiet_NaN();
    HostedPlugin sound(2);
    sound.set({{"gain", 0.75F}});
    HostedPlugin broken(2);
    broken.set({{"gain", 0.75F}, {"mix", notANumber}}); // from the first run on: its default
    renderChecked(sound.processor(), input);
    renderChecked(broken.processor(), input);
    broken.set({{"gain", notANumber}});
    EXPECT_EQ(firstDifference(renderChecked(sound.processor(), input).output,
                              renderChecked(broken.processor(), input).output),
              "");
}

TEST(RunReactivated, soundsLikeAFreshOne) {
    for (const float enabled : {1.0F, 0.0F}) {
        const Signal input = drums(2, 9600, 48000.0, 8);
        HostedPlugin fresh(2);
        fresh.set(kSettings);
        fresh.port("enabled") = enabled;
        const Signal expected = renderChecked(fresh.processor(), input).output;

        HostedPlugin used(2);
        used.set({{"gain", 0.1F}, {"enabled", 1.0F - enabled}});
        renderChecked(used.processor(), noise(2, 5000, 1, 0.0), {.blocks = {70}});
        used.set(kSettings);
        used.port("enabled") = enabled;
        used.activate();
        EXPECT_EQ(firstDifference(expected, renderChecked(used.processor(), input).output), "");
        for (const char* meter : {"grl", "grr", "inrms", "outrms"}) {
            EXPECT_EQ(used.port(meter), fresh.port(meter)) << meter;
        }
    }
}

TEST(RunLatency, isOneFrameAndReported) {
    for (const std::size_t channels : {std::size_t{1}, std::size_t{2}}) {
        HostedPlugin plugin(channels);
        plugin.run(0); // as hosts do to read the latency
        EXPECT_EQ(plugin.port("latency"), 1.0F);
        // All dry: the processed path is late by itself.
        plugin.set({{"mix", 1.0F}});
        const Signal input = impulse(channels, 64);
        const Signal output = renderChecked(plugin.processor(), input).output;
        EXPECT_EQ(output[0][10], 0.0F);
        EXPECT_NE(output[0][11], 0.0F);
    }
}

TEST(RunMeters, holdTheirPeakForFortyMilliseconds) {
    HostedPlugin plugin(2);
    plugin.set({{"gain", 1.0F}});
    const Signal loud = noise(2, 4800, 2, 0.0);
    renderChecked(plugin.processor(), loud, {.blocks = {64}});
    const float peaks[] = {plugin.port("grl"), plugin.port("inrms"), plugin.port("outrms")};
    const Signal quiet = silence(2, 64);
    const float* inputs[] = {quiet[0].data(), quiet[1].data()};
    Signal output = quiet;
    float* outputs[] = {output[0].data(), output[1].data()};
    for (const float peak : peaks) {
        EXPECT_GT(peak, 0.0F);
    }
    plugin.process(inputs, outputs, 64);
    const float held = plugin.port("outrms");
    for (int frames = 128; frames <= 1920; frames += 64) {
        plugin.process(inputs, outputs, 64);
        EXPECT_GE(plugin.port("outrms"), held * 0.95F) << frames;
    }
    for (int frames = 0; frames < 96000; frames += 64) {
        plugin.process(inputs, outputs, 64);
    }
    EXPECT_LT(plugin.port("grl"), peaks[0]);
    EXPECT_LT(plugin.port("inrms"), peaks[1] * 0.1F);
    EXPECT_LT(plugin.port("outrms"), peaks[2] * 0.1F);
}

} // namespace
} // namespace varno::test
