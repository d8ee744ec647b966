/// The values that the stages use, computed from the context's fields once per buffer.
#ifndef VARNO_SOURCE_ALG_DEMOGAIN_ALGSETTINGS_H
#define VARNO_SOURCE_ALG_DEMOGAIN_ALGSETTINGS_H

#include "DemoGain_Alg.h"
#include "DemoGain_CurveLaw.h"

#include <cstddef>

namespace DemoGain {

/// Largest magnitude of an input sample that is processed. Larger samples, infinity and not-a-number are
/// replaced by silence, so that no later stage overflows.
inline constexpr float kLargestInput = 1e30F;

/// The drive is linear in the field "Hot", from kLeastDrive at 0 to 20 at 1.
inline constexpr float kLeastDrive = 0.001F;
inline constexpr float kDriveRange = 19.999F;
/// Linear weight of the high band in the detector while the emphasis is on; the low band has 1.
inline constexpr float kHighBandEmphasis = 2.5F;
/// Added to the driven signal where the clip level is measured, while the harmonics switch is on.
inline constexpr float kClipBias = 0.2F;

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
    settings.mCurve = GainCurve::of(*context.mThreshold, *context.mCurve0, *context.mCurve1, *context.mCurve2,
                                    *context.mCurve3);
    return settings;
}

} // namespace DemoGain

#endif
