/// The data model of the effect.
#ifndef VARNO_SOURCE_DEMOGAIN_PARAMETERS_H
#define VARNO_SOURCE_DEMOGAIN_PARAMETERS_H

#include "AAX_CEffectParameters.h"

struct SDemoGain_Parameter;

/// Owns the parameters of one instance (DemoGain_ParameterTable.h) and turns them into the numbers that the
/// routine reads.
class DemoGain_Parameters : public AAX_CEffectParameters {
public:
    /// Makes an instance with no reference held yet; the release of its last one destroys it. Null when that
    /// fails, with one trace line. [main]
    static AAX_CEffectParameters* Create();

    /// Fills the routine's private state (field eAlgFieldID_State) with starting values: as many whole
    /// records as fit into `size` bytes at `data` (the caller's, aligned for floats). Other fields have none.
    /// Returns AAX_ERROR_INVALID_FIELD_INDEX also when the state has been filled; the code of what the host
    /// throws when it is asked for the sample rate. [any]
    AAX_Result ResetFieldData(AAX_CFieldIndex field, void* data, uint32_t size) const override;

    /// Packet of the input gain in dB; posts the linear gain beside it. Returns AAX_SUCCESS; a parameter that
    /// cannot be read leaves the packet alone and posts nothing. [main]
    AAX_Result UpdatePacket_Gain(AAX_CPacket& ioPacket);
    /// As UpdatePacket_Gain, for the output volume, in spite of its name. [main]
    AAX_Result UpdatePacket_Decay(AAX_CPacket& ioPacket);
    /// Packet of the attack coefficient; posts the other coefficients, the gain curve and the parameters
    /// behind them beside it. Returns AAX_SUCCESS; a parameter that cannot be read leaves the packet alone
    /// and posts nothing. [main]
    AAX_Result UpdatePacket_TimeConsts(AAX_CPacket& ioPacket);

protected:
    /// Builds the parameters and registers their packets. Returns AAX_SUCCESS. Throws std::bad_alloc. [main]
    AAX_Result EffectInit() override;

private:
    void RegisterPacket(const SDemoGain_Parameter& row);
    void UpdateLevelPacket(AAX_CPacket& ioPacket, AAX_CParamID paramID, AAX_CFieldIndex linearField);
    bool ReadValue(AAX_CParamID paramID, float& outValue) const;
    void Post(AAX_CFieldIndex field, float value);
    double SampleRate() const;
};

#endif
