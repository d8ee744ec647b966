// A host's threads beside each other: one processes while the main thread saves, loads and reads.
#include "Tests/Formats/CLAP/HostedClap.h"
#include "Tests/Support/Signal.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>

namespace varno::test {
namespace {

TEST(ClapThreads, processWhileTheMainThreadLoadsStates) {
    ClapHost host;
    HostedClap plugin(clap_entry, host, 2);
    plugin.activate();
    plugin.add({{0, 1, 0.25}});
    plugin.flush();
    const std::string quiet = plugin.save();
    std::atomic<bool> isOver{false};
    std::thread audio([&] {
        const Signal input = noise(2, 256, 3, -6.0);
        const float* inputs[] = {input[0].data(), input[1].data()};
        Signal output = input;
        float* outputs[] = {output[0].data(), output[1].data()};
        double value = 0.0;
        do {
            value = value < 0.9 ? value + 0.1 : 0.0;
            plugin.add({{10, 9, value}, {100, 0, value < 0.5 ? 0.0 : 1.0}});
            plugin.process(inputs, outputs, 256);
        } while (!isOver);
    });
    for (int round = 0; round < 20; ++round) {
        EXPECT_TRUE(plugin.load(quiet));
        EXPECT_EQ(plugin.value("Gain"), 0.25);
        EXPECT_NE(plugin.save(), "");
        EXPECT_NE(plugin.text(4, 0.5), "");
        EXPECT_EQ(plugin.latency(), 1U);
    }
    isOver = true;
    audio.join();
    EXPECT_EQ(host.log, "");
}

TEST(ClapThreads, eachHaveAPluginOfTheirOwn) {
    const Signal input = noise(2, 2000, 3, -6.0);
    std::vector<Signal> outputs(4);
    std::vector<std::thread> threads;
    threads.reserve(outputs.size());
    for (Signal& output : outputs) {
        threads.emplace_back([&] {
            for (int round = 0; round < 3; ++round) {
                ClapHost host;
                HostedClap plugin(clap_entry, host, 2);
                plugin.activate();
                output = renderChecked(plugin.processor(), input, {.blocks = {100}}).output;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (const Signal& output : outputs) {
        EXPECT_EQ(firstDifference(outputs.front(), output), "");
    }
}

} // namespace
} // namespace varno::test
