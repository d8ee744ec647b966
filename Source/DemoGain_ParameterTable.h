/// The fourteen parameters: what they are called and what they feed. The data model is built from this table;
/// every other list of parameters is tested against it.
#ifndef VARNO_SOURCE_DEMOGAIN_PARAMETERTABLE_H
#define VARNO_SOURCE_DEMOGAIN_PARAMETERTABLE_H

#include "AAX_CEffectParameters.h"
#include "DemoGain_Alg.h"

#include <algorithm>
#include <array>
#include <iterator>

// Identifiers of the parameters that packet computations read.
inline constexpr char cDemoGain_GainID[] = "Gain";
inline constexpr char cDemoGain_VolumeID[] = "Volume";
inline constexpr char cDemoGain_AttackID[] = "Atk";
inline constexpr char cDemoGain_ReleaseID[] = "Rls";
inline constexpr char cDemoGain_UKID[] = "UK";
inline constexpr char cDemoGain_RatioID[] = "Ratio";

/// What computes the packet of a field.
enum class EDemoGain_Packet {
    SingleValue, ///< The parameter's value, unchanged.
    Gain,
    Decay,
    TimeConsts,
};

/// One parameter. All run from 0 to 1, so that real and normalized values are the same.
struct SDemoGain_Parameter {
    AAX_CParamID mIdentifier; ///< What hosts, chunks and presets call it.
    const char* mName;        ///< What people read.
    AAX_EParameterType mType; ///< A discrete one is a bool, a continuous one a float.
    float mDefault;
    uint32_t mSteps;
    AAX_CFieldIndex mField; ///< The field whose packet is computed anew when the parameter changes.
    EDemoGain_Packet mPacket;
    std::size_t mPacketOrder; ///< Place of its packet among the registrations, from 0.
};

/// Steps of a switch, of the choice among eight curves, and of a knob.
inline constexpr uint32_t kDemoGain_SwitchSteps = 2;
inline constexpr uint32_t kDemoGain_CurveSteps = 8;
inline constexpr uint32_t kDemoGain_KnobSteps = 131;

// clang-format off
/// The parameters in the order of their indices.
inline constexpr SDemoGain_Parameter kDemoGain_Parameters[] = {
    {cDefaultMasterBypassID, "Master Bypass", AAX_eParameterType_Discrete, 0.0F, kDemoGain_SwitchSteps,
     eAlgFieldID_Bypass, EDemoGain_Packet::SingleValue, 0},
    {cDemoGain_GainID, "Gain", AAX_eParameterType_Continuous, 0.5F, kDemoGain_KnobSteps,
     eAlgFieldID_GainDB, EDemoGain_Packet::Gain, 1},
    {"HP", "HP", AAX_eParameterType_Continuous, 0.0F, kDemoGain_SwitchSteps,
     eAlgFieldID_HP, EDemoGain_Packet::SingleValue, 3},
    {"Band", "Band", AAX_eParameterType_Continuous, 0.0F, kDemoGain_SwitchSteps,
     eAlgFieldID_Band, EDemoGain_Packet::SingleValue, 4},
    {cDemoGain_AttackID, "Atk", AAX_eParameterType_Continuous, 0.5F, kDemoGain_KnobSteps,
     eAlgFieldID_AttackCoef, EDemoGain_Packet::TimeConsts, 8},
    {cDemoGain_ReleaseID, "Rls", AAX_eParameterType_Continuous, 0.5F, kDemoGain_KnobSteps,
     eAlgFieldID_AttackCoef, EDemoGain_Packet::TimeConsts, 9},
    {"ASw", "Auto", AAX_eParameterType_Continuous, 0.0F, kDemoGain_SwitchSteps,
     eAlgFieldID_Auto, EDemoGain_Packet::SingleValue, 5},
    {cDemoGain_UKID, "UK", AAX_eParameterType_Continuous, 0.0F, kDemoGain_SwitchSteps,
     eAlgFieldID_AttackCoef, EDemoGain_Packet::TimeConsts, 11},
    {cDemoGain_VolumeID, "Vol", AAX_eParameterType_Continuous, 0.5F, kDemoGain_KnobSteps,
     eAlgFieldID_VolumeDB, EDemoGain_Packet::Decay, 2},
    {"Hot", "Hot", AAX_eParameterType_Continuous, 0.07F, kDemoGain_KnobSteps,
     eAlgFieldID_Hot, EDemoGain_Packet::SingleValue, 6},
    {cDemoGain_RatioID, "Ratio", AAX_eParameterType_Continuous, 0.5F, kDemoGain_CurveSteps,
     eAlgFieldID_AttackCoef, EDemoGain_Packet::TimeConsts, 10},
    {"Mix", "Mix", AAX_eParameterType_Continuous, 0.0F, kDemoGain_KnobSteps,
     eAlgFieldID_Mix, EDemoGain_Packet::SingleValue, 7},
    {"HSw", "HarmSw", AAX_eParameterType_Continuous, 0.0F, kDemoGain_SwitchSteps,
     eAlgFieldID_HarmSw, EDemoGain_Packet::SingleValue, 12},
    {"LinkSw", "LinkSw", AAX_eParameterType_Continuous, 0.0F, kDemoGain_SwitchSteps,
     eAlgFieldID_LinkSw, EDemoGain_Packet::SingleValue, 13},
};
// clang-format on

/// The parameters in the order in which their packets are registered. [any]
constexpr auto DemoGain_ParametersInPacketOrder() {
    auto ordered = std::to_array(kDemoGain_Parameters);
    std::ranges::sort(ordered, {}, &SDemoGain_Parameter::mPacketOrder);
    return ordered;
}

#endif
