// The sound of a plug-in for the different ways in which hosts pass audio.
#include "Tests/Formats/CLAP/HostedClap.h"
#include "Tests/Integration/OversampledEffect.h"
#include "Tests/Support/Signal.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <memory>

namespace varno::test {
namespace {

constexpr clap_id kGain = 1;
constexpr clap_id kHot = 9;
constexpr clap_id kRatio = 10;
constexpr clap_id kMix = 11;
constexpr clap_id kBypassOfHost = 0;
constexpr clap_id kQuality = 1000;

const std::vector<ClapEvent> kSettings = {
    {0, kGain, 0.8F}, {0, kHot, 0.6F}, {0, kRatio, 6.0}, {0, kMix, 0.25F}};

class ClapProcess : public OversampledEffect {
protected:
    // What the effect alone makes of the sound with the same settings.
    Signal alone(const Signal& input, std::int32_t factor = 1, double rateHz = 48000.0) {
        OversampledInstance effect(module(), factor, static_cast<std::int32_t>(input.size()), rateHz,
                                   {{"Gain", 0.8F}, {"Hot", 0.6F}, {"Ratio", 6.0F / 7.0F}, {"Mix", 0.25F}});
        Signal output = input;
        std::array<float*, 2> channels = {output.front().data(), output.back().data()};
        effect->process(channels.data(), channels.data(), static_cast<std::int32_t>(framesOf(output)));
        return output;
    }

    static std::size_t framesOf(const Signal& signal) { return signal.front().size(); }

