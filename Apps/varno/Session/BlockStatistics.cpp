#include "Session/BlockStatistics.h"

#include <cmath>
#include <ctime>
#include <sched.h>
#include <sys/resource.h>

namespace varno {
namespace {

constexpr int kUnknown = -1;
constexpr std::int64_t kNsPerS = 1'000'000'000;

void raise(std::atomic<std::int64_t>& number, std::int64_t by) noexcept {
    // One thread writes.
    number.store(number.load(std::memory_order_relaxed) + by, std::memory_order_relaxed);
}

std::optional<LateCause> causeOf(const BlockCall& call, const BlockCost& cost) noexcept {
    if (call.lastsNs == 0 || call.wokenNs.value_or(0) + cost.elapsedNs <= call.lastsNs) {
        return std::nullopt;
    }
    if (cost.elapsedNs <= call.lastsNs) {
        return LateCause::kWokenLate;
    }
    return cost.workedNs > call.lastsNs || cost.waits > 0 ? LateCause::kOurs : LateCause::kInterrupted;
}

std::int64_t nowNs(clockid_t clock) noexcept {
    timespec time{};
    ::clock_gettime(clock, &time);
    return time.tv_sec * kNsPerS + time.tv_nsec;
}

SystemUse systemUse() noexcept {
    rusage usage{};
    ::getrusage(RUSAGE_THREAD, &usage);
    return {usage.ru_nvcsw, usage.ru_minflt + usage.ru_majflt};
}

} // namespace

std::int64_t blockLengthNs(std::int64_t frames, double rateHz) noexcept {
    return std::llround(static_cast<double>(frames) * static_cast<double>(kNsPerS) / rateHz);
}

void BlockStatistics::add(const BlockCall& call, const BlockCost& cost) noexcept {
    mProcessing.add(cost.elapsedNs);
    if (call.wokenNs) {
        mWaking.add(*call.wokenNs);
    }
    const auto cause = causeOf(call, cost);
    // What is lost after a late block is lost by that one.
    const bool wasMissed = call.lostBlocks > 0 && !mWasLate;
    raise(mLostBlocks, call.lostBlocks);
    if (wasMissed) {
        count(LateCause::kWokenLate);
    }
    if (cause && !(wasMissed && *cause == LateCause::kWokenLate)) {
        count(*cause);
    }
    if (cause && *cause != LateCause::kWokenLate) {
        keep({*cause, cost});
    }
    mWasLate = cause.has_value();
}

void BlockStatistics::count(LateCause cause) noexcept {
    raise(mLate[static_cast<std::size_t>(cause)], 1);
}

void BlockStatistics::keep(const LongBlock& block) noexcept {
    const std::size_t count = mLongCount.load(std::memory_order_relaxed);
    if (count < mLong.size()) {
        mLong[count] = block;
        mLongCount.store(count + 1, std::memory_order_release);
    }
}

std::vector<LongBlock> BlockStatistics::longBlocks() const {
    const std::size_t count = mLongCount.load(std::memory_order_acquire);
    return {mLong.begin(), mLong.begin() + static_cast<std::ptrdiff_t>(count)};
}

std::int64_t BlockStatistics::late(LateCause cause) const {
    return mLate[static_cast<std::size_t>(cause)].load(std::memory_order_relaxed);
}

void BlockStatistics::setSchedule(const ThreadSchedule& schedule) noexcept {
    mPriority.store(schedule.priority, std::memory_order_relaxed);
    mPolicy.store(schedule.policy, std::memory_order_release);
}

std::optional<ThreadSchedule> BlockStatistics::schedule() const {
    const int policy = mPolicy.load(std::memory_order_acquire);
    return policy == kUnknown
               ? std::nullopt
               : std::optional(ThreadSchedule{policy, mPriority.load(std::memory_order_relaxed)});
}

MeasuredBlock::MeasuredBlock(BlockStatistics& statistics, const BlockCall& call) noexcept
    : mStatistics(statistics),
      mCall(call) {
    if (!statistics.schedule()) {
        sched_param parameters{};
        ::sched_getparam(0, &parameters);
        statistics.setSchedule({::sched_getscheduler(0), parameters.sched_priority});
    }
    mUse = systemUse();
    mProcessor = ::sched_getcpu();
    mWorkedNs = nowNs(CLOCK_THREAD_CPUTIME_ID);
    mBeganNs = nowNs(CLOCK_MONOTONIC);
}

MeasuredBlock::~MeasuredBlock() {
    BlockCost cost{.elapsedNs = nowNs(CLOCK_MONOTONIC) - mBeganNs, .beganNs = mBeganNs};
    // Only the cause of what is late depends on the rest.
    if (cost.elapsedNs > mCall.lastsNs) {
        cost.workedNs = nowNs(CLOCK_THREAD_CPUTIME_ID) - mWorkedNs;
        const SystemUse use = systemUse();
        cost.waits = use.waits - mUse.waits;
        cost.pageFaults = use.pageFaults - mUse.pageFaults;
        cost.processor = mProcessor;
    }
    mStatistics.add(mCall, cost);
}

} // namespace varno
