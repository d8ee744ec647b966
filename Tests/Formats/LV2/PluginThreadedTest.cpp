// Hosts make, run and end plug-ins on several threads at once.
#include "Tests/Formats/LV2/HostedPlugin.h"
#include "Tests/Support/Signal.h"
#include "Tests/Support/TestRun.h"

#include <gtest/gtest.h>
#include <memory>
#include <thread>

namespace varno::test {
namespace {

// Renders with values that change from run to run.
Signal renderMoving(std::size_t channels, const Signal& input) {
    HostedPlugin plugin(channels);
    int run = 0;
    const auto process = [&](const float* const* inputs, float* const* outputs, std::int32_t frames) {
        plugin.port("gain") = static_cast<float>(run % 7) / 7.0F;
        plugin.port("ratio") = static_cast<float>(run % 3) / 3.0F;
        plugin.port("enabled") = static_cast<float>(run % 2);
        ++run;
        plugin.process(inputs, outputs, frames);
    };
    return renderChecked(process, input, {.blocks = {100}}).output;
}

TEST(PluginThreads, doNotAffectEachOther) {
    const Signal mono = drums(1, 3000, 48000.0, 1);
    const Signal stereo = drums(2, 3000, 48000.0, 2);
    const Signal expectedMono = renderMoving(1, mono);
    const Signal expectedStereo = renderMoving(2, stereo);
    std::vector<std::string> differences(4);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < differences.size(); ++i) {
        threads.emplace_back([&, i] {
            for (int round = 0; round < 5 * testScale(); ++round) {
                const bool isMono = i % 2 == 0;
                differences[i] += firstDifference(isMono ? expectedMono : expectedStereo,
                                                  renderMoving(isMono ? 1 : 2, isMono ? mono : stereo));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(differences, std::vector<std::string>(differences.size()));
}

// Made here, run there, ended elsewhere, as hosts with an audio thread do.
TEST(PluginThreads, mayPassAPluginOn) {
    const Signal input = noise(2, 256, 1, -6.0);
    auto plugin = std::make_unique<HostedPlugin>(2);
    Signal found;
    std::thread([&] { found = renderChecked(plugin->processor(), input).output; }).join();
    std::thread([&] { plugin.reset(); }).join();
    HostedPlugin other(2);
    EXPECT_EQ(firstDifference(renderChecked(other.processor(), input).output, found), "");
}

} // namespace
} // namespace varno::test
