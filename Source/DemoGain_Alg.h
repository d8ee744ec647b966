/// The signal path as the host sees it: fields, context, private state, meters and the processing routine.
#ifndef VARNO_SOURCE_DEMOGAIN_ALG_H
#define VARNO_SOURCE_DEMOGAIN_ALG_H

#include "AAX.h"
#include "DemoGain_AlgFields.h"

#include <cstdint>

/// The meter taps of field eAlgFieldID_Meters, in their order.
enum EMeterTap : int32_t {
    eMeterTap_GainReductionLeft = 0, ///< 1.0 is 32 dB of reduction.
    eMeterTap_GainReductionRight,    ///< Shows the left channel's reduction.
    eMeterTap_Input,                 ///< Averaged absolute input of the first channel, linear.
    eMeterTap_Output,                ///< Averaged absolute output of the first channel before volume, linear.
    eMeterTap_Count
};

/// Identifiers of the taps, in their order.
inline constexpr AAX_CTypeID cDemoGain_MeterID[eMeterTap_Count] = {AAX_FourCC("mtGL"), AAX_FourCC("mtGR"),
                                                                   AAX_FourCC("mtIR"), AAX_FourCC("mtOR")};

/// Second-order section of the post filters: y = (b0*x + b1*x1 + b2*x2 - a1*y1 - a2*y2) * g.
struct SDemoGain_PostSection {
    float b0;
    float b1;
    float b2;
    float a1;
    float a2;
    float g;
};

/// Second-order section of the detector: y = (b0*x + b1*x1 + b2*x2 - a1*y1 - a2*y2) * gain.
struct SDemoGain_DetectorSection {
    float b0;
    float b1;
    float b2;
    float gain;
    float a1;
    float a2;
};

/// Delayed input and output of a section: one and two samples ago.
struct SDemoGain_SectionState {
    float x1;
    float x2;
    float y1;
    float y2;
};

/// Gain-reduction followers of one channel, in dB.
struct SDemoGain_Followers {
    float mGrEnvAR;   ///< Attack and release follower.
    float mGrEnvSlow; ///< Single-speed follower.
};

/// DC blocker of one channel.
struct SDemoGain_DcBlocker {
    float mDcCoef;
    float mDcX1;
    float mDcY1;
};

/// States of the two post sections of one channel.
struct SDemoGain_PostStates {
    SDemoGain_SectionState mA;
    SDemoGain_SectionState mB;
};

/// States of the detector's filters of one channel. The high-pass is of first order: its x2 and y2 stay
/// unused.
struct SDemoGain_DetectorStates {
    SDemoGain_SectionState mHp;
    SDemoGain_SectionState mAp;
};

/// Private state of one instance, 98 floats. The host allocates it, DemoGain_ResetState fills it, and it
/// lives from buffer to buffer. Arrays of two are left and right; the mono routine uses the left.
struct SDemoGain_Alg_State {
    float mCleared[4]; ///< Cleared at reset, not read.
    SDemoGain_Followers mFollowers[2];
    float mLastOut[2]; ///< Last DC-blocker output of the previous buffer.
    SDemoGain_DcBlocker mDc[2];
    float mUnread[2][8]; ///< Constants that no routine reads.
    SDemoGain_PostSection mPostA;
    SDemoGain_PostSection mPostB;
    SDemoGain_PostStates mPost[2];
    float mUnusedZero;
    float mUnwritten;
    float mUnusedTimeConstant;
    SDemoGain_DetectorSection mHp; ///< High-pass of first order: b2 and a2 are 0.
    SDemoGain_DetectorSection mAp; ///< All-pass.
    SDemoGain_DetectorStates mDetector[2];
    float mPrevIn[2];   ///< Last input sample.
    float mClipGain[2]; ///< Smoothed clip gain.
    float mInAvg;       ///< Averaged absolute input.
    float mOutAvg;      ///< Averaged absolute output.
    float mClipCoef;    ///< Recovery coefficient of the clip gain.
};

/// Everything an instance's routine works on: a pointer per field, in the order of EAlgFieldID. The host owns
/// what they point to and keeps it valid and unchanged, but for what the routine writes, while the routine
/// runs. A switch is on above kAlgSwitchThreshold.
struct SDemoGain_Alg_Context {
    const int32_t* mBypass;    ///< Not 0: the output is the input.
    const float* mGainDB;      ///< Not read.
    const float* mGainLin;     ///< Input gain, linear.
    const float* mVolumeDB;    ///< Not read.
    const float* mVolumeLin;   ///< Output volume, linear.
    const float* mHP;          ///< Switch: the detector input is high-passed.
    const float* mBand;        ///< Switch: high-band emphasis in the detector.
    const float* mAtk;         ///< Not read.
    const float* mRls;         ///< Not read.
    const float* mAuto;        ///< Not read.
    const float* mUK;          ///< Not read.
    const float* mHot;         ///< Drive, 0 to 1.
    const float* mRatio;       ///< Not read.
    const float* mMix;         ///< Dry share of the output, 0 to 1.
    const float* mHarmSw;      ///< Switch: bias of the clip level.
    const float* mLinkSw;      ///< Switch, stereo: both channels share one gain reduction.
    const float* mAttackCoef;  ///< Follower coefficient per sample, 0 to 1.
    const float* mReleaseCoef; ///< Follower coefficient per sample, 0 to 1.
    const float* mSlowCoef;    ///< Follower coefficient per sample, 0 to 1.
    const float* mThreshold;   ///< Start of the knee, dB.
    const float* mCurve0;      ///< Gain curve, coefficients of u^0 to u^3.
    const float* mCurve1;
    const float* mCurve2;
    const float* mCurve3;
    float* mMeters; ///< First of four contiguous taps; raised by the routine, lowered by the host.
    const float* const* mAudioIn; ///< One pointer per input channel.
    float* const* mAudioOut;    ///< One pointer per output channel; may be the inputs' memory, also crossed.
    const int32_t* mBufferSize; ///< Frames of this buffer; below 1 nothing is processed.
    const float* mSampleRate;   ///< Hz; not read.
    SDemoGain_Alg_State* mState;
};

/// Processes one buffer of each instance from inInstancesBegin up to, and not including, inInstancesEnd (the
/// end of the same array), with the result of one instance after the other: an instance may be passed twice,
/// and may read what an earlier one has put out. Exists for <1, 1> (mono) and <2, 2> (stereo).
///
/// Real-time safe: no allocation, no lock, no call out of the routine, bounded time. The processor's
/// floating-point mode is the routine's own while it runs (round to nearest, no traps, denormals are zero)
/// and the caller's again on return. Input samples that are not a number, infinite or above 1e30 in magnitude
/// are processed as silence. [audio]
template<int kNumInputs, int kNumOutputs>
void DemoGain_AlgorithmProcessFunction(SDemoGain_Alg_Context* const inInstancesBegin[],
                                       const void* inInstancesEnd);

extern template void DemoGain_AlgorithmProcessFunction<1, 1>(SDemoGain_Alg_Context* const[], const void*);
extern template void DemoGain_AlgorithmProcessFunction<2, 2>(SDemoGain_Alg_Context* const[], const void*);

#endif
