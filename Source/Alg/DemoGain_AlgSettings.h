/// What a buffer's coefficients and switches come to, worked out once before its samples.
#ifndef VARNO_SOURCE_ALG_DEMOGAIN_ALGSETTINGS_H
#define VARNO_SOURCE_ALG_DEMOGAIN_ALGSETTINGS_H

#include "DemoGain_Alg.h"

#include <cstddef>

namespace DemoGain {

/// Everything above this is on.
inline constexpr float kSwitchThreshold = 0.5F;
/// Largest magnitude of an input sample that is processed. What lies above, infinity and what is not a number
/// count as silence, so that nothing downstream overflows.
inline constexpr float kLargestInput = 1e30F;
/// From the start of the knee to its top.
inline constexpr float kKneeDB = 45.0F;
/// 1 / kKneeDB, to eight digits.
inline constexpr float kPerKnee = 0.022222223F;
/// Reduction below the knee; keeps the reduction below zero everywhere.
inline constexpr float kLeastReductionDB = 0.000001F;

/// The soft-knee curve from level to gain, both in dB.
struct GainCurve {
    float mThreshold; ///< Start of the knee.
    float mTop;       ///< End of the knee.
    float mC[4];      ///< Coefficients over u = t^2, t being 0 at the start and 1 at the top of the knee.
    float mTopGain;   ///< Gain above the top.

    /// Gain within the knee.
    float knee(float level) const {
        const float t = (level - mThreshold) * kPerKnee;
        const float u = t * t;
        return (((mC[3] * u + mC[2]) * u + mC[1]) * u + mC[0]) * (t * -kKneeDB) - kLeastReductionDB;
    }
};

struct Settings {
    bool mBypass;
    bool mHighPass; ///< The detector hears the high-passed input.
    bool mLink;     ///< Both channels share one gain reduction.
    float mGain;    ///< Input gain, linear.
    float mVolume;  ///< Output volume, linear.
    float mDrive;   ///< 0.001 to 20.
    float mInvDrive;
    float mBandGain; ///< Weight of the high band in the detector.
    float mBias;     ///< Of the clip level.
    float mDry;      ///< Share of the delayed input in the output.
    float mWet;
    float mAttack; ///< Follower coefficients per sample.
    float mRelease;
    float mSlow;
    GainCurve mCurve;
};

/// Reads the fields of `context`. [audio]
inline Settings readSettings(const SDemoGain_Alg_Context& context) {
    const auto isOn = [](const float* field) { return *field > kSwitchThreshold; };
    Settings settings{};
    settings.mBypass = *context.mBypass != 0;
    settings.mHighPass = isOn(context.mHP);
    settings.mLink = isOn(context.mLinkSw);
    settings.mGain = *context.mGainLin;
    settings.mVolume = *context.mVolumeLin;
    settings.mDrive = *context.mHot * 19.999F + 0.001F;
    settings.mInvDrive = 1.0F / settings.mDrive;
    settings.mBandGain = isOn(context.mBand) ? 2.5F : 1.0F;
    settings.mBias = isOn(context.mHarmSw) ? 0.2F : 0.0F;
    settings.mDry = *context.mMix;
    settings.mWet = 1.0F - settings.mDry;
    settings.mAttack = *context.mAttackCoef;
    settings.mRelease = *context.mReleaseCoef;
    settings.mSlow = *context.mSlowCoef;

    GainCurve& curve = settings.mCurve;
    curve.mThreshold = *context.mThreshold;
    curve.mTop = curve.mThreshold + kKneeDB;
    curve.mC[0] = *context.mCurve0;
    curve.mC[1] = *context.mCurve1;
    curve.mC[2] = *context.mCurve2;
    curve.mC[3] = *context.mCurve3;
    curve.mTopGain = curve.knee(curve.mTop);
    return settings;
}

} // namespace DemoGain

#endif
