// The dearest settings and signals beside typical ones. All pairs of 200 random settings and six signals are
// timed briefly once; the dearest of them are then measured like everything else, so that one that was only
// disturbed while it was timed does not count. Typical is the setting of median cost over music.
#include "Benchmarks/Music.h"
#include "Benchmarks/Way.h"
#include "Tests/Support/Signal.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace varno::bench {
namespace {

constexpr std::size_t kSettings = 200;
constexpr std::int32_t kBufferFrames = 512;
// Of each signal: a quarter of a second.
constexpr std::size_t kFrames = 24 * static_cast<std::size_t>(kBufferFrames);

struct NamedSignal {
    const char* name;
    test::Signal signal;
};

// A square wave; the second channel of opposite sign.
test::Signal squares(double levelDB) {
    constexpr std::size_t kHalfPeriodFrames = 240;
    const float level = test::amplitudeOf(levelDB);
    test::Signal signal = test::silence(2, kFrames);
    for (std::size_t frame = 0; frame < kFrames; ++frame) {
        const bool up = frame / kHalfPeriodFrames % 2 == 0;
        signal[0][frame] = up ? level : -level;
        signal[1][frame] = -signal[0][frame];
    }
    return signal;
}

test::Signal musicExcerpt() {
    test::Signal excerpt = music(2);
    for (std::vector<float>& channel : excerpt) {
        channel.resize(kFrames);
    }
    return excerpt;
}

// The six, then the music.
const std::vector<NamedSignal>& signals() {
    static const std::vector<NamedSignal> all = {{"noise", test::noise(2, kFrames, 20262, 0.0)},
                                                 {"sweep", test::sweep(2, kFrames, kRate)},
                                                 {"drums", test::drums(2, kFrames, kRate, 20263)},
                                                 {"silence after noise", test::silence(2, kFrames)},
                                                 {"full-scale squares", squares(0.0)},
                                                 {"+12 dBFS squares", squares(12.0)},
                                                 {"music", musicExcerpt()}};
    return all;
}

const std::vector<test::AlgParameters>& settings() {
    static const std::vector<test::AlgParameters> all = [] {
        std::mt19937 random(20264);
        std::vector<test::AlgParameters> drawn;
        std::generate_n(std::back_inserter(drawn), kSettings, [&] { return test::randomParameters(random); });
        return drawn;
    }();
    return all;
}

// A setting at work on a signal, begun with noise.
class Work {
public:
    Work(const test::AlgParameters& parameters, const NamedSignal& signal)
        : mParameters(&parameters),
          mNamed(&signal),
          mInstance(std::make_unique<test::AlgInstance>(2, kRate)),
          mSignal(std::make_unique<LoopedSignal>(signal.signal, kBufferFrames)) {
        mInstance->set(parameters);
        LoopedSignal beginning(signals().front().signal, kBufferFrames);
        processBuffer<Way::kProduct>(*mInstance, beginning);
    }

    // The whole signal once.
    template<Way kWay>
    void process() {
        for (std::size_t frame = 0; frame < kFrames; frame += static_cast<std::size_t>(kBufferFrames)) {
            processBuffer<kWay>(*mInstance, *mSignal);
            mSignal->next();
        }
    }

    void time() {
        const auto start = std::chrono::steady_clock::now();
        process<Way::kProduct>();
        mLeast = std::min(mLeast, std::chrono::steady_clock::now() - start);
    }

    // The shortest time so far: what disturbs only adds.
    std::chrono::steady_clock::duration least() const { return mLeast; }
    std::string text() const { return mNamed->name + (": " + test::textOf(*mParameters)); }

private:
    const test::AlgParameters* mParameters;
    const NamedSignal* mNamed;
    std::unique_ptr<test::AlgInstance> mInstance;
    std::unique_ptr<LoopedSignal> mSignal;
    std::chrono::steady_clock::duration mLeast = std::chrono::steady_clock::duration::max();
};

// All settings at work on the signals from `first` up to `last`, the dearest first.
std::vector<Work> timed(std::size_t first, std::size_t last) {
    constexpr int kRounds = 7;
    std::vector<Work> all;
    for (const test::AlgParameters& parameters : settings()) {
        for (std::size_t i = first; i < last; ++i) {
            all.emplace_back(parameters, signals()[i]);
        }
    }
    for (int round = 0; round < kRounds; ++round) {
        for (Work& work : all) {
            work.time();
        }
    }
    std::stable_sort(all.begin(), all.end(),
                     [](const Work& a, const Work& b) { return a.least() > b.least(); });
    return all;
}

Work& dearestWork(std::size_t rank) {
    static std::vector<Work> all = timed(0, signals().size() - 1);
    return all.at(rank);
}

Work& typicalWork() {
    static std::vector<Work> all = timed(signals().size() - 1, signals().size());
    return all.at(all.size() / 2);
}

template<Way kWay>
void measure(benchmark::State& state, Work& work) {
    for ([[maybe_unused]] auto _ : state) {
        work.process<kWay>();
    }
    state.SetLabel(work.text());
    countFrames(state, kFrames);
}

void dearest(benchmark::State& state) {
    measure<Way::kProduct>(state, dearestWork(static_cast<std::size_t>(state.range(0))));
}
BENCHMARK(dearest)->Name("settings/dearest")->ArgName("rank")->DenseRange(0, 7);

template<Way kWay>
void typical(benchmark::State& state) {
    measure<kWay>(state, typicalWork());
}
BENCHMARK(typical<Way::kProduct>)->Name("settings/typical");
BENCHMARK(typical<Way::kLiteral>)->Name("settings/typical_literal");
BENCHMARK(typical<Way::kCopy>)->Name("settings/typical_copy");

} // namespace
} // namespace varno::bench
