// A minute of silence after noise, and a minute of noise, in a thread that leaves denormals as they are:
// where the filters' fading states become denormal, every operation on them costs a hundred times as much.
#include "Alg/DemoGain_DenormalMode.h"
#include "Benchmarks/Music.h"
#include "Benchmarks/Way.h"
#include "Tests/Support/Signal.h"

namespace varno::bench {
namespace {

constexpr std::int32_t kBufferFrames = 512;
constexpr std::size_t kSecondFrames = 48000;
constexpr std::int64_t kMinuteFrames = 60 * static_cast<std::int64_t>(kSecondFrames);
constexpr std::int64_t kMinuteBuffers = kMinuteFrames / kBufferFrames;
static_assert(kMinuteBuffers * kBufferFrames == kMinuteFrames);

enum class Sound { kNoise, kSilence };

const test::Signal& noiseSecond() {
    static const test::Signal signal = test::noise(2, kSecondFrames, 20261, -6.0);
    return signal;
}

const test::Signal& secondOf(Sound sound) {
    static const test::Signal silent = test::silence(2, kSecondFrames);
    return sound == Sound::kNoise ? noiseSecond() : silent;
}

template<Way kWay>
void processBuffers(test::AlgInstance& instance, const test::Signal& second, std::int64_t buffers) {
    LoopedSignal signal(second, kBufferFrames);
    for (std::int64_t i = 0; i < buffers; ++i) {
        processBuffer<kWay>(instance, signal);
        signal.next();
    }
}

template<Way kWay, Sound kSound>
void minute(benchmark::State& state) {
    DemoGain_WriteFloatMode(kDemoGain_StartFloatMode);
    if (!canMeasure<kWay>(state)) {
        return;
    }
    test::AlgInstance instance(2, kRate);
    instance.set(musicSettings());
    processBuffers<kWay>(instance, noiseSecond(), kSecondFrames / kBufferFrames);
    const SDemoGain_Alg_State afterNoise = instance.state();
    for ([[maybe_unused]] auto _ : state) {
        instance.state() = afterNoise;
        processBuffers<kWay>(instance, secondOf(kSound), kMinuteBuffers);
    }
    countFrames(state, kMinuteFrames);
}

void inMilliseconds(benchmark::internal::Benchmark* benchmark) {
    benchmark->Unit(benchmark::kMillisecond);
}

BENCHMARK(minute<Way::kProduct, Sound::kNoise>)->Name("minute/product/noise")->Apply(inMilliseconds);
BENCHMARK(minute<Way::kProduct, Sound::kSilence>)->Name("minute/product/silence")->Apply(inMilliseconds);
BENCHMARK(minute<Way::kLiteral, Sound::kNoise>)->Name("minute/literal/noise")->Apply(inMilliseconds);
BENCHMARK(minute<Way::kLiteral, Sound::kSilence>)->Name("minute/literal/silence")->Apply(inMilliseconds);
BENCHMARK(minute<Way::kCopy, Sound::kNoise>)->Name("minute/copy/noise")->Apply(inMilliseconds);

} // namespace
} // namespace varno::bench
