// The routine over music in buffers of several lengths.
#include "Benchmarks/Music.h"
#include "Benchmarks/Way.h"

namespace varno::bench {
namespace {

template<Way kWay>
void routine(benchmark::State& state) {
    if (!canMeasure<kWay>(state)) {
        return;
    }
    const auto channels = static_cast<std::size_t>(state.range(0));
    test::AlgInstance instance(channels, kRate);
    instance.set(musicSettings());
    LoopedSignal signal(music(channels), static_cast<std::int32_t>(state.range(1)));
    for ([[maybe_unused]] auto _ : state) {
        processBuffer<kWay>(instance, signal);
        signal.next();
    }
    countFrames(state, signal.bufferFrames());
}

void channelsAndFrames(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgNames({"channels", "frames"})->ArgsProduct({{1, 2}, {512, 64, 32}});
}

BENCHMARK(routine<Way::kProduct>)->Name("routine/product")->Apply(channelsAndFrames);
BENCHMARK(routine<Way::kLiteral>)->Name("routine/literal")->Apply(channelsAndFrames);
BENCHMARK(routine<Way::kCopy>)->Name("routine/copy")->Apply(channelsAndFrames);

} // namespace
} // namespace varno::bench
