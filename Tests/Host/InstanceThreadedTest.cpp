#include "Host/Instance.h"

#include "Tests/Host/FixtureTest.h"

#include <atomic>
#include <cmath>
#include <thread>

namespace varno {
namespace {

constexpr std::int32_t kFrames = 32;
constexpr int kBlocks = 20000;

class InstanceThreadedTest : public FixtureTest {
protected:
    // Processes blocks of ones and counts outputs that no gain between 0 and 1 can produce.
    static int processBlocks(Instance& instance, int blocks) {
        int wrong = 0;
        const std::vector<float> ones(kFrames, 1.0F);
        std::vector<float> out(kFrames);
        const float* inputs[] = {ones.data(), ones.data()};
        float* outputs[] = {out.data(), out.data()};
        for (int block = 0; block < blocks; ++block) {
            instance.process(inputs, outputs, kFrames);
            for (const float sample : out) {
                wrong += sample >= 0.0F && sample <= 1.0F && sample == out.front() ? 0 : 1;
            }
        }
        return wrong;
    }
};

TEST_F(InstanceThreadedTest, AudioRunsBesideEverythingElse) {
    const auto instance = makeInstance();
    std::atomic<bool> isDone{false};
    int wrong = 0;
    std::thread audio([&] {
        wrong = processBlocks(*instance, kBlocks);
        isDone = true;
    });
    std::thread saver([&] {
        while (!isDone.load()) {
            const StoredChunk chunk = instance->save();
            instance->restore(chunk);
            instance->equals(chunk);
        }
    });
    std::thread poller([&] {
        float largest = 0.0F;
        while (!isDone.load()) {
            largest = std::max(largest, instance->meters().value(0) + instance->meters().peak(1));
            instance->meters().clearPeak(1);
            largest += static_cast<float>(instance->position() < 0);
        }
        EXPECT_LE(largest, 2.0F);
    });
    for (int i = 0; !isDone.load(); ++i) {
        instance->requestNormalized("Gain", std::fmod(i * 0.01, 1.0));
        instance->idle();
        instance->setNormalized("Bypass", i % 2);
        instance->text("Gain");
    }
    audio.join();
    saver.join();
    poller.join();
    EXPECT_EQ(0, wrong);
    EXPECT_EQ(std::int64_t{kBlocks} * kFrames, instance->position());
}

TEST_F(InstanceThreadedTest, TheLastValueArrives) {
    const auto instance = makeInstance();
    std::thread audio([&] { processBlocks(*instance, 2000); });
    for (int i = 1; i <= 500; ++i) {
        instance->setNormalized("Gain", i / 500.0);
    }
    audio.join();
    processBlocks(*instance, 1);
    EXPECT_EQ(1.0F, instance->meters().value(1));
}

TEST_F(InstanceThreadedTest, InstancesOfOneModuleRunSideBySide) {
    std::vector<std::unique_ptr<Instance>> instances;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        instances.push_back(makeInstance());
        threads.emplace_back([instance = instances.back().get()] { processBlocks(*instance, 1000); });
    }
    for (int i = 0; i < 20; ++i) {
        makeInstance();
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (const auto& instance : instances) {
        EXPECT_EQ(1000 * kFrames, instance->position());
    }
}

} // namespace
} // namespace varno
