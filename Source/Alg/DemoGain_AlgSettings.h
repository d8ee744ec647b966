/// The values that the stages use, computed from the context's fields once per buffer.
#ifndef VARNO_SOURCE_ALG_DEMOGAIN_ALGSETTINGS_H
#define VARNO_SOURCE_ALG_DEMOGAIN_ALGSETTINGS_H

#include "DemoGain_Alg.h"

#include <cstddef>

namespace DemoGain {

/// Largest magnitude of an input sample that is processed. Larger samples, infinity and not-a-number are
/// replaced by silence, so that no later stage overflows.
inline constexpr float kLargestInput = 1e30F;

/// Width of the knee in dB.
inline constexpr float kKneeDB = 45.0F;
inline constexpr float kPerKnee = 1.0F / kKneeDB;
/// Gain reduction below the knee in dB; keeps the gain below 0 dB everywhere.
inline constexpr float kLeastReductionDB = 0.000001F;

/// The drive is linear in the field "Hot", from kLeastDrive at 0 to 20 at 1.
inline constexpr float kLeastDrive = 0.001F;
inline constexpr float kDriveRange = 19.999F;
/// Linear weight of the high band in the detector while the emphasis is on; the low band has 1.
inline constexpr float kHighBandEmphasis = 2.5F;
/// Added to the driven signal where the clip level is measured, while the harmonics switch is on.
inline constexpr float kClipBias = 0.2F;

/// The soft-knee curve from level to gain, both in dB.
struct GainCurve {
    float mThreshold; ///< Start of the knee, dB.
    float mTop;       ///< End of the knee, dB.
    float mC[4];      ///< Coefficients of u^0 to u^3; u = t^2, t runs from 0 to 1 across the knee.
    float mTopGain;   ///< Gain above the knee, dB.

    /// Gain in dB within the knee, at a level in dB.
    float knee(float level) const {
        const float t = (level - mThreshold) * kPerKnee;
        const float u = t * t;
        return (((mC[3] * u + mC[2]) * u + mC[1]) * u + mC[0]) * (t * -kKneeDB) - kLeastReductionDB;
    }
};

struct Settings {
    bool mBypass;
    bool mHighPass;  ///< The detector input is high-passed.
    bool mLink;      ///< Both channels share one gain reduction.
    float mGain;     ///< Input gain, linear.
    float mVolume;   ///< Output volume, linear.
    float mDrive;    ///< Gain into the clipper, linear, 0.001 to 20.
    float mInvDrive; ///< 1 / mDrive.
    float mBandGain; ///< Weight of the high band in the detector, linear.
    float mBias;     ///< Bias of the clip level.
    float mDry;      ///< Share of the delayed input in the output, 0 to 1.
    float mWet;      ///< 1 - mDry.
    float mAttack;   ///< Coefficients of the followers, per sample.
    float mRelease;
    float mSlow;
    GainCurve mCurve;
};

/// Reads the fields of `context`. [audio]
inline Settings readSettings(const SDemoGain_Alg_Context& context) {
    const auto isOn = [](const float* field) { return *field > kAlgSwitchThreshold; };
    Settings settings{};
    settings.mBypass = *context.mBypass != 0;
    settings.mHighPass = isOn(context.mHP);
    settings.mLink = isOn(context.mLinkSw);
    settings.mGain = *context.mGainLin;
    settings.mVolume = *context.mVolumeLin;
    settings.mDrive = *context.mHot * kDriveRange + kLeastDrive;
    settings.mInvDrive = 1.0F / settings.mDrive;
    settings.mBandGain = isOn(context.mBand) ? kHighBandEmphasis : 1.0F;
    settings.mBias = isOn(context.mHarmSw) ? kClipBias : 0.0F;
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
