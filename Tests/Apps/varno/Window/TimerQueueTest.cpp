#include "TimerQueue.h"

#include <gtest/gtest.h>

#include <string>

namespace varno {
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
    // Lets the time pass; each timer is called where its time has come.
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
    EXPECT_EQ(calls(), "a"); // b was due too, and has gone
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

} // namespace
} // namespace varno
