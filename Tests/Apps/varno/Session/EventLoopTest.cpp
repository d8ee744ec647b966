#include "Session/EventLoop.h"
#include "CommandLine/Interruption.h"
#include "Files/Transfer.h"
#include "Session/EditorSession.h"
#include "Tests/Apps/varno/Support/ErrorText.h"

#include <gtest/gtest.h>

#include <csignal>
#include <stdexcept>
#include <string>
#include <unistd.h>

namespace varno::test {
namespace {

using namespace std::chrono_literals;
using TimePoint = TimerQueue::TimePoint;

class TimerQueueTest : public testing::Test {
protected:
    void start(
        TimerQueue::Period period, const char& owner, const TimerQueue::Wake& then = [] {}) {
        mQueue.start(
            period, &owner,
            [this, &owner, then] {
                mCalls.push_back(owner);
                then();
            },
            mNow);
    }
    // Advances the time; each timer that is due is called.
    void pass(TimerQueue::Period time) {
        mNow += time;
        mQueue.runDue(mNow);
    }
    std::string calls() { return std::exchange(mCalls, {}); }

    TimerQueue mQueue;
    TimePoint mNow{1h};
    std::string mCalls;
    const char mA = 'a';
    const char mB = 'b';
};

TEST_F(TimerQueueTest, CallsEveryPeriod) {
    start(10ms, mA);
    EXPECT_EQ(mQueue.next(), mNow + 10ms);
    pass(9ms);
    EXPECT_EQ(calls(), "");
    pass(1ms);
    EXPECT_EQ(calls(), "a");
    pass(9ms);
    EXPECT_EQ(calls(), "");
    pass(1ms);
    EXPECT_EQ(calls(), "a");
}

TEST_F(TimerQueueTest, LateCallsDoNotMoveTheNextOnes) {
    const TimePoint begin = mNow;
    constexpr TimerQueue::Period kPeriod = TimerQueue::Period(1s) / 30;
    start(kPeriod, mA);
    for (int call = 1; call <= 30'000; ++call) {
        mNow = *mQueue.next();
        pass(7ms);
        ASSERT_EQ(mQueue.next(), begin + (call + 1) * kPeriod);
    }
}

TEST_F(TimerQueueTest, MissedTimesAreLeftOut) {
    start(10ms, mA);
    pass(35ms);
    EXPECT_EQ(calls(), "a");
    pass(4ms);
    EXPECT_EQ(calls(), "");
    pass(1ms);
    EXPECT_EQ(calls(), "a");
}

TEST_F(TimerQueueTest, AnOwnerHasOneTimer) {
    start(10ms, mA);
    start(20ms, mA);
    start(10ms, mB);
    pass(10ms);
    EXPECT_EQ(calls(), "b");
    pass(10ms);
    EXPECT_EQ(calls(), "ab");
    mQueue.stop(&mA);
    mQueue.stop(&mA);
    pass(20ms);
    EXPECT_EQ(calls(), "b");
}

TEST_F(TimerQueueTest, TimersComeAndGoInsideCalls) {
    start(10ms, mA, [this] {
        mQueue.stop(&mA);
        mQueue.stop(&mB);
        start(5ms, mA);
    });
    start(10ms, mB);
    pass(10ms);
    EXPECT_EQ(calls(), "a"); // b was due too, and was stopped
    pass(5ms);
    EXPECT_EQ(calls(), "a");
    pass(5ms);
    EXPECT_EQ(calls(), "a");
}

TEST_F(TimerQueueTest, ATimerMayStopAtItsOwnCall) {
    start(10ms, mA, [this] { mQueue.stop(&mA); });
    pass(10ms);
    pass(10ms);
    EXPECT_EQ(calls(), "a");
    EXPECT_EQ(mQueue.next(), std::nullopt);
}

TEST_F(TimerQueueTest, APeriodOfNothingIsTheShortest) {
    start(0ms, mA);
    EXPECT_EQ(mQueue.next(), mNow + TimerQueue::kShortestPeriod);
    start(-5ms, mA);
    EXPECT_EQ(mQueue.next(), mNow + TimerQueue::kShortestPeriod);
}

using namespace std::chrono_literals;

class Pipe {
public:
    Pipe() {
        int ends[2];
        if (::pipe(ends) != 0) {
            throw std::runtime_error("no pipe");
        }
        mOut = FileDescriptor(ends[0]);
        mIn = FileDescriptor(ends[1]);
    }
    int out() const { return mOut.get(); }
    void fill() const { ASSERT_EQ(::write(mIn.get(), "x", 1), 1); }
    void empty() const {
        char taken = 0;
        ASSERT_EQ(::read(out(), &taken, 1), 1);
    }
    void closeIn() { mIn.close(); }
    void closeOut() { mOut.close(); }

private:
    FileDescriptor mOut;
    FileDescriptor mIn;
};

class EventLoopTest : public testing::Test {
protected:
    // Ends the loop where a test would hang.
    EventLoopTest() {
        mLoop.startTimer(30s, &mPatience, [] { throw std::runtime_error("the loop hangs"); });
    }

