#include "Host/HostController.h"

#include "Host/TellOutput.h"

namespace varno {

HostController::HostController(IACFUnknown& owner, InstanceState& state)
    : Facet(owner),
      mState(state) {
}

AAX_Result HostController::GetEffectID(AAX_IString* outID) const {
    check("GetEffectID");
    return tell(outID, mState.effectID.c_str());
}

AAX_Result HostController::GetSampleRate(float* outRateHz) const {
    check("GetSampleRate");
    const auto rateHz = static_cast<float>(mState.setup.sampleRateHz);
    return tell(outRateHz, mState.context->options.toldSampleRateHz.value_or(rateHz));
}

AAX_Result HostController::stemFormat(AAX_EProperty property, AAX_EStemFormat* outFormat) const {
    return tell(outFormat, static_cast<AAX_EStemFormat>(mState.nativeProperty(property)));
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
    return tell(outFrames, mState.latencyFrames);
}

AAX_Result HostController::GetCycleCount(AAX_EProperty, std::int32_t*) const {
    check("GetCycleCount");
    return AAX_ERROR_PROPERTY_UNDEFINED;
}

AAX_Result HostController::GetTODLocation(AAX_CTimeOfDay* outFrames) const {
    return tell(outFrames, mState.positionFrames.load());
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
        mState.context->monitor->report(Contract::Packets, "PostPacket of " + std::to_string(size) +
                                                               " bytes for field " + std::to_string(field) +
                                                               " refused with " + std::to_string(result));
    }
    return result;
}

AAX_Result HostController::GetCurrentMeterValue(AAX_CTypeID meterID, float* outValue) const {
    check("GetCurrentMeterValue");
    const auto tap = mState.meters.indexOf(meterID);
    return tap ? tell(outValue, mState.meters.value(*tap)) : AAX_ERROR_INVALID_METER_INDEX;
}

AAX_Result HostController::GetMeterPeakValue(AAX_CTypeID meterID, float* outValue) const {
    check("GetMeterPeakValue");
    const auto tap = mState.meters.indexOf(meterID);
    return tap ? tell(outValue, mState.meters.peak(*tap)) : AAX_ERROR_INVALID_METER_INDEX;
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
    return tap ? tell(outClipped, static_cast<std::uint8_t>(mState.meters.clipped(*tap)))
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
    return tell(outCount, static_cast<std::uint32_t>(mState.meters.ids().size()));
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
    return tell(outFrames, 0);
}

AAX_Result HostController::GetCurrentAutomationTimestamp(AAX_CTimeOfDay* outFrames) const {
    check("GetCurrentAutomationTimestamp");
    return tell(outFrames, mState.positionFrames.load());
}

AAX_Result HostController::GetHostName(AAX_IString* outName) const {
    check("GetHostName");
    return tell(outName, kHostName);
}

AAX_Result HostController::GetPlugInTargetPlatform(std::int32_t* outPlatform) const {
    check("GetPlugInTargetPlatform");
    return tell(outPlatform, AAX_eTargetPlatform_Native);
}

AAX_Result HostController::GetIsAudioSuite(std::uint8_t* outIsAudioSuite) const {
    check("GetIsAudioSuite");
    return tell(outIsAudioSuite, static_cast<std::uint8_t>(mState.setup.offline));
}

} // namespace varno
