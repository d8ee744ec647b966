// Instances in one call, each with a state, packets and buffers of its own, as a host has them. Neighbours
// are processed side by side; what is measured of a thousand is memory too, since they fit into no
// first-level cache.
#include "Benchmarks/Music.h"
#include "Benchmarks/Way.h"

#include <memory>
#include <vector>

namespace varno::bench {
namespace {

constexpr std::int32_t kCrowdBufferFrames = 64;

// All hear the same buffer of the music, so that nothing but their number makes a difference.
class Crowd {
public:
    Crowd(std::size_t channels, std::size_t count)
        : mChannels(channels) {
        for (std::size_t i = 0; i < count; ++i) {
            Member& member = *mMembers.emplace_back(std::make_unique<Member>(channels));
            member.instance.set(musicSettings());
            member.instance.attach(member.signal.inputs(), member.signal.outputs(), kCrowdBufferFrames);
            mContexts.push_back(&member.instance.context());
        }
    }

    template<Way kWay>
    void process() {
        if constexpr (kWay == Way::kProduct) {
            const auto routine = mChannels == 1 ? &DemoGain_AlgorithmProcessFunction<1, 1>
                                                : &DemoGain_AlgorithmProcessFunction<2, 2>;
            routine(mContexts.data(), mContexts.data() + mContexts.size());
            benchmark::ClobberMemory();
        } else {
            for (const auto& member : mMembers) {
                processBuffer<kWay>(member->instance, member->signal);
            }
        }
    }

private:
    struct Member {
        explicit Member(std::size_t channels)
            : instance(channels, kRate),
              input(loudBuffer(channels)) {}

        test::AlgInstance instance;
        test::Signal input;
        LoopedSignal signal{input, kCrowdBufferFrames};
    };

    // From the first stroke of the drum.
    static test::Signal loudBuffer(std::size_t channels) {
        constexpr std::ptrdiff_t kStart = 256;
        test::Signal buffer;
        for (const std::vector<float>& channel : music(channels)) {
            buffer.emplace_back(channel.begin() + kStart, channel.begin() + kStart + kCrowdBufferFrames);
        }
        return buffer;
    }

    std::size_t mChannels;
    std::vector<std::unique_ptr<Member>> mMembers;
    std::vector<SDemoGain_Alg_Context*> mContexts;
};

template<Way kWay>
void instances(benchmark::State& state) {
    if (!canMeasure<kWay>(state)) {
        return;
    }
    Crowd crowd(static_cast<std::size_t>(state.range(0)), static_cast<std::size_t>(state.range(1)));
    for ([[maybe_unused]] auto _ : state) {
        crowd.process<kWay>();
    }
    countFrames(state, state.range(1) * kCrowdBufferFrames);
}

// One, as many as a mixer has channels, and as many as fit into no cache.
void channelsAndCount(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgNames({"channels", "count"})->Args({1, 16})->Args({2, 16})->Args({2, 1})->Args({2, 1000});
}

BENCHMARK(instances<Way::kProduct>)->Name("instances/product")->Apply(channelsAndCount);
BENCHMARK(instances<Way::kLiteral>)->Name("instances/literal")->Apply(channelsAndCount);
BENCHMARK(instances<Way::kCopy>)->Name("instances/copy")->Apply(channelsAndCount);

} // namespace
} // namespace varno::bench
