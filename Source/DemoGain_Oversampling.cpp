#include "DemoGain_Oversampling.h"

#include "DemoGain_Alg.h"
#include "DemoGain_Coefficients.h"

#include <cstddef>

namespace {

// offsetof is defined for it: the state is plain data.
constexpr SDemoGain_StateBytes kCarriedState[] = {
    {offsetof(SDemoGain_Alg_State, mFollowers), sizeof(SDemoGain_Alg_State::mFollowers)},
    {offsetof(SDemoGain_Alg_State, mClipGain), sizeof(SDemoGain_Alg_State::mClipGain)},
    {offsetof(SDemoGain_Alg_State, mInAvg), sizeof(SDemoGain_Alg_State::mInAvg)},
    {offsetof(SDemoGain_Alg_State, mOutAvg), sizeof(SDemoGain_Alg_State::mOutAvg)},
};

constexpr SDemoGain_AveragedLevel kAveragedLevels[] = {
    {eMeterTap_Input, offsetof(SDemoGain_Alg_State, mInAvg)},
    {eMeterTap_Output, offsetof(SDemoGain_Alg_State, mOutAvg)},
};

} // namespace

bool DemoGain_IsUnscaled(float choice) {
    return DemoGain_CurveIndex(choice) == kDemoGain_FixedAttackCurve;
}

std::span<const SDemoGain_AveragedLevel> DemoGain_AveragedLevels() {
    return kAveragedLevels;
}

std::span<const SDemoGain_StateBytes> DemoGain_CarriedState() {
    return kCarriedState;
}
