/// The host's side of an instance in all versions, for tests.
#ifndef VARNO_TESTS_SUPPORT_RECORDINGCONTROLLER_H
#define VARNO_TESTS_SUPPORT_RECORDINGCONTROLLER_H

#include "AAX_IACFController.h"
#include "Tests/Support/Recording.h"

namespace varno {

/// Notes its calls and does nothing else.
class RecordingController : public Recording<AAX_IACFController_V3> {
public:
    AAX_Result GetEffectID(AAX_IString* outID) const override { return note("GetEffectID", outID); }
    AAX_Result GetSampleRate(float* outRateHz) const override { return note("GetSampleRate", outRateHz); }
    AAX_Result GetInputStemFormat(AAX_EStemFormat* outFormat) const override {
        return note("GetInputStemFormat", outFormat);
    }
    AAX_Result GetOutputStemFormat(AAX_EStemFormat* outFormat) const override {
        return note("GetOutputStemFormat", outFormat);
    }
    AAX_Result GetSignalLatency(std::int32_t* outFrames) const override {
        return note("GetSignalLatency", outFrames);
    }
    AAX_Result GetCycleCount(AAX_EProperty property, std::int32_t* outCycles) const override {
        return note("GetCycleCount", property, outCycles);
    }
    AAX_Result GetTODLocation(AAX_CTimeOfDay* outFrames) const override {
        return note("GetTODLocation", outFrames);
    }
    AAX_Result SetSignalLatency(std::int32_t frames) override { return note("SetSignalLatency", frames); }
    AAX_Result SetCycleCount(AAX_EProperty* properties, std::int32_t* cycles, std::int32_t count) override {
        return note("SetCycleCount", properties, cycles, count);
    }
    AAX_Result PostPacket(AAX_CFieldIndex field, const void* payload, std::uint32_t size) override {
        return note("PostPacket", field, payload, size);
    }
    AAX_Result GetCurrentMeterValue(AAX_CTypeID meterID, float* outValue) const override {
        return note("GetCurrentMeterValue", meterID, outValue);
    }
    AAX_Result GetMeterPeakValue(AAX_CTypeID meterID, float* outValue) const override {
        return note("GetMeterPeakValue", meterID, outValue);
    }
    AAX_Result ClearMeterPeakValue(AAX_CTypeID meterID) const override {
        return note("ClearMeterPeakValue", meterID);
    }
    AAX_Result GetMeterClipped(AAX_CTypeID meterID, std::uint8_t* outClipped) const override {
        return note("GetMeterClipped", meterID, outClipped);
    }
    AAX_Result ClearMeterClipped(AAX_CTypeID meterID) const override {
        return note("ClearMeterClipped", meterID);
    }
    AAX_Result GetMeterCount(std::uint32_t* outCount) const override {
        return note("GetMeterCount", outCount);
    }
    AAX_Result GetNextMIDIPacket(AAX_CFieldIndex* port, AAX_CMidiPacket* outPacket) override {
        return note("GetNextMIDIPacket", port, outPacket);
    }
    AAX_Result SendNotification(AAX_CTypeID type, const void* data, std::uint32_t size) override {
        return note("SendNotification", type, data, size);
    }
    AAX_Result GetHybridSignalLatency(std::int32_t* outFrames) const override {
        return note("GetHybridSignalLatency", outFrames);
    }
    AAX_Result GetCurrentAutomationTimestamp(AAX_CTimeOfDay* outFrames) const override {
        return note("GetCurrentAutomationTimestamp", outFrames);
    }
    AAX_Result GetHostName(AAX_IString* outName) const override { return note("GetHostName", outName); }
    AAX_Result GetPlugInTargetPlatform(std::int32_t* outPlatform) const override {
        return note("GetPlugInTargetPlatform", outPlatform);
    }
    AAX_Result GetIsAudioSuite(std::uint8_t* outIsAudioSuite) const override {
        return note("GetIsAudioSuite", outIsAudioSuite);
    }
};

} // namespace varno

#endif
