// Processing calls no allocator, lock, file or wait, whichever values have changed.
#include "CLAP/Clap/Events.h"
#include "Tests/Formats/CLAP/HostedClap.h"
#include "Tests/Support/RealTimeGuard.h"
#include "Tests/Support/Signal.h"

#include <gtest/gtest.h>
#include <random>

namespace varno::test {
namespace {

// Events in memory of their own, so that the guard sees the plug-in's calls alone.
struct Events {
    std::vector<clap_event_param_value_t> list;
    clap_input_events_t in{this,
                           [](const clap_input_events_t* from) {
                               return static_cast<std::uint32_t>(
                                   static_cast<const Events*>(from->ctx)->list.size());
                           },
                           [](const clap_input_events_t* from, std::uint32_t index) {
                               return &static_cast<const Events*>(from->ctx)->list[index].header;
                           }};
    clap_output_events_t out{nullptr,
                             [](const clap_output_events_t*, const clap_event_header_t*) { return true; }};
};

class ClapRealTime : public testing::TestWithParam<std::size_t> {
protected:
    void move(std::uint32_t frame, clap_id id, double value) {
        mEvents.list.push_back(clapValueEvent(id, value, frame));
    }

    RealTimeReport run(std::uint32_t frames, bool isReset = false) {
        float* channels[] = {mSound.front().data(), mSound.back().data()};
        clap_audio_buffer_t buffer{channels, nullptr, static_cast<std::uint32_t>(GetParam()), 0, 0};
        const clap_process_t process{-1, frames, nullptr, &buffer, &buffer, 1, 1, &mEvents.in, &mEvents.out};
        const clap_plugin_t* const plugin = mPlugin.plugin();
        RealTimeScope scope;
        if (isReset) {
            plugin->reset(plugin);
        }
        plugin->process(plugin, &process);
        const RealTimeReport report = scope.finish();
        mEvents.list.clear();
        return report;
    }

    void SetUp() override { ASSERT_TRUE(mPlugin.activate()); }

    Signal mSound = swell(GetParam(), 5000, 1, 6.0);
    ClapHost mHost;
    HostedClap mPlugin{clap_entry, mHost, GetParam()};
    Events mEvents;
};

TEST_P(ClapRealTime, isCleanFromTheFirstBufferOn) {
    const RealTimeReport report = run(512);
    EXPECT_TRUE(report.clean()) << textOf(report);
}

TEST_P(ClapRealTime, isCleanWhileEveryParameterMoves) {
    std::mt19937 random(20261121);
    for (const std::uint32_t frames : {1U, 64U, 0U, 512U, 33U, 5000U, 2U, 700U}) {
        for (clap_id id = 0; id <= 13; ++id) {
            move(frames * id / 14, id, static_cast<double>(random()) / std::mt19937::max());
        }
        move(frames, 1000, static_cast<double>(random() % 4));
        const RealTimeReport report = run(frames);
        EXPECT_TRUE(report.clean()) << frames << textOf(report);
    }
}

TEST_P(ClapRealTime, isCleanAfterAStateWasLoaded) {
    const std::string state = mPlugin.save();
    run(64);
    ASSERT_TRUE(mPlugin.load(state));
    const RealTimeReport report = run(64);
    EXPECT_TRUE(report.clean()) << textOf(report);
}

TEST_P(ClapRealTime, isCleanInAReset) {
    run(64);
    const RealTimeReport report = run(64, true);
    EXPECT_TRUE(report.clean()) << textOf(report);
}

INSTANTIATE_TEST_SUITE_P(Channels, ClapRealTime, testing::Values(std::size_t{1}, std::size_t{2}));

} // namespace
} // namespace varno::test
