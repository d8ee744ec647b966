#include "Session/BlockStatistics.h"
#include "Session/JackBackend.h"
#include "Tests/Apps/varno/Session/FakeJack.h"

#include <gtest/gtest.h>

// What is measured of a JACK client. Blocks last a second, so that no machine is too slow for them.

namespace varno::test {
namespace {

constexpr jack_nframes_t kPeriod = 44'100;

class JackStatistics : public testing::Test {
protected:
    JackStatistics() {
        mBackend.start([](const float* const*, float* const*, int) {});
        mJack.frame = 1000;
    }

    // The server calls this many frames after the block began.
    void call(jack_nframes_t framesSince = 0, jack_nframes_t frames = kPeriod) {
        mJack.framesSince = framesSince;
        mJack.process(frames, mJack.self);
        mJack.frame += frames;
    }
    std::int64_t late() const {
        EXPECT_EQ(mStatistics.late(LateCause::kOurs), 0);
        EXPECT_EQ(mStatistics.late(LateCause::kInterrupted), 0);
        return mStatistics.late(LateCause::kWokenLate);
    }

    FakeJack mJack;
    BlockStatistics mStatistics;
    JackBackend mBackend{FakeJack::functions(), {.statistics = &mStatistics}};
};

TEST_F(JackStatistics, BlocksInTimeAreNotLate) {
    call();
    call(kPeriod / 100);
    EXPECT_EQ(late(), 0);
    EXPECT_EQ(mStatistics.processing().count(), 2);
    EXPECT_EQ(mStatistics.waking().worstNs(), 10'000'000);
    EXPECT_EQ(mStatistics.lostBlocks(), 0);
}

TEST_F(JackStatistics, ALateCallIsLate) {
    call(kPeriod);
    EXPECT_EQ(late(), 1);
}

TEST_F(JackStatistics, FindsBlocksThatTheServerNeverCalledFor) {
    call();
    mJack.frame += 3 * kPeriod;
    call();
    EXPECT_EQ(mStatistics.lostBlocks(), 3);
    EXPECT_EQ(late(), 1);
    call();
    EXPECT_EQ(mStatistics.lostBlocks(), 3);
}

TEST_F(JackStatistics, TheServersCountWrapsAround) {
    mJack.frame = -(kPeriod / 2);
    call();
    call();
    EXPECT_EQ(mStatistics.lostBlocks(), 0);
    mJack.frame = -(2 * kPeriod);
    call();
    mJack.frame += 2 * kPeriod;
    call();
    EXPECT_EQ(mStatistics.lostBlocks(), 2);
}

TEST_F(JackStatistics, AServerThatFreewheelsWaitsForNobody) {
    call();
    mJack.freewheel(1, mJack.self);
    mJack.frame += kPeriod;
    call(2 * kPeriod);
    mJack.freewheel(0, mJack.self);
    mJack.frame += kPeriod;
    call();
    EXPECT_EQ(late(), 0);
    EXPECT_EQ(mStatistics.lostBlocks(), 0);
    EXPECT_EQ(mStatistics.processing().count(), 3);
}

TEST_F(JackStatistics, ANewPeriodLosesNothing) {
    call();
    mJack.frame += 9 * kPeriod;
    call(0, kPeriod / 2);
    EXPECT_EQ(mStatistics.lostBlocks(), 0);
    mJack.frame += kPeriod;
    call(0, kPeriod / 2);
    EXPECT_EQ(mStatistics.lostBlocks(), 2);
}

} // namespace
} // namespace varno::test
