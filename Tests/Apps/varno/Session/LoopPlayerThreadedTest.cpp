#include "Session/LoopPlayer.h"
#include "Tests/Support/Eventually.h"

#include <gtest/gtest.h>

#include <csignal>

namespace varno::test {
namespace {

TEST(ClockedPlayer, PullsFromAThreadOfItsOwnUntilItsEnd) {
    std::atomic<int> blocks{0};
    std::atomic<std::thread::id> thread;
    std::atomic<bool> takesSignals{true};
    {
        const ClockedPlayer player({48'000.0, 2, 64}, [&](float* const* channels, int frames) {
            channels[1][frames - 1] = 1.0F;
            thread = std::this_thread::get_id();
            sigset_t blocked;
            pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
            takesSignals = sigismember(&blocked, SIGTERM) == 0 || sigismember(&blocked, SIGINT) == 0;
            ++blocks;
        });
        EXPECT_TRUE(eventually([&] { return blocks >= 3; }));
    }
    EXPECT_NE(thread.load(), std::this_thread::get_id());
    EXPECT_FALSE(takesSignals); // they are for the thread that waits for them
    const int atTheEnd = blocks;
    EXPECT_FALSE(eventually([&] { return blocks != atTheEnd; }, std::chrono::milliseconds(20)));
    sigset_t blocked;
    pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
    EXPECT_EQ(sigismember(&blocked, SIGTERM), 0);
}

TEST(ClockedPlayer, TakesAboutTheTimeOfItsAudio) {
    using Clock = std::chrono::steady_clock;
    std::atomic<int> blocks{0};
    const auto start = Clock::now();
    const ClockedPlayer player({10'000.0, 1, 100}, [&](float* const*, int) { ++blocks; });
    ASSERT_TRUE(eventually([&] { return blocks >= 6; }));
    // The sixth block of 10 ms comes no earlier; how much later depends on the machine.
    EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(50));
}

} // namespace
} // namespace varno::test
