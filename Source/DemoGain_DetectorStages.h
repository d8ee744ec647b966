/// The detector branch: from input samples to the gain reduction in dB, stage by stage. Each stage runs over
/// `frames` samples of one channel; recursive ones carry their state from call to call.
#ifndef DEMOGAIN_DETECTORSTAGES_H
#define DEMOGAIN_DETECTORSTAGES_H

#include "DemoGain_Alg.h"
#include "DemoGain_AlgSettings.h"
#include "DemoGain_Conversions.h"

#include <cmath>
#include <cstddef>

namespace DemoGain {

/// Largest magnitude of an input sample that is processed. What lies above, infinity and what is not a number
/// count as silence, so that nothing downstream overflows.
inline constexpr float kLargestInput = 1e30F;

/// Replaces samples that cannot be processed by silence.
inline void admitInput(const float* raw, float* x, std::size_t frames) {
    for (std::size_t n = 0; n < frames; ++n) {
        x[n] = std::fabs(raw[n]) <= kLargestInput ? raw[n] : 0.0F;
    }
}

/// First-order high-pass at 120 Hz.
inline void highPass(const SDemoGain_DetectorSection& section, SDemoGain_SectionState& ioState,
                     const float* x, float* h, std::size_t frames) {
    const auto [b0, b1, b2, gain, a1, a2] = section;
    float x1 = ioState.x1;
    float y1 = ioState.y1;
    for (std::size_t n = 0; n < frames; ++n) {
        const float y = (b0 * x[n] + b1 * x1 - a1 * y1) * gain;
        x1 = x[n];
        y1 = y;
        h[n] = y;
    }
    ioState.x1 = x1;
    ioState.y1 = y1;
}

/// Second-order section, direct form I: y = (b0*x + b1*x1 + b2*x2 - a1*y1 - a2*y2) * gain.
inline void secondOrder(const SDemoGain_DetectorSection& section, SDemoGain_SectionState& ioState,
                        const float* x, float* out, std::size_t frames) {
    const SDemoGain_DetectorSection s = section;
    SDemoGain_SectionState state = ioState;
    for (std::size_t n = 0; n < frames; ++n) {
        const float y =
            (s.b0 * x[n] + s.b1 * state.x1 + s.b2 * state.x2 - s.a1 * state.y1 - s.a2 * state.y2) * s.gain;
        state = {x[n], state.x1, y, state.y1};
        out[n] = y;
    }
    ioState = state;
}

/// Weights what lies above 7 kHz: the all-passed signal `a` added to `d` leaves the low band, taken from it
/// the high band. Scales to the input gain.
inline void weightBands(const Settings& settings, const float* d, const float* a, float* detector,
                        std::size_t frames) {
    for (std::size_t n = 0; n < frames; ++n) {
        detector[n] = ((d[n] - a[n]) * settings.mBandGain + (d[n] + a[n])) * 0.5F * settings.mGain;
    }
}

/// Gain that the curve asks for, in dB.
inline void computeGain(const GainCurve& curve, const float* detector, float* gain, std::size_t frames) {
    for (std::size_t n = 0; n < frames; ++n) {
        const float level = LinToDb(Level(detector[n]));
        if (level > curve.mTop) {
            gain[n] = curve.mTopGain;
        } else if (level > curve.mThreshold) {
            gain[n] = curve.knee(level);
        } else {
            gain[n] = -kLeastReductionDB;
        }
    }
}

/// Sum, in dB, of the follower with attack and release and of the single-speed one.
inline void follow(const Settings& settings, SDemoGain_Followers& ioState, const float* gain,
                   float* reduction, std::size_t frames) {
    float ar = ioState.mGrEnvAR;
    float slow = ioState.mGrEnvSlow;
    for (std::size_t n = 0; n < frames; ++n) {
        const float coef = gain[n] < ar ? settings.mAttack : settings.mRelease;
        ar = (ar - gain[n]) * coef + gain[n];
        slow = (slow - gain[n]) * settings.mSlow + gain[n];
        reduction[n] = ar + slow;
    }
    ioState.mGrEnvAR = ar;
    ioState.mGrEnvSlow = slow;
}

/// Gives both channels the mean of their reductions.
inline void link(float* left, float* right, std::size_t frames) {
    for (std::size_t n = 0; n < frames; ++n) {
        const float mean = (left[n] + right[n]) * 0.5F;
        left[n] = mean;
        right[n] = mean;
    }
}

} // namespace DemoGain

#endif
