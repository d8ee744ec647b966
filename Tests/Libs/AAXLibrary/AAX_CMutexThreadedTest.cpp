#include "AAX_CMutex.h"
#include "AAX_StLock_Guard.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace varno {
namespace {

TEST(AAX_CMutexThreadedTest, OneThreadAtATimeIsInside) {
    constexpr int kThreads = 4;
    constexpr int kRounds = 5000;
    AAX_CMutex mutex;
    std::int64_t visits = 0; // Deliberately not atomic: the lock protects it.
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < kRounds; ++round) {
                const AAX_StLock_Guard outer(mutex);
                const AAX_StLock_Guard inner(mutex);
                ++visits;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(visits, std::int64_t{kThreads} * kRounds);
}

TEST(AAX_CMutexThreadedTest, UnlocksOfOtherThreadsDoNotReleaseIt) {
    AAX_CMutex mutex;
    std::int64_t written = 0;
    ASSERT_TRUE(mutex.Lock());
    std::atomic<bool> strangerIsThere{false};
    std::thread stranger([&] {
        mutex.Unlock();
        strangerIsThere = true;
        strangerIsThere.notify_all();
        EXPECT_TRUE(mutex.Lock());
        EXPECT_EQ(written, 42) << "the stranger came in before the owner had left";
        mutex.Unlock();
    });
    strangerIsThere.wait(false);
    written = 42;
    mutex.Unlock();
    stranger.join();
}

} // namespace
} // namespace varno
