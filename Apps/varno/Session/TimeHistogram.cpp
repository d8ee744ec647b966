#include "Session/TimeHistogram.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace varno {

void TimeHistogram::add(std::int64_t durationNs) noexcept {
    const std::int64_t duration = std::max<std::int64_t>(durationNs, 0);
    // One thread adds, so that nothing is lost between reading and writing.
    auto& counted = mCounts[rowOf(duration)];
    counted.store(counted.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
    if (duration > worstNs()) {
        mWorstNs.store(duration, std::memory_order_relaxed);
    }
}

// Durations below two times kSteps have a row each; from there on, kSteps rows reach to the next power of
// two.
std::size_t TimeHistogram::rowOf(std::int64_t durationNs) noexcept {
    const auto duration =
        static_cast<std::uint64_t>(std::min(durationNs, (std::int64_t{1} << kMostBits) - 1));
    const int shift = std::max(0, static_cast<int>(std::bit_width(duration)) - kStepBits - 1);
    return static_cast<std::size_t>(shift) * kSteps + static_cast<std::size_t>(duration >> shift);
}

std::int64_t TimeHistogram::mostOf(std::size_t row) {
    const std::size_t shift = row < 2 * std::size_t{kSteps} ? 0 : row / kSteps - 1;
    return (static_cast<std::int64_t>(row - shift * kSteps + 1) << shift) - 1;
}

std::int64_t TimeHistogram::count() const {
    std::int64_t sum = 0;
    for (std::size_t row = 0; row < kRows; ++row) {
        sum += countOf(row);
    }
    return sum;
}

std::int64_t TimeHistogram::percentileNs(double part) const {
    const auto wanted = static_cast<std::int64_t>(std::ceil(part * static_cast<double>(count())));
    std::int64_t sum = 0;
    for (std::size_t row = 0; row < kRows; ++row) {
        sum += countOf(row);
        if (sum >= wanted) {
            return std::min(mostOf(row), worstNs());
        }
    }
    return worstNs();
}

std::vector<TimeHistogram::Row> TimeHistogram::rows() const {
    std::vector<Row> found;
    for (std::size_t row = 0; row < kRows; ++row) {
        if (const std::int64_t counted = countOf(row); counted > 0) {
            found.push_back({mostOf(row), counted});
        }
    }
    return found;
}

} // namespace varno
