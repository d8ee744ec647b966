/// The host's side of a running instance, as the plug-in calls it.
#ifndef VARNO_INTERFACES_AAX_ICONTROLLER_H
#define VARNO_INTERFACES_AAX_ICONTROLLER_H

#include "AAX.h"
#include "AAX_IACFPageTable.h"
#include "AAX_IPageTable.h"
#include "AAX_IString.h"
#include "ACF/ACFPtr.h"

#include <memory>

/// Each operation forwards its arguments to the host's of the same name (AAX_IACFController and its later
/// versions, which state units and codes in full). A missing first version is AAX_ERROR_NULL_OBJECT, a
/// missing later one AAX_ERROR_UNIMPLEMENTED, deliberately: the one is a host without an instance, the other
/// an older host. Outputs are then left alone. Nothing here throws on the host's account.
class AAX_IController {
public:
    virtual ~AAX_IController() = default;
    /// The effect's identifier. Returns the host's result, or AAX_ERROR_NULL_OBJECT without version 1. [main]
    virtual AAX_Result GetEffectID(AAX_IString* outID) const = 0;
    /// The sample rate in Hz. Returns the host's result, or AAX_ERROR_NULL_OBJECT without version 1. [main]
    virtual AAX_Result GetSampleRate(float* outRateHz) const = 0;
    /// The input channels. Returns the host's result, or AAX_ERROR_NULL_OBJECT without version 1. [main]
    virtual AAX_Result GetInputStemFormat(AAX_EStemFormat* outFormat) const = 0;
    /// The output channels. Returns the host's result, or AAX_ERROR_NULL_OBJECT without version 1. [main]
    virtual AAX_Result GetOutputStemFormat(AAX_EStemFormat* outFormat) const = 0;
    /// The compensated latency in frames. Returns the host's result, or AAX_ERROR_NULL_OBJECT without
    /// version 1. [main]
    virtual AAX_Result GetSignalLatency(int32_t* outFrames) const = 0;
    /// The cycles of DSP hardware that a property allots. Returns the host's result, or AAX_ERROR_NULL_OBJECT
    /// without version 1. [main]
    virtual AAX_Result GetCycleCount(AAX_EProperty property, int32_t* outCycles) const = 0;
    /// The position of the current buffer in frames. Returns the host's result, or AAX_ERROR_NULL_OBJECT
    /// without version 1. [any]
    virtual AAX_Result GetTODLocation(AAX_CTimeOfDay* outFrames) const = 0;
    /// Asks for a compensated latency in frames. Returns the host's result, or AAX_ERROR_NULL_OBJECT without
    /// version 1. [main]
    virtual AAX_Result SetSignalLatency(int32_t frames) = 0;
    /// Tells the cycles of DSP hardware that `count` properties need (arrays borrowed). Returns the host's
    /// result, or AAX_ERROR_NULL_OBJECT without version 1. [main]
    virtual AAX_Result SetCycleCount(AAX_EProperty* properties, int32_t* cycles, int32_t count) = 0;
    /// Posts `size` bytes (copied) for a context field. Returns the host's result, or AAX_ERROR_NULL_OBJECT
    /// without version 1. [main]
    virtual AAX_Result PostPacket(AAX_CFieldIndex field, const void* payload, uint32_t size) = 0;
    /// The current value of a meter, full scale 1.0. Returns the host's result, or AAX_ERROR_NULL_OBJECT
    /// without version 1. [main]
    virtual AAX_Result GetCurrentMeterValue(AAX_CTypeID meterID, float* outValue) const = 0;
    /// The peak of a meter, full scale 1.0. Returns the host's result, or AAX_ERROR_NULL_OBJECT without
    /// version 1. [main]
    virtual AAX_Result GetMeterPeakValue(AAX_CTypeID meterID, float* outValue) const = 0;
    /// Clears a meter's peak. Returns the host's result, or AAX_ERROR_NULL_OBJECT without version 1. [main]
    virtual AAX_Result ClearMeterPeakValue(AAX_CTypeID meterID) const = 0;
    /// 1 when a meter has clipped, else 0. Returns the host's result, or AAX_ERROR_NULL_OBJECT without
    /// version 1. [main]
    virtual AAX_Result GetMeterClipped(AAX_CTypeID meterID, uint8_t* outClipped) const = 0;
    /// Clears a meter's clip. Returns the host's result, or AAX_ERROR_NULL_OBJECT without version 1. [main]
    virtual AAX_Result ClearMeterClipped(AAX_CTypeID meterID) const = 0;
    /// The number of meter taps. Returns the host's result, or AAX_ERROR_NULL_OBJECT without version 1.
    /// [main]
    virtual AAX_Result GetMeterCount(uint32_t* outCount) const = 0;
    /// Takes the next MIDI message of `*port`. Returns the host's result, or AAX_ERROR_NULL_OBJECT without
    /// version 1. [main]
    virtual AAX_Result GetNextMIDIPacket(AAX_CFieldIndex* port, AAX_CMidiPacket* outPacket) = 0;

