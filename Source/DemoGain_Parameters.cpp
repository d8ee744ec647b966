#include "DemoGain_Parameters.h"

#include "AAX_CBinaryDisplayDelegate.h"
#include "AAX_CBinaryTaperDelegate.h"
#include "AAX_CLinearTaperDelegate.h"
#include "AAX_CNumberDisplayDelegate.h"
#include "AAX_CParameter.h"
#include "AAX_Guarded.h"
#include "AAX_IController.h"
#include "Alg/DemoGain_State.h"
#include "DemoGain_Alg.h"
#include "DemoGain_Coefficients.h"
#include "DemoGain_ParameterTable.h"
#include "DemoGain_SampleRates.h"

#include <cmath>
#include <memory>
#include <string_view>

namespace {

// Sample rate in Hz where the host reports none.
constexpr double kFallbackSampleRate = DemoGain_SampleRates::kReferenceHz;
constexpr uint32_t kDecimals = 2;

static_assert(std::string_view(cDemoGain_MasterBypassID) == cDefaultMasterBypassID,
              "the base class knows the master bypass");

std::unique_ptr<AAX_IParameter> MakeBool(const SDemoGain_Parameter& row) {
    return std::make_unique<AAX_CParameter<bool>>(row.mIdentifier, AAX_CString(row.mName),
                                                  row.mDefault > 0.0F, AAX_CBinaryTaperDelegate<bool>(),
                                                  AAX_CBinaryDisplayDelegate<bool>("bypass", "on"), true);
}

std::unique_ptr<AAX_IParameter> MakeFloat(const SDemoGain_Parameter& row) {
    return std::make_unique<AAX_CParameter<float>>(row.mIdentifier, AAX_CString(row.mName), row.mDefault,
                                                   AAX_CLinearTaperDelegate<float, 0>(0.0F, 1.0F),
                                                   AAX_CNumberDisplayDelegate<float, kDecimals, 0>(), true);
}

std::unique_ptr<AAX_IParameter> MakeParameter(const SDemoGain_Parameter& row) {
    auto parameter = row.mTaper == EDemoGain_Taper::kBinary ? MakeBool(row) : MakeFloat(row);
    parameter->SetNumberOfSteps(row.mSteps);
    parameter->SetType(row.mType);
    return parameter;
}

} // namespace

AAX_CEffectParameters* DemoGain_Parameters::Create() {
    return AAX_GuardedCreation({"DemoGain_Parameters", __func__}, [] { return new DemoGain_Parameters; });
}

AAX_Result DemoGain_Parameters::EffectInit() {
    for (const SDemoGain_Parameter& row : kDemoGain_Parameters) {
        auto parameter = MakeParameter(row);
        if (mParameterManager.AddParameter(parameter.get())) {
            static_cast<void>(parameter.release()); // It is the manager's now.
        }
    }
    for (const SDemoGain_Parameter* const row : kDemoGain_PacketOrder) {
        RegisterPacket(*row);
    }
    return AAX_SUCCESS;
}

void DemoGain_Parameters::RegisterPacket(const SDemoGain_Parameter& row) {
    AAX_CPacketDispatcher& dispatcher = mPacketDispatcher;
    switch (row.mPacket) {
    case EDemoGain_Packet::kSingleValue:
        dispatcher.RegisterPacket(row.mIdentifier, row.mField);
        break;
    case EDemoGain_Packet::kGain:
        dispatcher.RegisterPacket(row.mIdentifier, row.mField, this, &DemoGain_Parameters::UpdatePacket_Gain);
        break;
    case EDemoGain_Packet::kDecay:
        dispatcher.RegisterPacket(row.mIdentifier, row.mField, this,
                                  &DemoGain_Parameters::UpdatePacket_Decay);
        break;
    case EDemoGain_Packet::kTimeConsts:
        dispatcher.RegisterPacket(row.mIdentifier, row.mField, this,
                                  &DemoGain_Parameters::UpdatePacket_TimeConsts);
        break;
    }
}

