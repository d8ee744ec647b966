// Many instances in one call, each with a state, packets and buffers of its own, as a host has them: what is
// measured beside the routine itself is memory, since a thousand of them fit into no first-level cache.
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
    explicit Crowd(std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            Member& member = *mMembers.emplace_back(std::make_unique<Member>());
            member.instance.set(musicSettings());
            member.instance.attach(member.signal.inputs(), member.signal.outputs(), kCrowdBufferFrames);
            mContexts.push_back(&member.instance.context());
        }
    }

    template<Way kWay>
    void process() {
        if constexpr (kWay == Way::kProduct) {
            DemoGain_AlgorithmProcessFunction<2, 2>(mContexts.data(), mContexts.data() + mContexts.size());
            benchmark::ClobberMemory();
        } else {
            for (const auto& member : mMembers) {
                processBuffer<kWay>(member->instance, member->signal);
            }
        }
    }

private:
    struct Member {
        test::AlgInstance instance{2, kRate};
        test::Signal input = loudBuffer();
        LoopedSignal signal{input, kCrowdBufferFrames};
    };

    // From the first stroke of the drum.
    static test::Signal loudBuffer() {
        constexpr std::ptrdiff_t kStart = 256;
        test::Signal buffer;
        for (const std::vector<float>& channel : music(2)) {
            buffer.emplace_back(channel.begin() + kStart, channel.begin() + kStart + kCrowdBufferFrames);
        }
        return buffer;
    }

    std::vector<std::unique_ptr<Member>> mMembers;
    std::vector<SDemoGain_Alg_Context*> mContexts;
};

template<Way kWay>
void instances(benchmark::State& state) {
    if (!canMeasure<kWay>(state)) {
        return;
    }
    Crowd crowd(static_cast<std::size_t>(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        crowd.process<kWay>();
    }
    countFrames(state, state.range(0) * kCrowdBufferFrames);
}

void oneAndMany(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgName("count")->Arg(1)->Arg(1000);
}

BENCHMARK(instances<Way::kProduct>)->Name("instances/product")->Apply(oneAndMany);
BENCHMARK(instances<Way::kLiteral>)->Name("instances/literal")->Apply(oneAndMany);
BENCHMARK(instances<Way::kCopy>)->Name("instances/copy")->Apply(oneAndMany);

} // namespace
} // namespace varno::bench
