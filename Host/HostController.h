/// The host's side of a running instance.
#ifndef VARNO_HOST_HOSTCONTROLLER_H
#define VARNO_HOST_HOSTCONTROLLER_H

#include "AAX_IACFController.h"
#include "Host/HostObject.h"
#include "Host/InstanceState.h"

namespace varno {

/// The host's name and version, as told to modules.
inline constexpr const char* kHostName = "Varno Host 1.0";

/// Controller versions 1 to 3. This host runs everything natively and has neither MIDI nor DSP hardware:
/// their operations fail.
class HostController final : public Facet<AAX_IACFController_V3> {
public:
    HostController(IACFUnknown& owner, InstanceState& state);

    AAX_Result GetEffectID(AAX_IString* outID) const override;
    AAX_Result GetSampleRate(float* outRateHz) const override;
    AAX_Result GetInputStemFormat(AAX_EStemFormat* outFormat) const override;
    AAX_Result GetOutputStemFormat(AAX_EStemFormat* outFormat) const override;
    AAX_Result GetSignalLatency(std::int32_t* outFrames) const override;
    AAX_Result GetCycleCount(AAX_EProperty property, std::int32_t* outCycles) const override;
    AAX_Result GetTODLocation(AAX_CTimeOfDay* outFrames) const override;
    AAX_Result SetSignalLatency(std::int32_t frames) override;
    AAX_Result SetCycleCount(AAX_EProperty* properties, std::int32_t* cycles, std::int32_t count) override;
    AAX_Result PostPacket(AAX_CFieldIndex field, const void* payload, std::uint32_t size) override;
    AAX_Result GetCurrentMeterValue(AAX_CTypeID meterID, float* outValue) const override;
    AAX_Result GetMeterPeakValue(AAX_CTypeID meterID, float* outValue) const override;
    AAX_Result ClearMeterPeakValue(AAX_CTypeID meterID) const override;
    AAX_Result GetMeterClipped(AAX_CTypeID meterID, std::uint8_t* outClipped) const override;
    AAX_Result ClearMeterClipped(AAX_CTypeID meterID) const override;
    AAX_Result GetMeterCount(std::uint32_t* outCount) const override;
    AAX_Result GetNextMIDIPacket(AAX_CFieldIndex* port, AAX_CMidiPacket* outPacket) override;
    AAX_Result SendNotification(AAX_CTypeID type, const void* data, std::uint32_t size) override;
    AAX_Result GetHybridSignalLatency(std::int32_t* outFrames) const override;
    AAX_Result GetCurrentAutomationTimestamp(AAX_CTimeOfDay* outFrames) const override;
    AAX_Result GetHostName(AAX_IString* outName) const override;
    AAX_Result GetPlugInTargetPlatform(std::int32_t* outPlatform) const override;
    AAX_Result GetIsAudioSuite(std::uint8_t* outIsAudioSuite) const override;

private:
    void check(const char* operation) const { mState.gate.check(operation); }
    AAX_Result stemFormat(AAX_EProperty property, AAX_EStemFormat* outFormat) const;

    InstanceState& mState;
};

} // namespace varno

#endif
