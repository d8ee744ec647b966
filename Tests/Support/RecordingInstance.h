/// The host's side of an instance and its editor; each object records its calls.
#ifndef VARNO_TESTS_SUPPORT_RECORDINGINSTANCE_H
#define VARNO_TESTS_SUPPORT_RECORDINGINSTANCE_H

#include "AAX_IACFAutomationDelegate.h"
#include "AAX_IACFController.h"
#include "AAX_IACFPageTable.h"
#include "AAX_IACFPageTableController.h"
#include "AAX_IACFTransport.h"
#include "AAX_IACFViewContainer.h"
#include "Tests/Support/FakeUnknown.h"

namespace varno {

/// Records its calls and does nothing else.
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

/// Records its calls and does nothing else.
class RecordingAutomationDelegate : public Recording<AAX_IACFAutomationDelegate> {
public:
    AAX_Result RegisterParameter(AAX_CParamID paramID) override { return note("RegisterParameter", paramID); }
    AAX_Result UnregisterParameter(AAX_CParamID paramID) override {
        return note("UnregisterParameter", paramID);
    }
    AAX_Result PostSetValueRequest(AAX_CParamID paramID, double normalizedValue) override {
        return note("PostSetValueRequest", paramID, normalizedValue);
    }
    AAX_Result PostCurrentValue(AAX_CParamID paramID, double normalizedValue) override {
        return note("PostCurrentValue", paramID, normalizedValue);
    }
    AAX_Result PostTouchRequest(AAX_CParamID paramID) override { return note("PostTouchRequest", paramID); }
    AAX_Result PostReleaseRequest(AAX_CParamID paramID) override {
        return note("PostReleaseRequest", paramID);
    }
};

/// Records its calls and does nothing else.
class RecordingTransport : public Recording<AAX_IACFTransport_V3> {
public:
    AAX_Result GetCurrentTempo(double* outTempoBPM) const override {
        return note("GetCurrentTempo", outTempoBPM);
    }
    AAX_Result GetCurrentMeter(std::int32_t* outNumerator, std::int32_t* outDenominator) const override {
        return note("GetCurrentMeter", outNumerator, outDenominator);
    }
    AAX_Result IsTransportPlaying(bool* outIsPlaying) const override {
        return note("IsTransportPlaying", outIsPlaying);
    }
    AAX_Result GetCurrentTickPosition(std::int64_t* outTicks) const override {
        return note("GetCurrentTickPosition", outTicks);
    }
    AAX_Result GetCurrentLoopPosition(bool* outIsLooping, std::int64_t* outStartTicks,
                                      std::int64_t* outEndTicks) const override {
        return note("GetCurrentLoopPosition", outIsLooping, outStartTicks, outEndTicks);
    }
    AAX_Result GetCurrentNativeSampleLocation(std::int64_t* outFrames) const override {
        return note("GetCurrentNativeSampleLocation", outFrames);
    }
    AAX_Result GetCustomTickPosition(std::int64_t* outTicks, std::int64_t frames) const override {
        return note("GetCustomTickPosition", outTicks, frames);
    }
    AAX_Result GetBarBeatPosition(std::int32_t* outBar, std::int32_t* outBeat, std::int64_t* outDisplayTicks,
                                  std::int64_t frames) const override {
        return note("GetBarBeatPosition", outBar, outBeat, outDisplayTicks, frames);
    }
    AAX_Result GetTicksPerQuarter(std::uint32_t* outTicks) const override {
        return note("GetTicksPerQuarter", outTicks);
    }
    AAX_Result GetCurrentTicksPerBeat(std::uint32_t* outTicks) const override {
        return note("GetCurrentTicksPerBeat", outTicks);
    }
    AAX_Result GetTimelineSelectionStartPosition(std::int64_t* outFrames) const override {
        return note("GetTimelineSelectionStartPosition", outFrames);
    }
    AAX_Result GetTimeCodeInfo(AAX_EFrameRate* outRate, std::int32_t* outOffset) const override {
        return note("GetTimeCodeInfo", outRate, outOffset);
    }
    AAX_Result GetFeetFramesInfo(AAX_EFeetFramesRate* outRate, std::int64_t* outOffset) const override {
        return note("GetFeetFramesInfo", outRate, outOffset);
    }
    AAX_Result IsMetronomeEnabled(std::int32_t* outIsEnabled) const override {
        return note("IsMetronomeEnabled", outIsEnabled);
    }
    AAX_Result GetHDTimeCodeInfo(AAX_EFrameRate* outRate, std::int64_t* outOffset) const override {
        return note("GetHDTimeCodeInfo", outRate, outOffset);
    }
};

/// Records its calls and does nothing else.
class RecordingPageTable : public Recording<AAX_IACFPageTable_V2> {
public:
    AAX_Result Clear() override { return note("Clear"); }
    AAX_Result Empty(std::uint8_t* outEmpty) const override { return note("Empty", outEmpty); }
    AAX_Result GetNumPages(std::int32_t* outCount) const override { return note("GetNumPages", outCount); }
    AAX_Result InsertPage(std::int32_t page) override { return note("InsertPage", page); }
    AAX_Result RemovePage(std::int32_t page) override { return note("RemovePage", page); }
    AAX_Result GetNumMappedParameterIDs(std::int32_t page, std::int32_t* outCount) const override {
        return note("GetNumMappedParameterIDs", page, outCount);
    }
    AAX_Result ClearMappedParameter(std::int32_t page, std::int32_t slot) override {
        return note("ClearMappedParameter", page, slot);
    }
    AAX_Result GetMappedParameterID(std::int32_t page, std::int32_t slot, AAX_IString* outID) const override {
        return note("GetMappedParameterID", page, slot, outID);
    }
    AAX_Result MapParameterID(AAX_CParamID paramID, std::int32_t page, std::int32_t slot) override {
        return note("MapParameterID", paramID, page, slot);
    }
    AAX_Result GetNumParametersWithNameVariations(std::int32_t* outCount) const override {
        return note("GetNumParametersWithNameVariations", outCount);
    }
    AAX_Result GetNameVariationParameterIDAtIndex(std::int32_t index, AAX_IString* outID) const override {
        return note("GetNameVariationParameterIDAtIndex", index, outID);
    }
    AAX_Result GetNumNameVariationsForParameter(AAX_CParamID paramID, std::int32_t* outCount) const override {
        return note("GetNumNameVariationsForParameter", paramID, outCount);
    }
    AAX_Result GetParameterNameVariationAtIndex(AAX_CParamID paramID, std::int32_t index,
                                                AAX_IString* outName,
                                                std::int32_t* outLength) const override {
        return note("GetParameterNameVariationAtIndex", paramID, index, outName, outLength);
    }
    AAX_Result GetParameterNameVariationOfLength(AAX_CParamID paramID, std::int32_t length,
                                                 AAX_IString* outName) const override {
        return note("GetParameterNameVariationOfLength", paramID, length, outName);
    }
    AAX_Result ClearParameterNameVariations() override { return note("ClearParameterNameVariations"); }
    AAX_Result ClearNameVariationsForParameter(AAX_CParamID paramID) override {
        return note("ClearNameVariationsForParameter", paramID);
    }
    AAX_Result SetParameterNameVariation(AAX_CParamID paramID, const AAX_IString* name,
                                         std::int32_t length) override {
        return note("SetParameterNameVariation", paramID, name, length);
    }
};

/// Records its calls and does nothing else.
class RecordingPageTableController : public Recording<AAX_IACFPageTableController_V2> {
public:
    AAX_Result CopyTableForEffect(std::int32_t manufacturerID, std::int32_t productID, std::int32_t plugInID,
                                  std::uint32_t tableType, std::int32_t tablePageSize,
                                  IACFUnknown* table) const override {
        return note("CopyTableForEffect", manufacturerID, productID, plugInID, tableType, tablePageSize,
                    table);
    }
    AAX_Result CopyTableOfLayout(const char* effectID, const char* layoutName, std::uint32_t tableType,
                                 std::int32_t tablePageSize, IACFUnknown* table) const override {
        return note("CopyTableOfLayout", effectID, layoutName, tableType, tablePageSize, table);
    }
    AAX_Result CopyTableForEffectFromFile(const char* path, AAX_ETextEncoding encoding,
                                          std::int32_t manufacturerID, std::int32_t productID,
                                          std::int32_t plugInID, std::uint32_t tableType,
                                          std::int32_t tablePageSize, IACFUnknown* table) const override {
        return note("CopyTableForEffectFromFile", path, encoding, manufacturerID, productID, plugInID,
                    tableType, tablePageSize, table);
    }
    AAX_Result CopyTableOfLayoutFromFile(const char* path, AAX_ETextEncoding encoding, const char* layoutName,
                                         std::uint32_t tableType, std::int32_t tablePageSize,
                                         IACFUnknown* table) const override {
        return note("CopyTableOfLayoutFromFile", path, encoding, layoutName, tableType, tablePageSize, table);
    }
};

/// Records its calls and does nothing else.
class RecordingViewContainer : public Recording<AAX_IACFViewContainer_V2> {
public:
    std::int32_t GetType() override { return note("GetType"); }
    void* GetPtr() override {
        note("GetPtr");
        return view;
    }
    AAX_Result GetModifiers(std::uint32_t* outModifiers) override {
        return note("GetModifiers", outModifiers);
    }
    AAX_Result SetViewSize(AAX_Point* size) override { return note("SetViewSize", size); }
    AAX_Result HandleParameterMouseDown(AAX_CParamID paramID, std::uint32_t modifiers) override {
        return note("HandleParameterMouseDown", paramID, modifiers);
    }
    AAX_Result HandleParameterMouseDrag(AAX_CParamID paramID, std::uint32_t modifiers) override {
        return note("HandleParameterMouseDrag", paramID, modifiers);
    }
    AAX_Result HandleParameterMouseUp(AAX_CParamID paramID, std::uint32_t modifiers) override {
        return note("HandleParameterMouseUp", paramID, modifiers);
    }
    AAX_Result HandleMultipleParametersMouseDown(const AAX_CParamID* paramIDs, std::uint32_t count,
                                                 std::uint32_t modifiers) override {
        return note("HandleMultipleParametersMouseDown", paramIDs, count, modifiers);
    }
    AAX_Result HandleMultipleParametersMouseDrag(const AAX_CParamID* paramIDs, std::uint32_t count,
                                                 std::uint32_t modifiers) override {
        return note("HandleMultipleParametersMouseDrag", paramIDs, count, modifiers);
    }
    AAX_Result HandleMultipleParametersMouseUp(const AAX_CParamID* paramIDs, std::uint32_t count,
                                               std::uint32_t modifiers) override {
        return note("HandleMultipleParametersMouseUp", paramIDs, count, modifiers);
    }

    /// What GetPtr returns.
    void* view = nullptr;
};

} // namespace varno

#endif
