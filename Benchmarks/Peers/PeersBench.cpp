// Ours and comparable effects, as LV2 hosts run them, over the same music: at other rates the same samples.
// The caller's floating-point mode flushes denormals to zero, as that of most hosts does.
#include "Alg/DemoGain_DenormalMode.h"
#include "Benchmarks/LoopedSignal.h"
#include "Benchmarks/Music.h"
#include "Benchmarks/Peers/LoadedEffect.h"
#include "Benchmarks/Way.h"

#include <cmath>
#include <exception>
#include <string>

namespace varno::bench {
namespace {

constexpr std::int64_t kRates[] = {48000, 96000};
constexpr std::int64_t kBufferFrames[] = {64, 512, 1024};

// Seconds until all smoothing of controls has settled.
constexpr double kSettlingS = 0.5;

[[gnu::noinline]] void runNext(LoadedEffect& effect, LoopedSignal& signal) {
    effect.run(signal.inputs());
    signal.next();
}

// Whether it changes what it hears, as an effect that works does.
bool isAtWork(const LoadedEffect& effect, const LoopedSignal& signal) {
    const auto frames = static_cast<std::size_t>(signal.bufferFrames());
    for (std::size_t frame = 0; frame < frames; ++frame) {
        const float output = effect.output(0)[frame];
        if (std::isfinite(output) && output != signal.inputs()[0][frame] && output != 0.0F) {
            return true;
        }
    }
    return false;
}

void measure(benchmark::State& state, const Peer& peer) {
    const auto rate = static_cast<double>(state.range(0));
    LoopedSignal signal(music(2), static_cast<std::int32_t>(state.range(1)));
    LoadedEffect effect(peer, rate, signal.bufferFrames());
    const DemoGain_DenormalMode audioMode;
    bool wasAtWork = false;
    const auto settlingFrames = static_cast<std::int64_t>(kSettlingS * rate);
    for (std::int64_t done = 0; done < settlingFrames; done += signal.bufferFrames()) {
        effect.run(signal.inputs());
        wasAtWork = wasAtWork || isAtWork(effect, signal);
        signal.next();
    }
    if (!wasAtWork) {
        state.SkipWithError("it leaves the music as it is");
        return;
    }
    for ([[maybe_unused]] auto _ : state) {
        runNext(effect, signal);
    }
    countFrames(state, signal.bufferFrames());
    state.SetLabel(effect.channels() == 1 ? "mono" : "stereo");
}

void peer(benchmark::State& state, const Peer* measured) {
    try {
        measure(state, *measured);
    } catch (const std::exception& error) {
        state.SkipWithError(error.what());
    }
}

// The routine by itself, from which the price of being an LV2 effect is told.
void bareRoutine(benchmark::State& state) {
    test::AlgInstance instance(2, static_cast<double>(state.range(0)));
    instance.set(musicSettings());
    LoopedSignal signal(music(2), static_cast<std::int32_t>(state.range(1)));
    for ([[maybe_unused]] auto _ : state) {
        processBuffer<Way::kProduct>(instance, signal);
        signal.next();
    }
    countFrames(state, signal.bufferFrames());
    state.SetLabel("stereo");
}

void withArguments(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgNames({"rate", "frames"})
        ->ArgsProduct(
            {{std::begin(kRates), std::end(kRates)}, {std::begin(kBufferFrames), std::end(kBufferFrames)}});
}

[[maybe_unused]] const bool kAreRegistered = [] {
    const auto add = [](const Peer& measured) {
        withArguments(
            benchmark::RegisterBenchmark((std::string("peer/") + measured.name).c_str(), peer, &measured));
    };
    withArguments(benchmark::RegisterBenchmark("peer/routine alone", bareRoutine));
    add(kOwnStereo);
    add(kOwnMono);
    for (const Peer& measured : kPeers) {
        add(measured);
    }
    return true;
}();

} // namespace
} // namespace varno::bench
