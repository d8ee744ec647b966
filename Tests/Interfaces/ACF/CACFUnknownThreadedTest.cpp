#include "ACF/CACFUnknown.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace varno {
namespace {

constexpr int kThreads = 4;
constexpr int kRounds = 20000;

// Runs `work` on several threads that start together.
template<class Work>
void onSeveralThreads(Work work) {
    std::atomic<bool> go{false};
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&] {
            go.wait(false);
            work();
        });
    }
    go = true;
    go.notify_all();
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST(CACFUnknownThreadedTest, ReferencesAreCountedAtomically) {
    auto* object = new CACFUnknown;
    object->InternalAddRef();
    onSeveralThreads([object] {
        for (int i = 0; i < kRounds; ++i) {
            object->InternalAddRef();
            object->InternalAddRef();
            object->InternalRelease();
            object->InternalRelease();
        }
    });
    EXPECT_EQ(object->InternalRelease(), 0U);
}

TEST(CACFUnknownThreadedTest, LiveObjectsAreCountedAtomically) {
    const std::int32_t before = CACFUnknown::GetActiveObjectCount();
    onSeveralThreads([] {
        for (int i = 0; i < kRounds / 10; ++i) {
            auto* object = new CACFUnknown;
            object->InternalAddRef();
            object->InternalRelease();
        }
    });
    EXPECT_EQ(CACFUnknown::GetActiveObjectCount(), before);
}

TEST(CACFUnknownThreadedTest, ExactlyOneOfManyReleasesDestroys) {
    for (int round = 0; round < 200; ++round) {
        auto* object = new CACFUnknown;
        for (int i = 0; i < kThreads; ++i) {
            object->InternalAddRef();
        }
        std::atomic<int> last{0};
        onSeveralThreads([&] { last += object->InternalRelease() == 0 ? 1 : 0; });
        EXPECT_EQ(last, 1);
    }
}

} // namespace
} // namespace varno