    EventLoop mLoop;
    int mPatience = 0;
    int mOne = 0;
    int mOther = 0;
};

TEST_F(EventLoopTest, CallsWhoWatchesWhenThereIsSomethingToRead) {
    const Pipe pipe;
    int calls = 0;
    mLoop.watch(pipe.out(), &mOne, [&] {
        pipe.empty();
        if (++calls == 2) {
            mLoop.quit();
        } else {
            pipe.fill();
        }
    });
    pipe.fill();
    mLoop.run();
    EXPECT_EQ(calls, 2);
}

TEST_F(EventLoopTest, TheEndOfAPipeIsAnEvent) {
    Pipe pipe;
    mLoop.watch(pipe.out(), &mOne, [&] { mLoop.quit(); });
    pipe.closeIn();
    mLoop.run();
}

TEST_F(EventLoopTest, OwnersWatchOneDescriptorApart) {
    const Pipe pipe;
    std::string calls;
    mLoop.watch(pipe.out(), &mOne, [&] { calls += '1'; });
    mLoop.watch(pipe.out(), &mOther, [&] {
        calls += '2';
        mLoop.unwatch(pipe.out(), &mOne);
        if (calls.size() > 3) {
            mLoop.quit();
        }
    });
    pipe.fill();
    mLoop.run();
    EXPECT_EQ(calls, "1222");
}

TEST_F(EventLoopTest, WatchesComeAndGoInsideCalls) {
    const Pipe first;
    const Pipe second;
    const Pipe third;
    std::string calls;
    mLoop.watch(first.out(), &mOne, [&] {
        calls += '1';
        mLoop.unwatch(first.out(), &mOne);
        mLoop.unwatch(second.out(), &mOne); // ready too, and not called any more
        mLoop.watch(third.out(), &mOne, [&] {
            calls += '3';
            mLoop.quit();
        });
    });
    mLoop.watch(second.out(), &mOne, [&] { calls += '2'; });
    for (const auto* pipe : {&first, &second, &third}) {
        pipe->fill();
    }
    mLoop.run();
    EXPECT_EQ(calls, "13");
}

TEST_F(EventLoopTest, ADescriptorThatWasClosedIsForgotten) {
    Pipe pipe;
    int turns = 0;
    mLoop.watch(pipe.out(), &mOne, [] { FAIL(); });
    mLoop.setBeforeWait([&] { ++turns; });
    mLoop.startTimer(20ms, &mOther, [&] { mLoop.quit(); });
    pipe.closeOut();
    mLoop.run();
    // One turn detects it and one waits; a loop that kept the descriptor would never wait.
    EXPECT_LE(turns, 3);
    mLoop.unwatch(pipe.out(), &mOne);
}

TEST_F(EventLoopTest, TimersRunBesideWatches) {
    const auto start = std::chrono::steady_clock::now();
    int calls = 0;
    mLoop.startTimer(2ms, &mOne, [&] {
        if (++calls == 3) {
            mLoop.stopTimer(&mOne);
            mLoop.startTimer(1ms, &mOther, [&] { mLoop.quit(); });
        }
    });
    mLoop.run();
    EXPECT_EQ(calls, 3);
    EXPECT_GE(std::chrono::steady_clock::now() - start, 3ms);
}

TEST_F(EventLoopTest, QuitBeforeAWaitEndsIt) {
    mLoop.setBeforeWait([&] { mLoop.quit(); });
    mLoop.run();
    mLoop.run(); // it can be run again
}

TEST_F(EventLoopTest, WhatACallThrowsEndsTheLoop) {
    mLoop.startTimer(1ms, &mOne, [] { throw std::runtime_error("enough"); });
    EXPECT_THROW(mLoop.run(), std::runtime_error);
}

TEST_F(EventLoopTest, ASignalEndsTheLoop) {
    catchInterruptions();
    mLoop.startTimer(1ms, &mOne, [] { std::raise(SIGTERM); });
    EXPECT_EQ(errorText(kExitWorkFailed, [&] { mLoop.run(); }), "interrupted");
    clearInterruption();
}

TEST_F(EventLoopTest, IsTheEditorsDesktop) {
    WindowDesktop desktop(mLoop, 1.5);
    EXPECT_EQ(desktop.scale(), 1.5);
    const Pipe pipe;
    std::string calls;
    desktop.watch(pipe.out(), &mOne, [&] {
        calls += 'w';
        desktop.unwatch(pipe.out(), &mOne);
        desktop.startTimer(1ms, &mOne, [&] {
            calls += 't';
            desktop.stopTimer(&mOne);
            desktop.startTimer(3ms, &mOther, [&] { mLoop.quit(); });
        });
    });
    pipe.fill();
    mLoop.run();
    EXPECT_EQ(calls, "wt");
}

} // namespace
} // namespace varno::test
