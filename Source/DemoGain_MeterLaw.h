/// What the gain reduction meters are given, and what they show.
#ifndef VARNO_SOURCE_DEMOGAIN_METERLAW_H
#define VARNO_SOURCE_DEMOGAIN_METERLAW_H

namespace DemoGain {

/// A reduction tap's value per dB of gain (negative): a reduction of 32 dB is 1.
inline constexpr float kMeterPerDB = -0.03125F;

} // namespace DemoGain

/// What a reduction meter is set to when its tap reads `reduction` (1 is 32 dB): 1 without reduction, falling
/// towards 0 and, at full reduction, slightly below. The polynomial spreads the small reductions, which
/// matter most. Single precision in this very order. [any]
constexpr float DemoGain_MeterValue(float reduction) {
    constexpr float kFirst = 2.1271815F;
    constexpr float kThird = 2.0384471F;
    constexpr float kFifth = 0.916367F;
    const float cube = reduction * reduction * reduction;
    const float shown = (kFirst * reduction - kThird * cube) + kFifth * (cube * reduction * reduction);
    return 1.0F - shown;
}

#endif
