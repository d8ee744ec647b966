/// The values that the stages use, computed from the fields of the contexts once per buffer.
#ifndef VARNO_SOURCE_ALG_DEMOGAIN_ALGSETTINGS_H
#define VARNO_SOURCE_ALG_DEMOGAIN_ALGSETTINGS_H

#include "Alg/DemoGain_Lanes.h"
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

/// The settings of one instance.
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

/// Reads the fields of the context of an instance of `kChannels` channels. [audio]
template<std::size_t kChannels>
Settings readSettings(const SDemoGain_Alg_Context& context) {
    const auto isOn = [](const float* field) { return *field > kAlgSwitchThreshold; };
    Settings settings{};
    settings.mBypass = *context.mBypass != 0;
    settings.mHighPass = isOn(context.mHP);
    settings.mLink = kChannels == 2 && isOn(context.mLinkSw);
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

/// The settings of a group, for each lane those of its instance. A switch is 1 where it is on, else 0.
struct LaneSettings {
    bool mAnyBypass;   ///< Whether an instance is bypassed.
    bool mAnyHighPass; ///< Whether an instance has its detector high-passed.
    bool mAnyLink;     ///< Whether an instance has linked channels.
    LaneValues mBypass;
    LaneValues mHighPass;
    LaneValues mLink;
    LaneValues mGain;
    LaneValues mVolume;
    LaneValues mDrive;
    LaneValues mInvDrive;
    LaneValues mBandGain;
    LaneValues mBias;
    LaneValues mDry;
    LaneValues mWet;
    LaneValues mAttack;
    LaneValues mRelease;
    LaneValues mSlow;
    LaneValues mThreshold; ///< Of the gain curve, as all that follow.
    LaneValues mTop;
    LaneValues mTopGain;
    LaneValues mC[4];
};

} // namespace DemoGain

#endif
