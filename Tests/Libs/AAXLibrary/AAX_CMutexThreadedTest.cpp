#include "AAX_CMutex.h"
#include "AAX_StLock_Guard.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <ctime>
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

double threadSeconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

TEST(AAX_CMutexThreadedTest, WaitingTakesNoProcessorTime) {
    constexpr std::chrono::milliseconds kHeld{300};
    constexpr double kWaitingTakes = 0.1; // seconds; a loop would take as long as the lock is held
    AAX_CMutex mutex;
    ASSERT_TRUE(mutex.Lock());
    std::atomic<bool> isWaiting{false};
    double used = 0.0;
    std::thread other([&] {
        const double before = threadSeconds();
        isWaiting = true;
        isWaiting.notify_all();
        EXPECT_TRUE(mutex.Lock());
        used = threadSeconds() - before;
        mutex.Unlock();
    });
    isWaiting.wait(false);
    std::this_thread::sleep_for(kHeld);
    mutex.Unlock();
    other.join();
    EXPECT_LT(used, kWaitingTakes);
}

// Each of several waiting threads comes in once the lock is free, in whatever order.
TEST(AAX_CMutexThreadedTest, EveryWaitingThreadIsWoken) {
    constexpr int kThreads = 8;
    constexpr int kRounds = 50;
    for (int round = 0; round < kRounds; ++round) {
        AAX_CMutex mutex;
        ASSERT_TRUE(mutex.Lock());
        std::atomic<int> inside{0};
        std::vector<std::thread> threads;
        for (int i = 0; i < kThreads; ++i) {
            threads.emplace_back([&] {
                const AAX_StLock_Guard guard(mutex);
                ++inside;
            });
        }
        mutex.Unlock();
        for (std::thread& thread : threads) {
            thread.join();
        }
        EXPECT_EQ(inside, kThreads);
    }
}

} // namespace
} // namespace varno
