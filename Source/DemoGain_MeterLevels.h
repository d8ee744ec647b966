/// Constants of the meter taps, and how taps enter and leave the routine.
#ifndef VARNO_SOURCE_DEMOGAIN_METERLEVELS_H
#define VARNO_SOURCE_DEMOGAIN_METERLEVELS_H

#include <cfloat>
#include <cmath>

namespace DemoGain {

/// 32 dB of reduction show as 1.
inline constexpr float kMeterPerDB = -0.03125F;
/// Averages of absolute levels: what a sample leaves of the average, and what it adds of its own.
inline constexpr float kAverageKeep = 0.99983F;
inline constexpr float kAverageAdd = 0.00016999245F;

/// Stands for a tap that the host left non-finite: lower than everything.
inline constexpr float kNeverRaised = -FLT_MAX;

/// A tap's value as the routine compares with it.
inline float loadTap(float tap) {
    return std::fabs(tap) <= FLT_MAX ? tap : kNeverRaised;
}

/// A tap's value as the host finds it.
inline float storedTap(float tap) {
    return tap == kNeverRaised ? 0.0F : tap;
}

} // namespace DemoGain

#endif
