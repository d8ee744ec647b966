#include "Play/LiveEffect.h"
#include "Tests/Host/FixtureTest.h"

#include <atomic>
#include <thread>

namespace varno {
namespace {

constexpr int kFrames = 32;

class LiveEffectThreaded : public FixtureTest {};

// A sound system that never pauses, while its rate changes again and again.
TEST_F(LiveEffectThreaded, ChangesItsRateBesideTheAudioThread) {
    constexpr int kChanges = 200;
    LiveEffect effect(module(), 2, 48'000.0);
    effect.instance().setNormalized("Gain", 0.25);
    std::atomic<bool> isDone{false};
    std::atomic<int> blocks{0};
    int wrong = 0;
    std::thread audio([&, process = effect.process()] {
        const std::vector<float> ones(kFrames, 1.0F);
        std::vector<float> out(kFrames);
        const float* inputs[] = {ones.data(), ones.data()};
        float* outputs[] = {out.data(), out.data()};
        while (!isDone) {
            process(inputs, outputs, kFrames);
            wrong += out.front() == 0.25F || out.front() == 0.0F ? 0 : 1;
            ++blocks;
        }
    });
    for (int i = 0; i < kChanges; ++i) {
        effect.setRate(i % 2 == 0 ? 96'000.0 : 48'000.0);
    }
    const int sofar = blocks;
    while (blocks == sofar) {
        std::this_thread::yield();
    }
    isDone = true;
    audio.join();
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(effect.instance().normalized("Gain"), 0.25);
}

// The fixture's gain is 0.5, so that every output lies between the processed and the bypassed sound.
TEST_F(LiveEffectThreaded, IsBypassedBesideTheAudioThread) {
    LiveEffect effect(module(), 2, 48'000.0);
    std::atomic<bool> isDone{false};
    std::atomic<float> last{0.0F};
    int wrong = 0;
    std::thread audio([&, process = effect.process()] {
        const std::vector<float> ones(kFrames, 1.0F);
        std::vector<float> out(kFrames);
        std::vector<float> right(kFrames);
        const float* inputs[] = {ones.data(), ones.data()};
        float* outputs[] = {out.data(), right.data()};
        while (!isDone) {
            process(inputs, outputs, kFrames);
            wrong += out.back() >= 0.5F && out.back() <= 1.0F ? 0 : 1;
            last = out.back();
        }
    });
    for (int i = 0; i < 20; ++i) {
        effect.setBypassed(true);
        while (last != 1.0F) {
            std::this_thread::yield();
        }
        effect.setBypassed(false);
        while (last != 0.5F) {
            std::this_thread::yield();
        }
    }
    isDone = true;
    audio.join();
    EXPECT_EQ(wrong, 0);
}

} // namespace
} // namespace varno
