// A run calls no allocator, lock, file or wait, whichever values have changed.
#include "Tests/Formats/LV2/HostedPlugin.h"
#include "Tests/Support/RealTimeGuard.h"
#include "Tests/Support/Signal.h"

#include <gtest/gtest.h>
#include <random>

namespace varno::test {
namespace {

constexpr const char* kInputs[] = {"gain",   "hp",  "band",  "atk", "rls", "asw",    "uk",
                                   "volume", "hot", "ratio", "mix", "hsw", "linksw", "enabled"};

class PluginRealTime : public testing::TestWithParam<std::size_t> {
protected:
    RealTimeReport run(std::int32_t frames) {
        const float* inputs[] = {mInput.front().data(), mInput.back().data()};
        float* outputs[] = {mOutput.front().data(), mOutput.back().data()};
        RealTimeScope scope;
        mPlugin.process(inputs, outputs, frames);
        return scope.finish();
    }

    const Signal mInput = swell(GetParam(), 5000, 1, 6.0);
    Signal mOutput = mInput;
    HostedPlugin mPlugin{GetParam()};
};

TEST_P(PluginRealTime, isCleanFromTheFirstRunOn) {
    const RealTimeReport report = run(512);
    EXPECT_TRUE(report.clean()) << textOf(report);
}

TEST_P(PluginRealTime, isCleanWhileEveryPortMoves) {
    std::mt19937 random(20261121);
    for (const std::int32_t frames : {1, 64, 0, 512, 33, 5000, 2, 700}) {
        for (const char* symbol : kInputs) {
            mPlugin.port(symbol) = static_cast<float>(random()) / static_cast<float>(std::mt19937::max());
        }
        mPlugin.port("enabled") = static_cast<float>(random() % 2);
        const RealTimeReport report = run(frames);
        EXPECT_TRUE(report.clean()) << frames << textOf(report);
    }
}

TEST_P(PluginRealTime, isCleanAtRest) {
    run(64);
    for (const std::int32_t frames : {64, 0, 5000, 1}) {
        const RealTimeReport report = run(frames);
        EXPECT_TRUE(report.clean()) << frames << textOf(report);
    }
    mPlugin.port("enabled") = 0.0F; // and in the fade
    const RealTimeReport report = run(64);
    EXPECT_TRUE(report.clean()) << textOf(report);
}

INSTANTIATE_TEST_SUITE_P(Channels, PluginRealTime, testing::Values(std::size_t{1}, std::size_t{2}));

} // namespace
} // namespace varno::test
