#include "Render/Workers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <latch>
#include <mutex>
#include <new>
#include <set>
#include <system_error>
#include <thread>
#include <vector>

namespace varno::test {
namespace {

constexpr std::size_t kPieces = 20;

// What was done, by piece, and by how many threads.
class WorkersTest : public testing::Test {
protected:
    // Work that always succeeds.
    Work plainWork() {
        return {[this](std::size_t piece) {
                    done(piece);
                    return true;
                },
                [this](std::size_t piece) { mRefused.push_back(piece); }};
    }
    void done(std::size_t piece) {
        const std::lock_guard lock(mMutex);
        mDone.push_back(piece);
        mThreads.insert(std::this_thread::get_id());
    }
    void expectEachDoneOnce() const {
        EXPECT_EQ(mDone.size(), kPieces);
        EXPECT_EQ(std::set<std::size_t>(mDone.begin(), mDone.end()).size(), kPieces);
        EXPECT_TRUE(mRefused.empty());
    }

    std::mutex mMutex;
    std::vector<std::size_t> mDone;
    std::vector<std::size_t> mRefused;
    std::set<std::thread::id> mThreads;
};

TEST_F(WorkersTest, OneThreadKeepsTheOrder) {
    runWorkers(kPieces, 1, plainWork());
    for (std::size_t i = 0; i < kPieces; ++i) {
        EXPECT_EQ(mDone.at(i), i);
    }
    EXPECT_EQ(mThreads, std::set{std::this_thread::get_id()});
}

TEST_F(WorkersTest, SeveralThreadsWorkAtTheSameTime) {
    std::latch allAtWork(3);
    Work work = plainWork();
    work.attempt = [&](std::size_t piece) {
        if (piece < 3) {
            allAtWork.arrive_and_wait();
        }
        done(piece);
        return true;
    };
    runWorkers(kPieces, 3, work);
    expectEachDoneOnce();
    EXPECT_EQ(mThreads.size(), 3U);
}

TEST_F(WorkersTest, NoMoreThreadsThanPieces) {
    std::size_t started = 0;
    runWorkers(2, 100, plainWork(), [&](const std::function<void()>& run) {
        ++started;
        return std::jthread(run);
    });
    EXPECT_EQ(started, 1U) << "the calling thread is the other";
    runWorkers(0, 100, plainWork());
    EXPECT_EQ(mDone.size(), 2U);
}

TEST_F(WorkersTest, RefusedThreadsLeaveTheWorkToTheOthers) {
    const std::vector<std::function<void()>> refusals = {
        [] { throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again)); },
        [] { throw std::bad_alloc(); },
    };
    for (const auto& refusal : refusals) {
        for (const std::size_t granted : {0U, 2U}) {
            mDone.clear();
            std::size_t started = 0;
            runWorkers(kPieces, 8, plainWork(), [&](const std::function<void()>& run) {
                if (started++ == granted) {
                    refusal();
                }
                return std::jthread(run);
            });
            expectEachDoneOnce();
            EXPECT_EQ(started, granted + 1) << "nothing is tried after a refusal";
        }
    }
}

// Memory for one render at a time.
TEST_F(WorkersTest, RefusedMemoryLeavesTheWorkToTheOthers) {
    std::mutex memory;
    std::atomic<int> attempts{0};
    std::atomic<int> refusals{0};
    std::latch bothAtWork(2);
    Work work = plainWork();
    work.attempt = [&](std::size_t piece) {
        const std::unique_lock taken(memory, std::try_to_lock);
        if (++attempts <= 2) {
            bothAtWork.arrive_and_wait();
        }
        if (!taken.owns_lock()) {
            ++refusals;
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2)); // a thread that went on would be refused
        done(piece);
        return true;
    };
    runWorkers(kPieces, 2, work);
    expectEachDoneOnce();
    EXPECT_EQ(refusals, 1) << "the thread has ended";
}

// Each of two threads had what the other needed.
TEST_F(WorkersTest, ThreadsThatAreAllRefusedLeaveOneThatTriesAgain) {
    std::atomic<int> attempts{0};
    std::latch bothAtWork(2);
    Work work = plainWork();
    work.attempt = [&](std::size_t piece) {
        if (++attempts <= 2) {
            bothAtWork.arrive_and_wait();
            return false;
        }
        done(piece);
        return true;
    };
    runWorkers(kPieces, 2, work);
    expectEachDoneOnce();
    EXPECT_EQ(mThreads.size(), 1U);
}

TEST_F(WorkersTest, ARefusedPartIsNotTheWholePiece) {
    std::vector<int> todo = {1, 2, 3};
    Work work = plainWork();
    work.attempt = [&](std::size_t) {
        for (; !todo.empty(); todo.erase(todo.begin())) {
            if (todo.front() == 2) {
                return false;
            }
            done(static_cast<std::size_t>(todo.front()));
        }
        return true;
    };
    work.refuse = [&](std::size_t piece) {
        mRefused.push_back(piece);
        todo.erase(todo.begin());
    };
    runWorkers(1, 1, work);
    EXPECT_EQ(mDone, (std::vector<std::size_t>{1, 3}));
    EXPECT_EQ(mRefused, std::vector<std::size_t>{0});
}

TEST_F(WorkersTest, TheLastThreadRefusesAndGoesOn) {
    Work work = plainWork();
    work.attempt = [&](std::size_t piece) {
        if (piece % 2 == 1) {
            return std::ranges::find(mRefused, piece) != mRefused.end(); // only the last thread refuses
        }
        done(piece);
        return true;
    };
    for (const std::size_t threads : {1U, 4U}) {
        mDone.clear();
        mRefused.clear();
        runWorkers(kPieces, threads, work);
        EXPECT_EQ(std::set<std::size_t>(mDone.begin(), mDone.end()).size(), kPieces / 2);
        EXPECT_EQ(std::set<std::size_t>(mRefused.begin(), mRefused.end()).size(), kPieces / 2);
        EXPECT_EQ(mDone.size() + mRefused.size(), kPieces);
    }
}

} // namespace
} // namespace varno::test
