/// The scale of the gain-reduction meters: from dB to the tap, from the tap to the control.
#ifndef VARNO_SOURCE_DEMOGAIN_METERLAW_H
#define VARNO_SOURCE_DEMOGAIN_METERLAW_H

namespace DemoGain {

/// The level averages are one-pole means of absolute samples at every sample rate: what a sample leaves of
/// the average (fixed by definition; a time constant of 0.12 s at 48 kHz).
inline constexpr float kAverageCoef = 0.99983F;

/// Gain reduction at which a reduction tap reads 1.
inline constexpr float kMeterRangeDB = 32.0F;
/// Value of a reduction tap per dB of gain: positive for a reduction, which is a negative gain. Where a curve
/// amplifies, the tap stays at 0.
inline constexpr float kMeterPerDB = -1.0F / kMeterRangeDB;

} // namespace DemoGain

/// The value of a reduction meter's control for a tap of `reduction`, 0 to 1: 1 without reduction, falling
/// towards 0 and, at full reduction, slightly below. The polynomial, whose coefficients are fixed by
/// definition, spreads the small reductions, which matter most. Single precision, in this order of
/// operations. [any]
constexpr float DemoGain_MeterValue(float reduction) {
    constexpr float kFirst = 2.1271815F;
    constexpr float kThird = 2.0384471F;
    constexpr float kFifth = 0.916367F;
    const float cube = reduction * reduction * reduction;
    const float shown = (kFirst * reduction - kThird * cube) + kFifth * (cube * reduction * reduction);
    return 1.0F - shown;
}

#endif
