// Many instances of the effect at once and after each other.
#include "Tests/Integration/HostedEffect.h"
#include "Tests/Support/Signal.h"

#include <algorithm>

namespace varno::test {
namespace {

class Instances : public HostedEffect {};

// Processes one block of each channel in place.
void processBlock(Instance& instance, Signal& signal, std::size_t start, std::int32_t frames) {
    std::vector<float*> channels;
    for (std::vector<float>& channel : signal) {
        channels.push_back(channel.data() + start);
    }
    instance.process(channels.data(), channels.data(), frames);
}

TEST_F(Instances, doNotAffectEachOther) {
    constexpr std::size_t kInstances = 64;
    constexpr std::size_t kFrames = 1024;
    constexpr std::int32_t kBlock = 128;
    std::mt19937 random(20260104);
    std::vector<std::unique_ptr<Instance>> instances;
    std::vector<Signal> signals;
    std::vector<Signal> alone;
    for (std::size_t i = 0; i < kInstances; ++i) {
        const std::size_t channels = 1 + i % 2;
        const ParameterValues values = randomValues(random);
        signals.push_back(swell(channels, kFrames, static_cast<std::uint32_t>(i), 6.0));
        for (int copy = 0; copy < 2; ++copy) {
            instances.push_back(makeInstance(module(), static_cast<std::int32_t>(channels)));
            automate(*instances.back(), values);
        }
        alone.push_back(render(*instances.back(), signals.back()));
        instances.pop_back();
    }
    EXPECT_GE(module()->liveObjects(), static_cast<std::int32_t>(kInstances));
    for (std::size_t start = 0; start < kFrames; start += kBlock) {
        for (std::size_t i = 0; i < kInstances; ++i) {
            processBlock(*instances[i], signals[i], start, kBlock);
        }
    }
    for (std::size_t i = 0; i < kInstances; ++i) {
        ASSERT_EQ(firstDifference(alone[i], signals[i]), "") << "instance " << i;
    }
}

TEST_F(Instances, endInAnyOrder) {
    std::mt19937 random(20260105);
    std::vector<std::unique_ptr<Instance>> instances(24);
    const auto make = [this] { return makeInstance(module(), 2); };
    std::ranges::generate(instances, make);
    std::ranges::shuffle(instances, random);
    Signal signal = noise(2, 64, 1, 0.0);
    while (!instances.empty()) {
        instances.pop_back();
        for (const auto& instance : instances) {
            processBlock(*instance, signal, 0, 64);
        }
    }
    EXPECT_EQ(module()->liveObjects(), 0);
}

TEST_F(Instances, runAtEveryOfferedSampleRateAndNoOther) {
    for (const double sampleRateHz : kSampleRates) {
        const auto instance = makeInstance(module(), 2, sampleRateHz);
        render(*instance, swell(2, 2000, 1, 12.0));
    }
    for (const double sampleRateHz : {0.0, 8000.0, 15999.0, 384001.0}) {
        EXPECT_THROW(makeInstance(module(), 2, sampleRateHz), HostError) << sampleRateHz;
    }
    EXPECT_EQ(module()->liveObjects(), 0);
}

TEST_F(Instances, needAVariantOfTheirChannels) {
    for (const std::int32_t channels : {0, 3, 6}) {
        EXPECT_THROW(makeInstance(module(), channels), HostError) << channels;
    }
}

} // namespace
} // namespace varno::test
