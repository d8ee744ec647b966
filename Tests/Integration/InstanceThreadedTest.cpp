// The audio thread and the main thread of a host on the same instances.
#include "Tests/Integration/HostedEffect.h"
#include "Tests/Support/Signal.h"

#include <atomic>
#include <cmath>
#include <thread>

namespace varno::test {
namespace {

class InstanceThreads : public HostedEffect {
protected:
    // Processes buffers on a thread of its own until stopped.
    class AudioRunner {
    public:
        explicit AudioRunner(Instance& instance)
            : mInstance(instance),
              mThread([this] { run(); }) {}
        AudioRunner(const AudioRunner&) = delete;
        AudioRunner& operator=(const AudioRunner&) = delete;
        ~AudioRunner() { stop(); }

        // Waits until a further buffer has been processed.
        void awaitBuffer() const {
            const std::int64_t before = mInstance.position();
            while (mInstance.position() == before) {
                std::this_thread::yield();
            }
        }
        bool stop() {
            mIsOver = true;
            if (mThread.joinable()) {
                mThread.join();
            }
            return mIsFinite;
        }

    private:
        void run() {
            const auto channels = static_cast<std::size_t>(mInstance.setup().channels);
            const Signal input = swell(channels, 4096, 1, 6.0);
            Signal output = input;
            for (std::size_t start = 0; !mIsOver; start = (start + 128) % 4096) {
                const float* inputs[2] = {input[0].data() + start, input[channels - 1].data() + start};
                float* outputs[2] = {output[0].data() + start, output[channels - 1].data() + start};
                mInstance.process(inputs, outputs, 128);
                for (const std::vector<float>& channel : output) {
                    mIsFinite = mIsFinite && std::isfinite(channel[start]);
                }
            }
        }

        Instance& mInstance;
        std::atomic<bool> mIsOver{false};
        bool mIsFinite = true;
        std::thread mThread;
    };
};

TEST_F(InstanceThreads, parametersStateAndMetersWhileAudioRuns) {
    std::mt19937 random(20260107);
    const auto instance = makeInstance(module());
    AudioRunner audio(*instance);
    StoredChunk saved = instance->save();
    for (int i = 0; i < 200; ++i) {
        automate(*instance, randomValues(random));
        instance->requestNormalized("Hot", i % 2);
        instance->idle();
        if (i % 5 == 0) {
            saved = instance->save();
        } else if (i % 5 == 4) {
            instance->restore(saved);
            EXPECT_TRUE(instance->equals(saved));
        }
        for (std::size_t tap = 0; tap < instance->meters().ids().size(); ++tap) {
            EXPECT_TRUE(std::isfinite(instance->meters().value(tap)));
            instance->meters().clearPeak(tap);
        }
        instance->timer();
    }
    audio.awaitBuffer();
    EXPECT_TRUE(audio.stop());
}

TEST_F(InstanceThreads, theLastValueIsHeardInTheNextBuffer) {
    const auto instance = makeInstance(module());
    const auto still = makeInstance(module());
    std::mt19937 random(20260108);
    {
        AudioRunner audio(*instance);
        for (int i = 0; i < 100; ++i) {
            automate(*instance, randomValues(random));
        }
        audio.awaitBuffer();
    }
    automate(*still, valuesOf(*instance));
    instance->reset();
    const Signal input = swell(2, 1000, 2, 6.0);
    EXPECT_EQ(firstDifference(render(*still, input), render(*instance, input)), "");
}

TEST_F(InstanceThreads, instancesComeAndGoWhileOthersRun) {
    const auto first = makeInstance(module(), 1);
    const auto second = makeInstance(module(), 2);
    AudioRunner firstAudio(*first);
    AudioRunner secondAudio(*second);
    for (int i = 0; i < 20; ++i) {
        const auto other = makeInstance(module(), 1 + i % 2);
        other->restore(first->save());
        render(*other, noise(static_cast<std::size_t>(other->setup().channels), 300, 1, 0.0));
    }
    EXPECT_TRUE(firstAudio.stop());
    EXPECT_TRUE(secondAudio.stop());
}

} // namespace
} // namespace varno::test
