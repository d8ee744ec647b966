// Many instances of the effect at once and after each other.
#include "Host/InstanceGroup.h"
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

// In groups of one variant: equal and different lengths, settings that change, members that feed others.
TEST_F(Instances, haveTheSameBitsInAGroup) {
    constexpr std::size_t kInstances = 16;
    constexpr std::size_t kFrames = 3000;
    constexpr std::size_t kLongest = 300; // more than an instance takes at a time
    for (const std::int32_t channels : {1, 2}) {
        std::mt19937 random(20260106);
        const auto below = [&](std::size_t limit) { return static_cast<std::uint32_t>(random()) % limit; };
        std::vector<std::unique_ptr<Instance>> grouped;
        std::vector<std::unique_ptr<Instance>> alone;
        std::vector<Instance*> members;
        Signal audio = swell(kInstances * static_cast<std::size_t>(channels), kFrames, 7, 0.0);
        Signal expected = audio;
        for (std::size_t i = 0; i < kInstances; ++i) {
            for (auto* instances : {&grouped, &alone}) {
                instances->push_back(makeInstance(module(), channels, i < 12 ? 48000.0 : 96000.0));
            }
            members.push_back(grouped.back().get());
        }
        InstanceGroup group(members);
        std::size_t usual = 64;
        for (std::size_t start = 0; start + kLongest <= kFrames; start += usual) {
            usual = below(4) == 0 ? kLongest : 64;
            std::vector<std::vector<float*>> in(kInstances);
            std::vector<std::vector<float*>> out(kInstances);
            std::vector<MemberBuffer> buffers;
            for (std::size_t i = 0; i < kInstances; ++i) {
                if (below(8) == 0) {
                    ParameterValues values = randomValues(random);
                    values["Gain"] *= 0.5; // 0 dB at most, so that members in a row stay finite
                    values["Volume"] *= 0.5;
                    automate(*grouped[i], values);
                    automate(*alone[i], values);
                }
                const std::size_t feeder = below(6) == 0 ? below(kInstances) : i;
                const std::size_t frames = below(10) == 0 ? below(usual + 1) : usual;
                const auto channelsOf = [&](Signal& signal, std::size_t instance) {
                    std::vector<float*> pointers;
                    for (std::size_t channel = 0; channel < static_cast<std::size_t>(channels); ++channel) {
                        pointers.push_back(
                            signal[instance * static_cast<std::size_t>(channels) + channel].data() + start);
                    }
                    return pointers;
                };
                in[i] = channelsOf(audio, feeder);
                out[i] = channelsOf(audio, i);
                buffers.push_back({in[i].data(), out[i].data(), static_cast<std::int32_t>(frames)});
                alone[i]->process(channelsOf(expected, feeder).data(), channelsOf(expected, i).data(),
                                  static_cast<std::int32_t>(frames));
            }
            group.process(buffers);
            ASSERT_EQ(firstDifference(expected, audio), "") << channels << " channels, from frame " << start;
        }
        for (std::size_t i = 0; i < kInstances; ++i) {
            EXPECT_EQ(alone[i]->position(), grouped[i]->position()) << i;
            for (std::size_t tap = 0; tap < eMeterTap_Count; ++tap) {
                EXPECT_EQ(alone[i]->meters().value(tap), grouped[i]->meters().value(tap)) << i;
            }
        }
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
