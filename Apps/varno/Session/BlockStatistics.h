#ifndef VARNO_APPS_VARNO_SESSION_BLOCKSTATISTICS_H
#define VARNO_APPS_VARNO_SESSION_BLOCKSTATISTICS_H

#include "Session/TimeHistogram.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace varno {

/// Why a block was not done when the next one began.
enum class LateCause {
    kOurs,        ///< The effect computed for longer than the block lasts, or waited for something.
    kInterrupted, ///< Other work had the processor meanwhile.
    kWokenLate,   ///< It began late: woken late, or after others of the same sound system.
};
inline constexpr std::size_t kLateCauses = 3;

/// What a sound system states of a block as it calls.
struct BlockCall {
    std::int64_t lastsNs = 0;                 ///< The block's own length; 0 where nothing waits for it.
    std::optional<std::int64_t> wokenNs = {}; ///< From the time when the block began to the call.
    std::int64_t lostBlocks = 0;              ///< That were not called for since the last one.
};

/// What a block took. What it did meanwhile is measured only where it took longer than it lasts.
struct BlockCost {
    std::int64_t elapsedNs = 0;  ///< From the call to its return.
    std::int64_t workedNs = 0;   ///< Of these, on the processor.
    std::int64_t waits = 0;      ///< How often the thread left the processor by itself.
    std::int64_t pageFaults = 0; ///< How often the system had to bring memory.
    std::int64_t beganNs = 0;    ///< The time of the call on the monotonic clock.
    int processor = 0;           ///< On which it was called.
};

/// A block that took longer than it lasts.
struct LongBlock {
    LateCause cause = LateCause::kOurs;
    BlockCost cost;
};

/// The length of a block.
std::int64_t blockLengthNs(std::int64_t frames, double rateHz) noexcept;

/// How the system schedules a thread.
struct ThreadSchedule {
    int policy;   ///< SCHED_OTHER and so on.
    int priority; ///< 0 without real-time scheduling.
};

/// How long blocks took while a sound system ran, and why some were late. One thread adds, any thread reads.
class BlockStatistics {
public:
    /// [audio]
    void add(const BlockCall& call, const BlockCost& cost) noexcept;
    /// [audio]
    void setSchedule(const ThreadSchedule& schedule) noexcept;

    /// From the call to its return.
    const TimeHistogram& processing() const { return mProcessing; }
    /// From the time when the block began to the call; empty where the sound system does not state it.
    const TimeHistogram& waking() const { return mWaking; }
    /// Blocks that were late.
    std::int64_t late(LateCause cause) const;
    /// The first kMostLongBlocks of those that took longer than they last.
    std::vector<LongBlock> longBlocks() const;
    /// Blocks that were not called for.
    std::int64_t lostBlocks() const { return mLostBlocks.load(std::memory_order_relaxed); }
    /// Of the audio thread; nothing before its first block.
    std::optional<ThreadSchedule> schedule() const;

    static constexpr std::size_t kMostLongBlocks = 1000;

private:
    void count(LateCause cause) noexcept;
    void keep(const LongBlock& block) noexcept;

    TimeHistogram mProcessing;
    TimeHistogram mWaking;
    std::array<std::atomic<std::int64_t>, kLateCauses> mLate{};
    std::array<LongBlock, kMostLongBlocks> mLong{}; ///< Written before they are counted, and then no more.
    std::atomic<std::size_t> mLongCount{0};
    std::atomic<std::int64_t> mLostBlocks{0};
    std::atomic<int> mPolicy{-1}; ///< -1: not known yet.
    std::atomic<int> mPriority{0};
    bool mWasLate = false; ///< The last block; of the audio thread.
};

/// What the system has done for a thread since it began.
struct SystemUse {
    std::int64_t waits = 0;
    std::int64_t pageFaults = 0;
};

/// Measures a block from its construction to its destruction. It asks the system for processor time,
/// switches and page faults, which neither waits nor takes a lock. [audio]
class MeasuredBlock {
public:
    /// @param statistics outlives this object
    MeasuredBlock(BlockStatistics& statistics, const BlockCall& call) noexcept;
    MeasuredBlock(const MeasuredBlock&) = delete;
    MeasuredBlock& operator=(const MeasuredBlock&) = delete;
    ~MeasuredBlock();

private:
    BlockStatistics& mStatistics;
    BlockCall mCall;
    SystemUse mUse;
    int mProcessor;
    std::int64_t mWorkedNs;
    std::int64_t mBeganNs;
};

} // namespace varno

#endif
