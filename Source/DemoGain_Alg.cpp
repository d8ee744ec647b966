#include "DemoGain_Alg.h"

#include "Alg/DemoGain_Routine.h"

#include <cstddef>
#include <type_traits>

namespace {

// The records lie in memory as hosts and the data model expect.
constexpr std::size_t kPointer = sizeof(void*);
constexpr std::size_t kWord = sizeof(float);

using Context = SDemoGain_Alg_Context;
static_assert(std::is_standard_layout_v<Context> && std::is_trivial_v<Context>);
constexpr int kFields = 30;
static_assert(eAlgFieldID_Count == kFields && sizeof(Context) == eAlgFieldID_Count * kPointer);
static_assert(offsetof(Context, mBypass) == eAlgFieldID_Bypass * kPointer);
static_assert(offsetof(Context, mGainDB) == eAlgFieldID_GainDB * kPointer);
static_assert(offsetof(Context, mGainLin) == eAlgFieldID_GainLin * kPointer);
static_assert(offsetof(Context, mVolumeDB) == eAlgFieldID_VolumeDB * kPointer);
static_assert(offsetof(Context, mVolumeLin) == eAlgFieldID_VolumeLin * kPointer);
static_assert(offsetof(Context, mHP) == eAlgFieldID_HP * kPointer);
static_assert(offsetof(Context, mBand) == eAlgFieldID_Band * kPointer);
static_assert(offsetof(Context, mAtk) == eAlgFieldID_Atk * kPointer);
static_assert(offsetof(Context, mRls) == eAlgFieldID_Rls * kPointer);
static_assert(offsetof(Context, mAuto) == eAlgFieldID_Auto * kPointer);
static_assert(offsetof(Context, mUK) == eAlgFieldID_UK * kPointer);
static_assert(offsetof(Context, mHot) == eAlgFieldID_Hot * kPointer);
static_assert(offsetof(Context, mRatio) == eAlgFieldID_Ratio * kPointer);
static_assert(offsetof(Context, mMix) == eAlgFieldID_Mix * kPointer);
static_assert(offsetof(Context, mHarmSw) == eAlgFieldID_HarmSw * kPointer);
static_assert(offsetof(Context, mLinkSw) == eAlgFieldID_LinkSw * kPointer);
static_assert(offsetof(Context, mAttackCoef) == eAlgFieldID_AttackCoef * kPointer);
static_assert(offsetof(Context, mReleaseCoef) == eAlgFieldID_ReleaseCoef * kPointer);
static_assert(offsetof(Context, mSlowCoef) == eAlgFieldID_SlowCoef * kPointer);
static_assert(offsetof(Context, mThreshold) == eAlgFieldID_Threshold * kPointer);
static_assert(offsetof(Context, mCurve0) == eAlgFieldID_Curve0 * kPointer);
static_assert(offsetof(Context, mCurve1) == eAlgFieldID_Curve1 * kPointer);
static_assert(offsetof(Context, mCurve2) == eAlgFieldID_Curve2 * kPointer);
static_assert(offsetof(Context, mCurve3) == eAlgFieldID_Curve3 * kPointer);
static_assert(offsetof(Context, mMeters) == eAlgFieldID_Meters * kPointer);
static_assert(offsetof(Context, mAudioIn) == eAlgFieldID_AudioIn * kPointer);
static_assert(offsetof(Context, mAudioOut) == eAlgFieldID_AudioOut * kPointer);
static_assert(offsetof(Context, mBufferSize) == eAlgFieldID_BufferSize * kPointer);
static_assert(offsetof(Context, mSampleRate) == eAlgFieldID_SampleRate * kPointer);
static_assert(offsetof(Context, mState) == eAlgFieldID_State * kPointer);

// NOLINTBEGIN(readability-magic-numbers): the places of the words are the definition
using State = SDemoGain_Alg_State;
static_assert(std::is_standard_layout_v<State> && std::is_trivial_v<State>);
static_assert(sizeof(float) == sizeof(uint32_t) && sizeof(State) == 98 * kWord);
static_assert(offsetof(State, mCleared) == 0);
static_assert(offsetof(State, mFollowers) == 4 * kWord);
static_assert(offsetof(State, mLastOut) == 8 * kWord);
static_assert(offsetof(State, mDc) == 10 * kWord);
static_assert(offsetof(State, mUnread) == 16 * kWord);
static_assert(offsetof(State, mPostA) == 32 * kWord);
static_assert(offsetof(State, mPostB) == 38 * kWord);
static_assert(offsetof(State, mPost) == 44 * kWord);
static_assert(offsetof(State, mUnusedZero) == 60 * kWord);
static_assert(offsetof(State, mUnwritten) == 61 * kWord);
static_assert(offsetof(State, mUnusedTimeConstant) == 62 * kWord);
static_assert(offsetof(State, mHp) == 63 * kWord);
static_assert(offsetof(State, mAp) == 69 * kWord);
static_assert(offsetof(State, mDetector) == 75 * kWord);
static_assert(offsetof(State, mPrevIn) == 91 * kWord);
static_assert(offsetof(State, mClipGain) == 93 * kWord);
static_assert(offsetof(State, mInAvg) == 95 * kWord);
static_assert(offsetof(State, mOutAvg) == 96 * kWord);
static_assert(offsetof(State, mClipCoef) == 97 * kWord);
// NOLINTEND(readability-magic-numbers)

// Chosen when the module is loaded: querying the processor's features takes too long for the audio thread.
const SDemoGain_Routine& kRoutine = DemoGain_ChooseRoutine();

} // namespace

template<int kNumInputs, int kNumOutputs>
void DemoGain_AlgorithmProcessFunction(SDemoGain_Alg_Context* const inInstancesBegin[],
                                       const void* inInstancesEnd) {
    static_assert(kNumInputs == kNumOutputs && (kNumInputs == 1 || kNumInputs == 2));
    DemoGain_ProcessInstances(kRoutine, kNumInputs, inInstancesBegin,
                              static_cast<SDemoGain_Alg_Context* const*>(inInstancesEnd));
}

template void DemoGain_AlgorithmProcessFunction<1, 1>(SDemoGain_Alg_Context* const[], const void*);
template void DemoGain_AlgorithmProcessFunction<2, 2>(SDemoGain_Alg_Context* const[], const void*);
