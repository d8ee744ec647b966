#include "Host/HostController.h"

#include "Host/HostObject.h"
#include "Host/InstanceHost.h"

#include <cmath>

namespace varno {

namespace {

constexpr std::int64_t kTicksPerBeat = static_cast<std::int64_t>(kTicksPerQuarter) * 4 / kMeterDenominator;

// Quotient rounded down, so that positions before the start count on.
constexpr std::int64_t floorDivide(std::int64_t dividend, std::int64_t divisor) {
    return dividend >= 0 ? dividend / divisor : -((-dividend + divisor - 1) / divisor);
}

} // namespace

HostController::HostController(IACFUnknown& owner, InstanceState& state)
    : Facet(owner),
      mState(state) {
}

void HostController::check(const char* operation) const {
    mState.gate.check(operation);
}

AAX_Result HostController::GetEffectID(AAX_IString* outID) const {
    check("GetEffectID");
    return writeOutput(outID, mState.effectID.c_str());
}

AAX_Result HostController::GetSampleRate(float* outRateHz) const {
    check("GetSampleRate");
    return writeOutput(outRateHz, static_cast<float>(mState.setup.sampleRateHz));
}

AAX_Result HostController::stemFormat(AAX_EProperty property, AAX_EStemFormat* outFormat) const {
    return writeOutput(outFormat, static_cast<AAX_EStemFormat>(mState.nativeProperty(property)));
}

AAX_Result HostController::GetInputStemFormat(AAX_EStemFormat* outFormat) const {
    check("GetInputStemFormat");
    return stemFormat(AAX_eProperty_InputStemFormat, outFormat);
}

AAX_Result HostController::GetOutputStemFormat(AAX_EStemFormat* outFormat) const {
    check("GetOutputStemFormat");
    return stemFormat(AAX_eProperty_OutputStemFormat, outFormat);
}

AAX_Result HostController::GetSignalLatency(std::int32_t* outFrames) const {
    check("GetSignalLatency");
    return writeOutput(outFrames, mState.latencyFrames);
}

AAX_Result HostController::GetCycleCount(AAX_EProperty, std::int32_t*) const {
    check("GetCycleCount");
    return AAX_ERROR_PROPERTY_UNDEFINED;
}

AAX_Result HostController::GetTODLocation(AAX_CTimeOfDay* outFrames) const {
    return writeOutput(outFrames, mState.positionFrames.load());
}

AAX_Result HostController::SetSignalLatency(std::int32_t frames) {
    check("SetSignalLatency");
    if (frames < 0) {
        return AAX_ERROR_INVALID_ARGUMENT;
    }
    mState.latencyFrames = frames;
    return AAX_SUCCESS;
}

AAX_Result HostController::SetCycleCount(AAX_EProperty*, std::int32_t*, std::int32_t) {
    check("SetCycleCount");
    return AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result HostController::PostPacket(AAX_CFieldIndex field, const void* payload, std::uint32_t size) {
    check("PostPacket");
    const AAX_Result result = mState.packets.post(field, payload, size);
    if (result != AAX_SUCCESS) {
        mState.context->monitor->report(Contract::kPackets, "PostPacket of " + std::to_string(size) +
                                                                " bytes for field " + std::to_string(field) +
                                                                " refused with " + std::to_string(result));
    }
    return result;
}

AAX_Result HostController::GetCurrentMeterValue(AAX_CTypeID meterID, float* outValue) const {
    check("GetCurrentMeterValue");
    const auto tap = mState.meters.indexOf(meterID);
    return tap ? writeOutput(outValue, mState.meters.value(*tap)) : AAX_ERROR_INVALID_METER_INDEX;
}

AAX_Result HostController::GetMeterPeakValue(AAX_CTypeID meterID, float* outValue) const {
    check("GetMeterPeakValue");
    const auto tap = mState.meters.indexOf(meterID);
    return tap ? writeOutput(outValue, mState.meters.peak(*tap)) : AAX_ERROR_INVALID_METER_INDEX;
}

AAX_Result HostController::ClearMeterPeakValue(AAX_CTypeID meterID) const {
    check("ClearMeterPeakValue");
    const auto tap = mState.meters.indexOf(meterID);
    if (!tap) {
        return AAX_ERROR_INVALID_METER_INDEX;
    }
    mState.meters.clearPeak(*tap);
    return AAX_SUCCESS;
}

AAX_Result HostController::GetMeterClipped(AAX_CTypeID meterID, std::uint8_t* outClipped) const {
    check("GetMeterClipped");
    const auto tap = mState.meters.indexOf(meterID);
    return tap ? writeOutput(outClipped, static_cast<std::uint8_t>(mState.meters.clipped(*tap)))
               : AAX_ERROR_INVALID_METER_INDEX;
}

AAX_Result HostController::ClearMeterClipped(AAX_CTypeID meterID) const {
    check("ClearMeterClipped");
    const auto tap = mState.meters.indexOf(meterID);
    if (!tap) {
        return AAX_ERROR_INVALID_METER_INDEX;
    }
    mState.meters.clearClip(*tap);
    return AAX_SUCCESS;
}

AAX_Result HostController::GetMeterCount(std::uint32_t* outCount) const {
    check("GetMeterCount");
    return writeOutput(outCount, static_cast<std::uint32_t>(mState.meters.ids().size()));
}

AAX_Result HostController::GetNextMIDIPacket(AAX_CFieldIndex*, AAX_CMidiPacket*) {
    check("GetNextMIDIPacket");
    return AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result HostController::SendNotification(AAX_CTypeID type, const void* data, std::uint32_t size) {
    check("SendNotification");
    return mState.notify ? mState.notify(type, data, size) : AAX_ERROR_NOTIFICATION_FAILED;
}

AAX_Result HostController::GetHybridSignalLatency(std::int32_t* outFrames) const {
    check("GetHybridSignalLatency");
    return writeOutput(outFrames, 0);
}

AAX_Result HostController::GetCurrentAutomationTimestamp(AAX_CTimeOfDay* outFrames) const {
    check("GetCurrentAutomationTimestamp");
    return writeOutput(outFrames, mState.positionFrames.load());
}

AAX_Result HostController::GetHostName(AAX_IString* outName) const {
    check("GetHostName");
    return writeOutput(outName, kHostName);
}

AAX_Result HostController::GetPlugInTargetPlatform(std::int32_t* outPlatform) const {
    check("GetPlugInTargetPlatform");
    return writeOutput(outPlatform, AAX_eTargetPlatform_Native);
}

AAX_Result HostController::GetIsAudioSuite(std::uint8_t* outIsAudioSuite) const {
    check("GetIsAudioSuite");
    return writeOutput(outIsAudioSuite, static_cast<std::uint8_t>(mState.setup.offline));
}

HostTransport::HostTransport(IACFUnknown& owner, InstanceState& state)
    : Facet(owner),
      mState(state) {
}

std::int64_t HostTransport::ticksAt(std::int64_t frames) const {
    const double ticksPerFrame = kTempoBPM / 60.0 * kTicksPerQuarter / mState.setup.sampleRateHz;
    return static_cast<std::int64_t>(std::floor(static_cast<double>(frames) * ticksPerFrame));
}

AAX_Result HostTransport::GetCurrentTempo(double* outTempoBPM) const {
    return writeOutput(outTempoBPM, kTempoBPM);
}

AAX_Result HostTransport::GetCurrentMeter(std::int32_t* outNumerator, std::int32_t* outDenominator) const {
    return writeOutput(outNumerator, kMeterNumerator, outDenominator, kMeterDenominator);
}

AAX_Result HostTransport::IsTransportPlaying(bool* outIsPlaying) const {
    return writeOutput(outIsPlaying, true);
}

AAX_Result HostTransport::GetCurrentTickPosition(std::int64_t* outTicks) const {
    return writeOutput(outTicks, ticksAt(mState.positionFrames.load()));
}

AAX_Result HostTransport::GetCurrentLoopPosition(bool* outIsLooping, std::int64_t* outStartTicks,
                                                 std::int64_t* outEndTicks) const {
    if (outIsLooping == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    const AAX_Result result = writeOutput(outStartTicks, 0, outEndTicks, 0);
    if (result == AAX_SUCCESS) {
        *outIsLooping = false;
    }
    return result;
}

AAX_Result HostTransport::GetCurrentNativeSampleLocation(std::int64_t* outFrames) const {
    return writeOutput(outFrames, mState.positionFrames.load());
}

AAX_Result HostTransport::GetCustomTickPosition(std::int64_t* outTicks, std::int64_t frames) const {
    return writeOutput(outTicks, ticksAt(frames));
}

AAX_Result HostTransport::GetBarBeatPosition(std::int32_t* outBar, std::int32_t* outBeat,
                                             std::int64_t* outDisplayTicks, std::int64_t frames) const {
    if (outDisplayTicks == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    const std::int64_t ticks = ticksAt(frames);
    const std::int64_t beats = floorDivide(ticks, kTicksPerBeat);
    const std::int64_t bars = floorDivide(beats, kMeterNumerator);
    const AAX_Result result = writeOutput(outBar, static_cast<std::int32_t>(bars + 1), outBeat,
                                          static_cast<std::int32_t>(beats - bars * kMeterNumerator + 1));
    if (result == AAX_SUCCESS) {
        *outDisplayTicks = ticks - beats * kTicksPerBeat;
    }
    return result;
}

AAX_Result HostTransport::GetTicksPerQuarter(std::uint32_t* outTicks) const {
    return writeOutput(outTicks, kTicksPerQuarter);
}

AAX_Result HostTransport::GetCurrentTicksPerBeat(std::uint32_t* outTicks) const {
    return writeOutput(outTicks, static_cast<std::uint32_t>(kTicksPerBeat));
}

AAX_Result HostTransport::GetTimelineSelectionStartPosition(std::int64_t* outFrames) const {
    return writeOutput(outFrames, 0);
}

AAX_Result HostTransport::GetTimeCodeInfo(AAX_EFrameRate* outRate, std::int32_t* outOffset) const {
    return writeOutput(outRate, AAX_eFrameRate_Undeclared, outOffset, 0);
}

AAX_Result HostTransport::GetFeetFramesInfo(AAX_EFeetFramesRate* outRate, std::int64_t* outOffset) const {
    return writeOutput(outRate, AAX_eFeetFramesRate_24, outOffset, 0);
}

AAX_Result HostTransport::IsMetronomeEnabled(std::int32_t* outIsEnabled) const {
    return writeOutput(outIsEnabled, 0);
}

AAX_Result HostTransport::GetHDTimeCodeInfo(AAX_EFrameRate* outRate, std::int64_t* outOffset) const {
    return writeOutput(outRate, AAX_eFrameRate_Undeclared, outOffset, 0);
}

} // namespace varno
