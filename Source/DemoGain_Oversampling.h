/// What a host must know that runs the routine at a multiple of the sound's rate, and what it carries over
/// when it changes that rate.
#ifndef VARNO_SOURCE_DEMOGAIN_OVERSAMPLING_H
#define VARNO_SOURCE_DEMOGAIN_OVERSAMPLING_H

#include "DemoGain_AlgFields.h"

#include <cstdint>
#include <span>

/// Frames by which the processed sound is late, at any rate: the detector looks one ahead.
inline constexpr int32_t kDemoGain_LatencyFrames = 1;

/// The one coefficient that stays as it is at any rate where its curve is chosen, so that its time depends on
/// the rate: at several times the rate its root of that order has the time that the sound's own rate gives.
/// All others are scaled to the rate.
inline constexpr EAlgFieldID kDemoGain_UnscaledField = eAlgFieldID_AttackCoef;
/// The field that chooses the curve.
inline constexpr EAlgFieldID kDemoGain_ChoiceField = eAlgFieldID_Ratio;

/// Whether kDemoGain_UnscaledField is unscaled at this value of kDemoGain_ChoiceField. [any]
bool DemoGain_IsUnscaled(float choice);

/// Bytes of the private state.
struct SDemoGain_StateBytes {
    uint32_t mOffset;
    uint32_t mSize;
};

/// A level that is averaged by a coefficient per sample that stays as it is at any rate.
struct SDemoGain_AveragedLevel {
    uint32_t mTap;    ///< The meter that shows it.
    uint32_t mOffset; ///< Of the average, a float, in the private state.
};

/// The averages of input and output. [any]
std::span<const SDemoGain_AveragedLevel> DemoGain_AveragedLevels();

/// What the field eAlgFieldID_State holds that means the same at any rate and takes long to build up: gain
/// reductions, clip gains and level averages. [any]
std::span<const SDemoGain_StateBytes> DemoGain_CarriedState();

#endif
