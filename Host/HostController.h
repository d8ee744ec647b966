/// What a running instance can query from its host: controller and transport.
#ifndef VARNO_HOST_HOSTCONTROLLER_H
#define VARNO_HOST_HOSTCONTROLLER_H

#include "AAX_IACFController.h"
#include "AAX_IACFTransport.h"
#include "Host/HostObject.h"

namespace varno {

struct InstanceState;

/// The host's name and version, as reported to modules.
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
    void check(const char* operation) const;
    AAX_Result stemFormat(AAX_EProperty property, AAX_EStemFormat* outFormat) const;

    InstanceState& mState;
};

inline constexpr double kTempoBPM = 120.0;
inline constexpr std::int32_t kMeterNumerator = 4;
inline constexpr std::int32_t kMeterDenominator = 4;
/// Divides by every common note value and by 2, 3 and 5, and keeps a tick below one frame at 384 kHz.
inline constexpr std::uint32_t kTicksPerQuarter = 960000;

/// Transport versions 1 to 3: a time line of 120 quarter notes a minute in 4/4 that always runs and stands
/// where the render stands. No loop, no selection, no time code, no metronome. [any]
class HostTransport final : public Facet<AAX_IACFTransport_V3> {
public:
    HostTransport(IACFUnknown& owner, InstanceState& state);

    AAX_Result GetCurrentTempo(double* outTempoBPM) const override;
    AAX_Result GetCurrentMeter(std::int32_t* outNumerator, std::int32_t* outDenominator) const override;
    AAX_Result IsTransportPlaying(bool* outIsPlaying) const override;
    AAX_Result GetCurrentTickPosition(std::int64_t* outTicks) const override;
    AAX_Result GetCurrentLoopPosition(bool* outIsLooping, std::int64_t* outStartTicks,
                                      std::int64_t* outEndTicks) const override;
    AAX_Result GetCurrentNativeSampleLocation(std::int64_t* outFrames) const override;
    AAX_Result GetCustomTickPosition(std::int64_t* outTicks, std::int64_t frames) const override;
    AAX_Result GetBarBeatPosition(std::int32_t* outBar, std::int32_t* outBeat, std::int64_t* outDisplayTicks,
                                  std::int64_t frames) const override;
    AAX_Result GetTicksPerQuarter(std::uint32_t* outTicks) const override;
    AAX_Result GetCurrentTicksPerBeat(std::uint32_t* outTicks) const override;
    AAX_Result GetTimelineSelectionStartPosition(std::int64_t* outFrames) const override;
    AAX_Result GetTimeCodeInfo(AAX_EFrameRate* outRate, std::int32_t* outOffset) const override;
    AAX_Result GetFeetFramesInfo(AAX_EFeetFramesRate* outRate, std::int64_t* outOffset) const override;
    AAX_Result IsMetronomeEnabled(std::int32_t* outIsEnabled) const override;
    AAX_Result GetHDTimeCodeInfo(AAX_EFrameRate* outRate, std::int64_t* outOffset) const override;

private:
    std::int64_t ticksAt(std::int64_t frames) const;

    InstanceState& mState;
};

} // namespace varno

#endif
