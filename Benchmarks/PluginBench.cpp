// What lies between an LV2 host and the routine: a run of the plug-in beside the bare routine, in one run.
#include "Benchmarks/Music.h"
#include "Benchmarks/Way.h"
#include "Tests/Formats/LV2/HostedPlugin.h"

namespace varno::bench {
namespace {

test::PortValues portValues(const test::AlgParameters& p) {
    return {{"gain", p.gain},   {"hp", p.highPass}, {"band", p.band},     {"atk", p.attack},
            {"rls", p.release}, {"uk", p.uk},       {"volume", p.volume}, {"hot", p.hot},
            {"ratio", p.ratio}, {"mix", p.mix},     {"hsw", p.harmonics}, {"linksw", p.link}};
}

// The plug-in, enabled or bypassed by the host.
void plugin(benchmark::State& state, float enabled) {
    if (!canMeasure<Way::kProduct>(state)) {
        return;
    }
    const auto channels = static_cast<std::size_t>(state.range(0));
    test::HostedPlugin hosted(channels, kRate);
    hosted.set(portValues(musicSettings()));
    hosted.port("enabled") = enabled;
    LoopedSignal signal(music(channels), static_cast<std::int32_t>(state.range(1)));
    for ([[maybe_unused]] auto _ : state) {
        hosted.process(signal.inputs(), signal.outputs(), signal.bufferFrames());
        benchmark::ClobberMemory();
        signal.next();
    }
    countFrames(state, signal.bufferFrames());
}

// A stereo plug-in at a factor of oversampling.
void quality(benchmark::State& state) {
    if (!canMeasure<Way::kProduct>(state)) {
        return;
    }
    constexpr std::int32_t kQualityFrames = 512;
    test::HostedPlugin hosted(2, kRate);
    hosted.set(portValues(musicSettings()));
    hosted.port("quality") = static_cast<float>(state.range(0));
    LoopedSignal signal(music(2), kQualityFrames);
    for ([[maybe_unused]] auto _ : state) {
        hosted.process(signal.inputs(), signal.outputs(), signal.bufferFrames());
        benchmark::ClobberMemory();
        signal.next();
    }
    countFrames(state, signal.bufferFrames());
}

void routine(benchmark::State& state) {
    if (!canMeasure<Way::kProduct>(state)) {
        return;
    }
    const auto channels = static_cast<std::size_t>(state.range(0));
    test::AlgInstance instance(channels, kRate);
    instance.set(musicSettings());
    LoopedSignal signal(music(channels), static_cast<std::int32_t>(state.range(1)));
    for ([[maybe_unused]] auto _ : state) {
        processBuffer<Way::kProduct>(instance, signal);
        signal.next();
    }
    countFrames(state, signal.bufferFrames());
}

void channelsAndFrames(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgNames({"channels", "frames"})->ArgsProduct({{1, 2}, {512, 64}});
}

BENCHMARK_CAPTURE(plugin, enabled, 1.0F)->Name("plugin/enabled")->Apply(channelsAndFrames);
BENCHMARK_CAPTURE(plugin, bypassed, 0.0F)->Name("plugin/bypassed")->Apply(channelsAndFrames);
BENCHMARK(quality)->Name("plugin/quality")->ArgName("factor")->Arg(1)->Arg(2)->Arg(4)->Arg(8);
BENCHMARK(routine)->Name("plugin/routine")->Apply(channelsAndFrames);

} // namespace
} // namespace varno::bench