AAX_Result DemoGain_Parameters::UpdatePacket_Gain(AAX_CPacket& ioPacket) {
    UpdateLevelPacket(ioPacket, cDemoGain_GainID, eAlgFieldID_GainLin);
    return AAX_SUCCESS;
}

AAX_Result DemoGain_Parameters::UpdatePacket_Decay(AAX_CPacket& ioPacket) {
    UpdateLevelPacket(ioPacket, cDemoGain_VolumeID, eAlgFieldID_VolumeLin);
    return AAX_SUCCESS;
}

void DemoGain_Parameters::UpdateLevelPacket(AAX_CPacket& ioPacket, AAX_CParamID paramID,
                                            AAX_CFieldIndex linearField) {
    float value = 0.0F;
    if (!ReadValue(paramID, value)) {
        return;
    }
    const float dB = DemoGain_LevelDB(value);
    *ioPacket.GetPtr<float>() = dB;
    Post(linearField, DemoGain_LevelLin(dB));
}

AAX_Result DemoGain_Parameters::UpdatePacket_TimeConsts(AAX_CPacket& ioPacket) {
    SDemoGain_DynamicsValues values{};
    if (!ReadValue(cDemoGain_AttackID, values.mAttack) || !ReadValue(cDemoGain_ReleaseID, values.mRelease) ||
        !ReadValue(cDemoGain_UKID, values.mUK) || !ReadValue(cDemoGain_RatioID, values.mRatio)) {
        return AAX_SUCCESS;
    }
    const SDemoGain_Dynamics dynamics = DemoGain_ComputeDynamics(values, SampleRate());
    Post(eAlgFieldID_ReleaseCoef, dynamics.mReleaseCoef);
    Post(eAlgFieldID_SlowCoef, dynamics.mSlowCoef);
    Post(eAlgFieldID_Threshold, dynamics.mThreshold);
    Post(eAlgFieldID_Curve0, dynamics.mCurve[0]);
    Post(eAlgFieldID_Curve1, dynamics.mCurve[1]);
    Post(eAlgFieldID_Curve2, dynamics.mCurve[2]);
    Post(eAlgFieldID_Curve3, dynamics.mCurve[3]);
    Post(eAlgFieldID_Atk, values.mAttack);
    Post(eAlgFieldID_Rls, values.mRelease);
    Post(eAlgFieldID_Ratio, values.mRatio);
    Post(eAlgFieldID_UK, values.mUK);
    *ioPacket.GetPtr<float>() = dynamics.mAttackCoef;
    return AAX_SUCCESS;
}

AAX_Result DemoGain_Parameters::ResetFieldData(AAX_CFieldIndex field, void* data, uint32_t size) const {
    return AAX_Guarded({"DemoGain_Parameters", __func__}, [&] {
        if (field == eAlgFieldID_State && data != nullptr) {
            auto* const states = static_cast<SDemoGain_Alg_State*>(data);
            for (std::size_t i = 0; i < size / sizeof(SDemoGain_Alg_State); ++i) {
                DemoGain_ResetState(states[i], SampleRate());
            }
        }
        return AAX_ERROR_INVALID_FIELD_INDEX;
    });
}

bool DemoGain_Parameters::ReadValue(AAX_CParamID paramID, float& outValue) const {
    const AAX_IParameter* const parameter = mParameterManager.GetParameterByID(paramID);
    return parameter != nullptr && parameter->GetValueAsFloat(&outValue);
}

void DemoGain_Parameters::Post(AAX_CFieldIndex field, float value) {
    if (AAX_IController* const controller = Controller()) {
        controller->PostPacket(field, &value, sizeof(value));
    }
}

double DemoGain_Parameters::SampleRate() const {
    float rate = 0.0F;
    const AAX_IController* const controller = Controller();
    const bool isKnown = controller != nullptr && controller->GetSampleRate(&rate) == AAX_SUCCESS;
    return isKnown && std::isfinite(rate) && rate > 0.0F ? rate : kFallbackSampleRate;
}