    /// Sends `size` bytes (borrowed) to the other objects of the instance. Returns the host's result, or
    /// AAX_ERROR_UNIMPLEMENTED without version 2. [main]
    virtual AAX_Result SendNotification(AAX_CTypeID type, const void* data, uint32_t size) = 0;
    /// Sends a notification without data. Returns the host's result, or AAX_ERROR_UNIMPLEMENTED without
    /// version 2. [main]
    virtual AAX_Result SendNotification(AAX_CTypeID type) = 0;
    /// The latency of a hybrid render in frames. Returns the host's result, or AAX_ERROR_UNIMPLEMENTED
    /// without version 2. [main]
    virtual AAX_Result GetHybridSignalLatency(int32_t* outFrames) const = 0;
    /// The time of the automation being answered, in frames. Returns the host's result, or
    /// AAX_ERROR_UNIMPLEMENTED and a time of 0 without version 2. [main]
    virtual AAX_Result GetCurrentAutomationTimestamp(AAX_CTimeOfDay* outFrames) const = 0;
    /// The host's name and version. Returns the host's result, or AAX_ERROR_UNIMPLEMENTED without version 2.
    /// [main]
    virtual AAX_Result GetHostName(AAX_IString* outName) const = 0;

    /// Where the algorithm runs, an AAX_ETargetPlatform. Returns the host's result, or
    /// AAX_ERROR_UNIMPLEMENTED without version 3. [main]
    virtual AAX_Result GetPlugInTargetPlatform(int32_t* outPlatform) const = 0;
    /// 1 when the instance renders offline, else 0. Returns the host's result, or AAX_ERROR_UNIMPLEMENTED
    /// without version 3. [main]
    virtual AAX_Result GetIsAudioSuite(uint8_t* outIsAudioSuite) const = 0;

    /// An empty page table, owned by the caller; null when the host cannot make one. [main]
    virtual ACFPtr<AAX_IACFPageTable_V2> CreatePageTable() const = 0;
    /// A copy of the host's page table of an effect (four-character identifiers and table type, controls of a
    /// page), owned by the caller; null when the host has none. [main]
    virtual std::unique_ptr<AAX_IPageTable> CreateTableCopyForEffect(int32_t manufacturerID,
                                                                     int32_t productID, int32_t plugInID,
                                                                     uint32_t tableType,
                                                                     int32_t tablePageSize) const = 0;
    /// A copy of the host's page table of a named layout of the effect `effectID` (texts borrowed), owned by
    /// the caller; null when the host has none. [main]
    virtual std::unique_ptr<AAX_IPageTable> CreateTableCopyForLayout(const char* effectID,
                                                                     const char* layoutName,
                                                                     uint32_t tableType,
                                                                     int32_t tablePageSize) const = 0;
    /// As CreateTableCopyForEffect, from the file at `path` (borrowed), in the given encoding. The table is
    /// owned by the caller; null when the host cannot read it. [main]
    virtual std::unique_ptr<AAX_IPageTable>
    CreateTableCopyForEffectFromFile(const char* path, AAX_ETextEncoding encoding, int32_t manufacturerID,
                                     int32_t productID, int32_t plugInID, uint32_t tableType,
                                     int32_t tablePageSize) const = 0;
    /// As CreateTableCopyForLayout, from the file at `path` (borrowed), in the given encoding. The table is
    /// owned by the caller; null when the host cannot read it. [main]
    virtual std::unique_ptr<AAX_IPageTable>
    CreateTableCopyForLayoutFromFile(const char* path, AAX_ETextEncoding encoding, const char* layoutName,
                                     uint32_t tableType, int32_t tablePageSize) const = 0;
};

#endif
