/// Fields of the algorithm's context, by which hosts, the description and the data model address it.
#ifndef VARNO_SOURCE_DEMOGAIN_ALGFIELDS_H
#define VARNO_SOURCE_DEMOGAIN_ALGFIELDS_H

#include <cstdint>

/// Fields of the context. Field i is the i-th pointer of SDemoGain_Alg_Context.
enum EAlgFieldID : int32_t {
    eAlgFieldID_Bypass = 0,
    eAlgFieldID_GainDB,
    eAlgFieldID_GainLin,
    eAlgFieldID_VolumeDB,
    eAlgFieldID_VolumeLin,
    eAlgFieldID_HP,
    eAlgFieldID_Band,
    eAlgFieldID_Atk,
    eAlgFieldID_Rls,
    eAlgFieldID_Auto,
    eAlgFieldID_UK,
    eAlgFieldID_Hot,
    eAlgFieldID_Ratio,
    eAlgFieldID_Mix,
    eAlgFieldID_HarmSw,
    eAlgFieldID_LinkSw,
    eAlgFieldID_AttackCoef,
    eAlgFieldID_ReleaseCoef,
    eAlgFieldID_SlowCoef,
    eAlgFieldID_Threshold,
    eAlgFieldID_Curve0,
    eAlgFieldID_Curve1,
    eAlgFieldID_Curve2,
    eAlgFieldID_Curve3,
    eAlgFieldID_Meters,
    eAlgFieldID_AudioIn,
    eAlgFieldID_AudioOut,
    eAlgFieldID_BufferSize,
    eAlgFieldID_SampleRate,
    eAlgFieldID_State,
    eAlgFieldID_Count
};

/// The fields before the meters are data-in ports of one 32-bit value each.
inline constexpr int32_t kAlgNumDataInPorts = eAlgFieldID_Meters;
/// Bytes of one data-in port.
inline constexpr uint32_t kAlgDataInPortSize = 4;
/// A switch is on above this value of its field; the values of a switch are 0 and 1.
inline constexpr float kAlgSwitchThreshold = 0.5F;

#endif
