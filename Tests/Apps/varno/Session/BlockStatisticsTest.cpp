#include "Session/BlockStatistics.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <ctime>
#include <sched.h>
#include <sys/mman.h>
#include <thread>

namespace varno::test {
namespace {

constexpr std::int64_t kLengthNs = 1000;

// Late blocks by cause: ours, interrupted, woken late.
using Late = std::array<std::int64_t, kLateCauses>;

Late lateIn(const BlockStatistics& statistics) {
    return {statistics.late(LateCause::kOurs), statistics.late(LateCause::kInterrupted),
            statistics.late(LateCause::kWokenLate)};
}

Late lateAfter(const BlockCall& call, const BlockCost& cost) {
    BlockStatistics statistics;
    statistics.add(call, cost);
    return lateIn(statistics);
}

TEST(BlockStatistics, ABlockThatIsDoneInTimeIsNotLate) {
    EXPECT_EQ(lateAfter({.lastsNs = kLengthNs, .wokenNs = 400}, {.elapsedNs = 600, .workedNs = 600}),
              (Late{0, 0, 0}));
    EXPECT_EQ(lateAfter({.lastsNs = kLengthNs}, {.elapsedNs = kLengthNs, .workedNs = kLengthNs}),
              (Late{0, 0, 0}));
}

TEST(BlockStatistics, LongWorkIsOurs) {
    EXPECT_EQ(lateAfter({.lastsNs = kLengthNs, .wokenNs = 0}, {.elapsedNs = 1001, .workedNs = 1001}),
              (Late{1, 0, 0}));
    EXPECT_EQ(lateAfter({.lastsNs = kLengthNs, .wokenNs = 900}, {.elapsedNs = 1200, .workedNs = 1100}),
              (Late{1, 0, 0}))
        << "also where it was woken late";
    EXPECT_EQ(lateAfter({.lastsNs = kLengthNs}, {.elapsedNs = 1200, .workedNs = 1100}), (Late{1, 0, 0}))
        << "also where the sound system does not state when the block began";
}

TEST(BlockStatistics, WaitingIsOurs) {
    EXPECT_EQ(lateAfter({.lastsNs = kLengthNs}, {.elapsedNs = 5000, .workedNs = 10, .waits = 1}),
              (Late{1, 0, 0}));
}

TEST(BlockStatistics, TheProcessorTakenAwayIsAnInterruption) {
    EXPECT_EQ(lateAfter({.lastsNs = kLengthNs}, {.elapsedNs = 5000, .workedNs = 1000}), (Late{0, 1, 0}));
}

TEST(BlockStatistics, ShortWorkThatBeganLateIsNotOurs) {
    EXPECT_EQ(lateAfter({.lastsNs = kLengthNs, .wokenNs = 401}, {.elapsedNs = 600, .waits = 1}),
              (Late{0, 0, 1}));
    EXPECT_EQ(lateAfter({.lastsNs = kLengthNs, .wokenNs = 9000}, {.elapsedNs = 1000}), (Late{0, 0, 1}));
}

TEST(BlockStatistics, WhereNothingWaitsNothingIsLate) {
    EXPECT_EQ(lateAfter({.lastsNs = 0, .wokenNs = 9000}, {.elapsedNs = 9000, .workedNs = 9000}),
              (Late{0, 0, 0}));
}

TEST(BlockStatistics, BlocksThatWereNeverCalledForCountOnce) {
    BlockStatistics statistics;
    const BlockCall inTime{.lastsNs = kLengthNs};
    statistics.add(inTime, {.elapsedNs = 10});
    statistics.add({.lastsNs = kLengthNs, .lostBlocks = 7}, {.elapsedNs = 10});
    EXPECT_EQ(lateIn(statistics), (Late{0, 0, 1}));
    EXPECT_EQ(statistics.lostBlocks(), 7);
    statistics.add({.lastsNs = kLengthNs, .wokenNs = 990, .lostBlocks = 1}, {.elapsedNs = 20});
    EXPECT_EQ(lateIn(statistics), (Late{0, 0, 2})) << "lost and late at once";
    statistics.add({.lastsNs = kLengthNs, .lostBlocks = 2}, {.elapsedNs = 10});
    EXPECT_EQ(lateIn(statistics), (Late{0, 0, 2})) << "lost by the late one before";
    EXPECT_EQ(statistics.lostBlocks(), 10);
}

TEST(BlockStatistics, WhatALongBlockLosesIsOurs) {
    BlockStatistics statistics;
    statistics.add({.lastsNs = kLengthNs}, {.elapsedNs = 5000, .workedNs = 5000});
    statistics.add({.lastsNs = kLengthNs, .lostBlocks = 4}, {.elapsedNs = 10});
    EXPECT_EQ(lateIn(statistics), (Late{1, 0, 0}));
    statistics.add({.lastsNs = kLengthNs, .lostBlocks = 4}, {.elapsedNs = 5000, .workedNs = 5000});
    EXPECT_EQ(lateIn(statistics), (Late{2, 0, 1})) << "lost before, and long itself";
}

TEST(BlockStatistics, KeepsTheFirstLongBlocks) {
    BlockStatistics statistics;
    const BlockCall call{.lastsNs = kLengthNs, .wokenNs = 0};
    statistics.add(call, {.elapsedNs = 900});
    statistics.add({.lastsNs = kLengthNs, .wokenNs = 900}, {.elapsedNs = 200});
    EXPECT_TRUE(statistics.longBlocks().empty());
    for (int i = 0; i < 1001; ++i) {
        statistics.add(call,
                       {.elapsedNs = 2000 + i, .workedNs = 9, .pageFaults = 3, .beganNs = i, .processor = 1});
    }
    const auto blocks = statistics.longBlocks();
    ASSERT_EQ(blocks.size(), 1000U);
    EXPECT_EQ(blocks.front().cause, LateCause::kInterrupted);
    EXPECT_EQ(blocks.front().cost.pageFaults, 3);
    EXPECT_EQ(blocks.front().cost.processor, 1);
    EXPECT_EQ(blocks.back().cost.elapsedNs, 2999);
    EXPECT_EQ(blocks.back().cost.beganNs, 999);
    EXPECT_EQ(statistics.late(LateCause::kInterrupted), 1001);
}

TEST(BlockStatistics, KeepsWakingWhereItIsStated) {
    BlockStatistics statistics;
    statistics.add({.lastsNs = kLengthNs}, {.elapsedNs = 20});
    EXPECT_EQ(statistics.waking().count(), 0);
    statistics.add({.lastsNs = kLengthNs, .wokenNs = 30}, {.elapsedNs = 10});
    EXPECT_EQ(statistics.waking().worstNs(), 30);
    EXPECT_EQ(statistics.processing().worstNs(), 20);
    EXPECT_EQ(statistics.processing().count(), 2);
}

// The work takes longer than a nanosecond.
TEST(MeasuredBlock, MeasuresAndStatesTheSchedule) {
    BlockStatistics statistics;
    EXPECT_FALSE(statistics.schedule());
    { const MeasuredBlock block(statistics, {.lastsNs = 1}); }
    { const MeasuredBlock block(statistics, {}); }
    EXPECT_EQ(statistics.processing().count(), 2);
    EXPECT_GT(statistics.processing().worstNs(), 1);
    EXPECT_EQ(lateIn(statistics), (Late{1, 0, 0}));
    ASSERT_TRUE(statistics.schedule());
    EXPECT_EQ(statistics.schedule()->policy, ::sched_getscheduler(0));
}

TEST(MeasuredBlock, MeasuresWhatALongBlockDoes) {
    constexpr std::size_t kPages = 64;
    constexpr std::size_t kPageBytes = 4096;
    BlockStatistics statistics;
    timespec before{};
    ::clock_gettime(CLOCK_MONOTONIC, &before);
    {
        const MeasuredBlock block(statistics, {.lastsNs = 1});
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
        auto* const memory = static_cast<volatile char*>(
            ::mmap(nullptr, kPages * kPageBytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
        for (std::size_t page = 0; page < kPages; ++page) {
            memory[page * kPageBytes] = 1;
        }
        ::munmap(const_cast<char*>(memory), kPages * kPageBytes);
    }
    const auto blocks = statistics.longBlocks();
    ASSERT_EQ(blocks.size(), 1U);
    const auto& [cause, cost] = blocks.front();
    EXPECT_EQ(cause, LateCause::kOurs);
    EXPECT_GE(cost.elapsedNs, 2'000'000);
    EXPECT_LT(cost.workedNs, cost.elapsedNs);
    EXPECT_GT(cost.workedNs, 0);
    EXPECT_GE(cost.waits, 1);
    EXPECT_GE(cost.pageFaults, 1); // large pages need fewer
    EXPECT_GE(cost.beganNs, before.tv_sec * 1'000'000'000 + before.tv_nsec);
    EXPECT_GE(cost.processor, 0);
}

TEST(BlockStatistics, ABlockLastsItsFramesAtTheRate) {
    EXPECT_EQ(blockLengthNs(32, 48'000.0), 666'667);
    EXPECT_EQ(blockLengthNs(8192, 16'000.0), 512'000'000);
}

} // namespace
} // namespace varno::test
