// The editor, used by a person and a host while audio runs.
#include "Tests/Integration/Editor/EditorTest.h"

#include "Tests/Support/Signal.h"
#include "Tests/Support/TestRun.h"

#include <atomic>
#include <thread>

namespace varno::test {
namespace {

class EditorThreads : public OneEditorTest {
protected:
    // Processes buffers on a thread of its own until its end.
    class Audio {
    public:
        explicit Audio(Instance& instance)
            : mInstance(instance),
              mThread([this] { run(); }) {}
        Audio(const Audio&) = delete;
        Audio& operator=(const Audio&) = delete;
        ~Audio() {
            mIsOver = true;
            mThread.join();
        }

    private:
        void run() {
            constexpr std::int32_t kBlock = 128;
            const Signal input = swell(2, kBlock, 1, 6.0);
            Signal output = input;
            const float* inputs[2] = {input[0].data(), input[1].data()};
            float* outputs[2] = {output[0].data(), output[1].data()};
            while (!mIsOver) {
                mInstance.process(inputs, outputs, kBlock);
            }
        }

        Instance& mInstance;
        std::atomic<bool> mIsOver{false};
        std::thread mThread;
    };

    // One thing that a person or a host may do.
    void doSomething() {
        constexpr int kDeeds = 8;
        switch (random() % kDeeds) {
        case 0:
            pointer.press();
            break;
        case 1:
            pointer.release();
            break;
        case 2:
            automate(*instance, randomValues(random));
            break;
        case 3:
            saved = instance->save();
            break;
        case 4:
            instance->restore(saved);
            break;
        case 5:
            window->editor().highlight("Volume", random() % 2 == 0, AAX_eHighlightColor_Blue);
            break;
        default:
            pointer.move({static_cast<int>(random() % 690), static_cast<int>(random() % 390)});
            break;
        }
        loop.turn();
    }

    StoredChunk saved = instance->save();
    std::mt19937 random{20260205};
};

TEST_F(EditorThreads, everythingAtOnce) {
    const std::chrono::seconds length(testScale() > 1 ? 60 : 5);
    const auto end = std::chrono::steady_clock::now() + length;
    {
        const Audio audio(*instance);
        for (int i = 1; std::chrono::steady_clock::now() < end; ++i) {
            doSomething();
            constexpr int kReopen = 200;
            if (i % kReopen == 0) {
                window->close();
                window = open(*instance);
            }
        }
        const std::int64_t position = instance->position();
        EXPECT_TRUE(loop.await([&] { return instance->position() > position; })) << "audio stands still";
    }
    pointer.releaseAll();
    loop.turn();
    loop.turn();
    const double before = instance->normalized("HP");
    click(*window, "HP");
    EXPECT_NE(instance->normalized("HP"), before) << "the editor no longer listens";
}

} // namespace
} // namespace varno::test