    static Signal hosted(const Signal& input, const RenderPlan& plan, double quality = 0.0,
                         double rateHz = 48000.0) {
        ClapHost host;
        HostedClap plugin(clap_entry, host, input.size());
        plugin.add(kSettings);
        plugin.add({{0, kQuality, quality}});
        plugin.flush();
        plugin.activate(rateHz);
        const RenderOutcome outcome = renderChecked(plugin.processor(), input, plan);
        EXPECT_EQ(textOf(outcome.complaints), "");
        return outcome.output;
    }
};

TEST_F(ClapProcess, hasTheBitsOfTheModuleForEverySlicing) {
    for (const std::size_t channels : {std::size_t{1}, std::size_t{2}}) {
        const Signal input = swell(channels, 20000, 7, 6.0);
        const Signal expected = alone(input);
        for (const std::vector<std::int32_t>& blocks :
             {std::vector<std::int32_t>{}, {1}, {17}, {64}, {512}, {8192}, {0, 1, 1000, 3}}) {
            EXPECT_EQ(firstDifference(expected, hosted(input, {.blocks = blocks})), "");
        }
    }
}

TEST_F(ClapProcess, hasTheBitsOfTheModuleForEveryLayout) {
    const Signal input = drums(2, 20000, 48000.0, 3);
    const Signal expected = alone(input);
    for (const BufferLayout layout : {BufferLayout::kInPlace, BufferLayout::kCrossed}) {
        for (const std::vector<std::int32_t>& blocks : {std::vector<std::int32_t>{}, {700}, {1}}) {
            EXPECT_EQ(
                firstDifference(expected, hosted(input, {.layout = layout, .blocks = blocks, .offset = 1})),
                "");
        }
    }
}

TEST_F(ClapProcess, hasTheBitsOfTheModuleAtEveryQualityAndReportsTheLatency) {
    const Signal input = drums(1, 9600, 48000.0, 3);
    for (std::size_t stages = 0; stages < kOversamplingFactors.size(); ++stages) {
        const std::int32_t factor = kOversamplingFactors.at(stages);
        const Signal expected = alone(input, factor);
        for (const std::vector<std::int32_t>& blocks : {std::vector<std::int32_t>{}, {1, 64, 700}}) {
            EXPECT_EQ(
                firstDifference(expected, hosted(input, {.blocks = blocks}, static_cast<double>(stages))), "")
                << factor;
        }
        ClapHost host;
        HostedClap plugin(clap_entry, host, 1);
        plugin.add({{0, kQuality, static_cast<double>(stages)}});
        plugin.flush();
        plugin.activate();
        EXPECT_EQ(plugin.latency(), static_cast<std::uint32_t>(oversampledLatency(factor, 1)));
        EXPECT_EQ(host.latencyChanges, 1);
        plugin.activate();
        EXPECT_EQ(host.latencyChanges, 1) << "it has not changed";
    }
}

TEST_F(ClapProcess, lowersTheQualityWhereItDoesNotFitTheRate) {
    ClapHost host;
    HostedClap plugin(clap_entry, host, 2);
    plugin.add({{0, kQuality, 3.0}});
    plugin.flush();
    plugin.activate(96000.0);
    EXPECT_EQ(plugin.latency(), 46U);
    EXPECT_EQ(plugin.value(kQuality), 3.0);
}

TEST_F(ClapProcess, holdsTheQualityUntilTheNextActivation) {
    ClapHost host;
    HostedClap plugin(clap_entry, host, 1);
    plugin.activate();
    const Signal input = silence(1, 64);
    plugin.add({{3, kQuality, 2.0}});
    renderChecked(plugin.processor(), input);
    EXPECT_EQ(host.restarts, 1);
    EXPECT_EQ(plugin.latency(), 1U);
    EXPECT_EQ(plugin.value(kQuality), 2.0);
    plugin.add({{3, kQuality, 0.0}}); // as it runs
    renderChecked(plugin.processor(), input);
    EXPECT_EQ(host.restarts, 1);
    plugin.add({{3, kQuality, 2.0}});
    renderChecked(plugin.processor(), input);
    plugin.activate();
    EXPECT_EQ(plugin.latency(), 46U);
    EXPECT_EQ(host.latencyChanges, 2);
}

TEST_F(ClapProcess, soundsAfterAResetLikeAFreshOne) {
    const Signal input = drums(2, 9600, 48000.0, 8);
    const Signal expected = hosted(input, {});
    ClapHost host;
    HostedClap plugin(clap_entry, host, 2);
    plugin.activate();
    plugin.add({{0, kGain, 0.1}});
    renderChecked(plugin.processor(), noise(2, 5000, 1, 0.0), {.blocks = {70}});
    plugin.add(kSettings);
    renderChecked(plugin.processor(), noise(2, 70, 1, 0.0)); // and now they glide
    plugin.reset();
    EXPECT_EQ(firstDifference(expected, renderChecked(plugin.processor(), input).output), "");
}

TEST_F(ClapProcess, passesTheDelayedInputBitForBitWhileBypassed) {
    for (const double quality : {0.0, 2.0}) {
        ClapHost host;
        HostedClap plugin(clap_entry, host, 1);
        plugin.add({{0, kBypassOfHost, 1.0}, {0, kQuality, quality}});
        plugin.flush();
        plugin.activate();
        const Signal input = noise(1, 5000, 3, -1.0);
        const Signal output = renderChecked(plugin.processor(), input, {.blocks = {300}}).output;
        const auto latency = static_cast<std::ptrdiff_t>(plugin.latency());
        EXPECT_TRUE(std::equal(input[0].begin(), input[0].end() - latency, output[0].begin() + latency));
    }
}

// Within 10 ms from the frame of the event on, and without a jump.
TEST_F(ClapProcess, fadesIntoTheBypass) {
    ClapHost host;
    HostedClap plugin(clap_entry, host, 1);
    plugin.activate();
    HostedClap untouched(clap_entry, host, 1);
    untouched.activate();
    const Signal input = noise(1, 4800, 3, -6.0);
    plugin.add({{1000, kBypassOfHost, 1.0}});
    const Signal output = renderChecked(plugin.processor(), input, {.blocks = {333}}).output;
    const Signal processed = renderChecked(untouched.processor(), input).output;
    EXPECT_TRUE(std::equal(output[0].begin(), output[0].begin() + 1000, processed[0].begin()));
    EXPECT_NE(output[0][1100], processed[0][1100]);
    EXPECT_NE(output[0][1400], input[0][1399]);
    EXPECT_TRUE(std::equal(output[0].begin() + 1480, output[0].end(), input[0].begin() + 1479));
}

TEST_F(ClapProcess, refusesBuffersWithoutItsChannels) {
    ClapHost host;
    HostedClap plugin(clap_entry, host, 2);
    plugin.activate();
    std::vector<float> memory(64, 0.5F);
    const float* const inputs[] = {memory.data(), nullptr};
    float* const outputs[] = {memory.data(), memory.data()};
    EXPECT_EQ(plugin.process(inputs, outputs, 64), CLAP_PROCESS_ERROR);
    EXPECT_EQ(plugin.process(nullptr, outputs, 64), CLAP_PROCESS_ERROR);
    EXPECT_EQ(memory, std::vector<float>(64, 0.5F));
    plugin.add({{0, kGain, 0.25}});
    EXPECT_EQ(plugin.process(nullptr, outputs, 64), CLAP_PROCESS_ERROR);
    EXPECT_EQ(plugin.value(kGain), 0.25) << "events count nevertheless";
    EXPECT_EQ(plugin.process(nullptr, nullptr, 0), CLAP_PROCESS_CONTINUE);
    plugin.deactivate();
    EXPECT_EQ(plugin.process(outputs, outputs, 64), CLAP_PROCESS_ERROR);
}

TEST_F(ClapProcess, runsManySideBySide) {
    const Signal input = noise(2, 2000, 4, -6.0);
    ClapHost host;
    std::vector<std::unique_ptr<HostedClap>> plugins;
    for (int i = 0; i < 20; ++i) {
        plugins.push_back(std::make_unique<HostedClap>(clap_entry, host, 2));
        plugins.back()->activate();
    }
    const Signal expected = renderChecked(plugins[0]->processor(), input).output;
    for (std::size_t i = 1; i < plugins.size(); ++i) {
        EXPECT_EQ(firstDifference(expected, renderChecked(plugins[i]->processor(), input).output), "");
    }
}

} // namespace
} // namespace varno::test
