/// The main path: from the delayed input and the gain reduction to the output, stage by stage. Each stage
/// runs over `frames` samples of one channel; recursive ones carry their state from call to call.
#ifndef DEMOGAIN_DRIVESTAGES_H
#define DEMOGAIN_DRIVESTAGES_H

#include "DemoGain_Alg.h"
#include "DemoGain_AlgSettings.h"
#include "DemoGain_Conversions.h"
#include "DemoGain_DetectorStages.h"

#include <cfloat>
#include <cmath>
#include <cstddef>

namespace DemoGain {

/// Delays by one sample, so that the gain computed from a sample meets the sample before it.
inline void delayByOne(float& ioPrevious, const float* x, float* delayed, std::size_t frames) {
    float previous = ioPrevious;
    for (std::size_t n = 0; n < frames; ++n) {
        delayed[n] = previous;
        previous = x[n];
    }
    ioPrevious = previous;
}

/// Applies input gain, gain reduction and drive.
inline void drive(const Settings& settings, const float* delayed, const float* reduction, float* v,
                  std::size_t frames) {
    for (std::size_t n = 0; n < frames; ++n) {
        v[n] = settings.mGain * delayed[n] * DbToLin(reduction[n]) * settings.mDrive;
    }
}

/// Clip gain that a clip level asks for: 1 up to 0.5, then a cubic over w = 0 to pi/2, then what brings the
/// level to 1. It steps from 0.642 to 1 where the last two meet; intended.
inline void clipTarget(float bias, const float* v, float* target, std::size_t frames) {
    for (std::size_t n = 0; n < frames; ++n) {
        const float c = ClipLevel(v[n], bias);
        const float w = ((c - 0.5F) + (c - 0.5F)) * 1.5707964F;
        const float shoulder = (w * -0.554926F * w * w + w * 1.55F) * 0.5F + 0.5F;
        const float limited = (c > 1.0F ? 1.0F : shoulder) / c;
        target[n] = c <= 0.5F ? 1.0F : limited;
    }
}

/// Applies the clip gain, which falls at once and recovers slowly.
inline void clip(float recovery, float& ioClipGain, const float* v, const float* target, float* y,
                 std::size_t frames) {
    const float rest = 1.0F - recovery;
    float clipGain = ioClipGain;
    for (std::size_t n = 0; n < frames; ++n) {
        clipGain = clipGain < target[n] ? recovery * clipGain + rest * target[n] : target[n];
        y[n] = v[n] * clipGain;
    }
    ioClipGain = clipGain;
}

/// A post section in the order of coefficients that secondOrder reads.
inline SDemoGain_DetectorSection asSection(const SDemoGain_PostSection& post) {
    return {.b0 = post.b0, .b1 = post.b1, .b2 = post.b2, .gain = post.g, .a1 = post.a1, .a2 = post.a2};
}

/// Runs both post sections. Their outputs go nowhere; only their states are kept current. `scratch` is as
/// long as `y`.
inline void postSections(const SDemoGain_Alg_State& state, SDemoGain_PostStates& ioStates, const float* y,
                         float* scratch, std::size_t frames) {
    secondOrder(asSection(state.mPostA), ioStates.mA, y, scratch, frames);
    secondOrder(asSection(state.mPostB), ioStates.mB, scratch, scratch, frames);
}

/// Cubic waveshaper, which also takes the drive back.
inline void shape(const Settings& settings, const float* y, float* z, std::size_t frames) {
    for (std::size_t n = 0; n < frames; ++n) {
        z[n] = (y[n] * y[n] * y[n] * -0.49611F + y[n]) * settings.mInvDrive;
    }
}

/// Takes the constant part out.
inline void blockDc(SDemoGain_DcBlocker& ioState, const float* z, float* o, std::size_t frames) {
    SDemoGain_DcBlocker state = ioState;
    for (std::size_t n = 0; n < frames; ++n) {
        state.mDcY1 = state.mDcY1 * state.mDcCoef + (z[n] - state.mDcX1);
        state.mDcX1 = z[n];
        o[n] = state.mDcY1;
    }
    ioState = state;
}

/// Adds the delayed input as the dry part.
inline void mix(const Settings& settings, const float* delayed, const float* o, float* sum,
                std::size_t frames) {
    for (std::size_t n = 0; n < frames; ++n) {
        sum[n] = delayed[n] * settings.mDry + settings.mWet * o[n];
    }
}

/// Writes the output at its volume. A sample that broken coefficients have made non-finite leaves as silence.
inline void writeOutput(float volume, const float* sum, float* output, std::size_t frames) {
    for (std::size_t n = 0; n < frames; ++n) {
        const float sample = volume * sum[n];
        output[n] = std::fabs(sample) <= FLT_MAX ? sample : 0.0F;
    }
}

} // namespace DemoGain

#endif
