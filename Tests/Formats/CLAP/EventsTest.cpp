// Values at the exact frames of their events.
#include "CLAP/Clap/Events.h"
#include "Tests/Formats/CLAP/EventPlan.h"
#include "Tests/Formats/CLAP/HostedClap.h"
#include "Tests/Integration/OversampledEffect.h"
#include "Tests/Support/Signal.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <random>

namespace varno::test {
namespace {

class ClapEvents : public OversampledEffect {
protected:
    // The sound where every value of the plan is set at its frame.
    Signal expected(const Signal& input, const std::vector<PlannedValue>& values, std::int32_t factor) {
        OversampledInstance effect(module(), factor, static_cast<std::int32_t>(input.size()), 48000.0, {});
        Signal output = input;
        const auto frames = static_cast<std::int32_t>(output.front().size());
        std::size_t next = 0;
        for (std::int32_t done = 0; done < frames;) {
            for (; next < values.size() && values[next].frame <= done; ++next) {
                effect->instance().setNormalized(values[next].parameter, values[next].normalized);
            }
            const std::int32_t end = next < values.size() ? std::min(frames, values[next].frame) : frames;
            std::array<float*, 2> channels = {output.front().data() + done, output.back().data() + done};
            effect->process(channels.data(), channels.data(), end - done);
            done = end;
        }
        return output;
    }
};

TEST_F(ClapEvents, areInForceFromTheirFramesOn) {
    std::mt19937 random(20261123);
    for (const std::size_t channels : {std::size_t{1}, std::size_t{2}}) {
        const Signal input = swell(channels, 24000, 5, 3.0);
        for (std::size_t stages = 0; stages < kOversamplingFactors.size(); ++stages) {
            const EventPlan plan = randomEvents(random, 24000, 100);
            const Signal reference = expected(input, plan.values, kOversamplingFactors.at(stages));
            for (const std::vector<std::int32_t>& blocks :
                 {std::vector<std::int32_t>{}, {8192}, {1}, {64}, {333, 1, 1024}}) {
                ClapHost host;
                HostedClap plugin(clap_entry, host, channels);
                plugin.add({{0, 1000, static_cast<double>(stages)}});
                plugin.flush();
                plugin.activate();
                plugin.add(plan.events);
                const RenderOutcome outcome = renderChecked(plugin.processor(), input, {.blocks = blocks});
                EXPECT_EQ(textOf(outcome.complaints), "");
                EXPECT_EQ(firstDifference(reference, outcome.output), "") << stages << " stages";
            }
        }
    }
}

// Of a value that arrives before any sound there is no glide.
TEST_F(ClapEvents, atTheFirstFrameHoldAtOnce) {
    const Signal input = swell(2, 9600, 5, 3.0);
    const Signal reference = expected(input, {{0, "Gain", 0.75}, {0, "Hot", 0.5}}, 1);
    ClapHost host;
    HostedClap plugin(clap_entry, host, 2);
    plugin.activate();
    plugin.add({{0, 1, 0.75}, {0, 9, 0.5}});
    EXPECT_EQ(firstDifference(reference, renderChecked(plugin.processor(), input).output), "");
}

TEST_F(ClapEvents, behindTheBufferAreTakenAtItsEnd) {
    ClapHost host;
    HostedClap plugin(clap_entry, host, 1);
    plugin.activate();
    std::vector<float> sound(64);
    float* channels[] = {sound.data()};
    clap_audio_buffer_t buffer{channels, nullptr, 1, 0, 0};
    const clap_event_param_value_t late = clapValueEvent(1, 0.25, 64);
    const clap_input_events_t events{
        const_cast<clap_event_param_value_t*>(&late), [](const clap_input_events_t*) { return 2U; },
        [](const clap_input_events_t* list, std::uint32_t index) -> const clap_event_header_t* {
            return index == 0 ? nullptr : static_cast<const clap_event_header_t*>(list->ctx);
        }};
    const clap_process_t process{-1, 64, nullptr, &buffer, &buffer, 1, 1, &events, nullptr};
    EXPECT_EQ(plugin.plugin()->process(plugin.plugin(), &process), CLAP_PROCESS_CONTINUE);
    EXPECT_EQ(plugin.value(clap_id{1}), 0.25);
}

TEST_F(ClapEvents, ofOtherKindsAreLeftOut) {
    ClapHost host;
    HostedClap plugin(clap_entry, host, 1);
    plugin.activate();
    const Signal input = noise(1, 1000, 3, -6.0);
    const Signal untouched = renderChecked(plugin.processor(), input).output;
    plugin.reset();
    for (std::uint16_t type = 0; type < 13; ++type) {
        if (type != CLAP_EVENT_PARAM_VALUE) {
            plugin.add({{10U + type, 1, 1.0, type}});
        }
    }
    EXPECT_EQ(firstDifference(untouched, renderChecked(plugin.processor(), input).output), "");
    EXPECT_EQ(plugin.value(clap_id{1}), 0.5);
}

} // namespace
} // namespace varno::test
