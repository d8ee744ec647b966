/// The meter taps of one instance while a buffer is processed.
#ifndef DEMOGAIN_METERTAPS_H
#define DEMOGAIN_METERTAPS_H

#include "DemoGain_Alg.h"

#include <cfloat>
#include <cmath>
#include <cstddef>

namespace DemoGain {

/// 32 dB of reduction show as 1.
inline constexpr float kMeterPerDB = -0.03125F;
/// Averages of absolute levels: what a sample leaves of the average, and what it adds of its own.
inline constexpr float kAverageKeep = 0.99983F;
inline constexpr float kAverageAdd = 0.00016999245F;

/// Raises taps, never lowers them; lowering is the host's. A value that is not finite raises nothing, and a
/// tap that the host left non-finite counts as lower than everything.
class MeterTaps {
public:
    explicit MeterTaps(const float* taps)
        : mReduction(load(taps[eMeterTap_GainReductionLeft])),
          mInput(load(taps[eMeterTap_Input])),
          mOutput(load(taps[eMeterTap_Output])) {}

    /// The left (or only) channel's gain reduction, in dB.
    void reduction(const float* reductionDB, std::size_t frames) {
        for (std::size_t n = 0; n < frames; ++n) {
            mReduction = raised(mReduction, reductionDB[n] * kMeterPerDB);
        }
    }

    /// Averages the left (or only) channel's input and its output before volume.
    void levels(SDemoGain_Alg_State& ioState, const float* x, const float* sum, std::size_t frames) {
        float in = ioState.mInAvg;
        float out = ioState.mOutAvg;
        for (std::size_t n = 0; n < frames; ++n) {
            in = in * kAverageKeep + std::fabs(x[n]) * kAverageAdd;
            out = out * kAverageKeep + std::fabs(sum[n]) * kAverageAdd;
            mInput = raised(mInput, in);
            mOutput = raised(mOutput, out);
        }
        ioState.mInAvg = in;
        ioState.mOutAvg = out;
    }

    /// Writes the taps. The right reduction tap shows what the left one shows, in stereo too; intended.
    void store(float* taps) const {
        taps[eMeterTap_GainReductionLeft] = stored(mReduction);
        taps[eMeterTap_GainReductionRight] = stored(mReduction);
        taps[eMeterTap_Input] = stored(mInput);
        taps[eMeterTap_Output] = stored(mOutput);
    }

private:
    static constexpr float kNeverRaised = -FLT_MAX;

    static float load(float tap) { return std::fabs(tap) <= FLT_MAX ? tap : kNeverRaised; }
    static float raised(float tap, float value) { return value >= tap && value <= FLT_MAX ? value : tap; }
    static float stored(float tap) { return tap == kNeverRaised ? 0.0F : tap; }

    float mReduction;
    float mInput;
    float mOutput;
};

} // namespace DemoGain

#endif
