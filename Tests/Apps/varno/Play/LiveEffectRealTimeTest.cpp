#include "Play/LiveEffect.h"
#include "Session/JackBackend.h"
#include "Tests/Apps/varno/Session/FakeJack.h"
#include "Tests/Host/FixtureTest.h"
#include "Tests/Support/RealTimeGuard.h"

namespace varno {
namespace {

class LiveRealTime : public FixtureTest {};

// From the server's call to the last sample: blocks of every length, with new values in between.
TEST_F(LiveRealTime, ABlockNeitherLocksNorAllocates) {
    test::FakeJack jack;
    LiveEffect effect(module(), 2, 48'000.0);
    JackBackend backend(test::FakeJack::functions(), {});
    backend.start(effect.process());
    for (const auto& port : jack.ports) {
        port->samples.reserve(4096); // the server's memory
    }
    for (const jack_nframes_t frames : {64U, 1U, 512U, 513U, 4096U}) {
        effect.instance().setNormalized("Gain", frames / 4096.0);
        test::RealTimeScope scope;
        jack.process(frames, jack.self);
        jack.xrun(jack.self);
        EXPECT_EQ("", test::textOf(scope.finish())) << frames;
    }
}

TEST_F(LiveRealTime, NorDoesMeasuringIt) {
    const test::FakeJack jack;
    BlockStatistics statistics;
    LiveEffect effect(module(), 2, 48'000.0);
    JackBackend backend(test::FakeJack::functions(), {.statistics = &statistics});
    backend.start(effect.process());
    for (const auto& port : jack.ports) {
        port->samples.reserve(64); // the server's memory
    }
    for (int i = 0; i < 10; ++i) {
        test::RealTimeScope scope;
        jack.process(64, jack.self);
        EXPECT_EQ("", test::textOf(scope.finish()));
    }
    EXPECT_EQ(statistics.processing().count(), 10);
}

TEST_F(LiveRealTime, NorDoesSilence) {
    EffectSlot slot;
    std::vector<float> samples(64);
    float* channels[] = {samples.data()};
    test::RealTimeScope scope;
    slot.process(channels, channels, 1, 64);
    EXPECT_EQ("", test::textOf(scope.finish()));
}

} // namespace
} // namespace varno
