/// From the meters of an instance to what the bar shows of them.
#ifndef VARNO_SURROUND_METERREADER_H
#define VARNO_SURROUND_METERREADER_H

#include "Host/Instance.h"
#include "Surround/BarState.h"

#include <array>
#include <chrono>
#include <optional>

namespace varno {

/// The largest value of some time, for a person to read.
class PeakHold {
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    /// How long a peak stays.
    static constexpr std::chrono::milliseconds kHoldTime{1500};

    /// Takes the value of now. @return the largest value since it was reached or for kHoldTime
    double follow(double value, TimePoint now);

private:
    double mPeak = 0.0;
    std::optional<TimePoint> mSince;
};

/// Reads the first meter of each kind that an effect has: input level, output level, gain reduction. One that
/// it lacks reads as silence. [main]
class MeterReader {
public:
    explicit MeterReader(const EffectDescription& effect);

    /// The meters as they are at a time, with held peaks. Levels below the bar's scale count as silence.
    BarMeters read(const MeterBank& meters, PeakHold::TimePoint now);

private:
    using Tap = std::optional<std::size_t>;

    std::array<Tap, BarLayout::kLevelMeters> mLevelTaps;
    Tap mReductionTap;
    std::array<PeakHold, BarLayout::kLevelMeters> mLevels;
    PeakHold mReduction;
};

} // namespace varno

#endif
