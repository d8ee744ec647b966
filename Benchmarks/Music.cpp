#include "Benchmarks/Music.h"

#include "Render/DemoLoop.h"

namespace varno::bench {
namespace {

constexpr std::ptrdiff_t kBarFrames = kDemoLoopFrames / 4;
static_assert(kRate == kDemoLoopRateHz);

test::Signal firstBar(std::size_t channels) {
    const StereoSamples loop = makeDemoLoop();
    test::Signal bar;
    for (std::size_t channel = 0; channel < channels; ++channel) {
        bar.emplace_back(loop[channel].begin(), loop[channel].begin() + kBarFrames);
    }
    return bar;
}

} // namespace

const test::Signal& music(std::size_t channels) {
    static const test::Signal mono = firstBar(1);
    static const test::Signal stereo = firstBar(2);
    return channels == 1 ? mono : stereo;
}

test::AlgParameters musicSettings() {
    test::AlgParameters settings;
    settings.hot = 0.4F;
    return settings;
}

} // namespace varno::bench
