#ifndef VARNO_APPS_VARNO_SESSION_TIMEHISTOGRAM_H
#define VARNO_APPS_VARNO_SESSION_TIMEHISTOGRAM_H

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace varno {

/// How long something took each time, of any number of times. Its size is fixed; durations are kept to 1/32,
/// the longest one exactly. One thread adds without locks, any thread reads.
class TimeHistogram {
public:
    /// A row: so many times it took no longer than that, and longer than the row before says.
    struct Row {
        std::int64_t mostNs;
        std::int64_t count;
        bool operator==(const Row&) const = default;
    };

    /// @param durationNs negative ones are 0 [audio]
    void add(std::int64_t durationNs) noexcept;

    /// How often it was added. [any]
    std::int64_t count() const;
    /// The longest duration; 0 without any. [any]
    std::int64_t worstNs() const { return mWorstNs.load(std::memory_order_relaxed); }
    /// The duration that so much of all did not exceed, at most 1/32 too long; 0 without any.
    /// @param part above 0, up to 1 [any]
    std::int64_t percentileNs(double part) const;
    /// The rows in which something was counted, the shortest first. [any]
    std::vector<Row> rows() const;

private:
    // As many for each power of two.
    static constexpr int kStepBits = 5;
    static constexpr int kSteps = 1 << kStepBits;
    // Longer ones, a minute and more, are counted in the last row.
    static constexpr int kMostBits = 36;
    static constexpr std::size_t kRows = (kMostBits - kStepBits + 1) * std::size_t{kSteps};

    static std::size_t rowOf(std::int64_t durationNs) noexcept;
    static std::int64_t mostOf(std::size_t row);
    std::int64_t countOf(std::size_t row) const { return mCounts[row].load(std::memory_order_relaxed); }

    std::array<std::atomic<std::int64_t>, kRows> mCounts{};
    std::atomic<std::int64_t> mWorstNs{0};
};

} // namespace varno

#endif
