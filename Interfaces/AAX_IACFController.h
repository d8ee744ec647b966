/// The host's side of a running instance.
#ifndef VARNO_INTERFACES_AAX_IACFCONTROLLER_H
#define VARNO_INTERFACES_AAX_IACFCONTROLLER_H

#include "AAX.h"
#include "AAX_IString.h"

/// Version 1 (IID_IAAXControllerV1), offered by the object handed to the data model's and the editor's
/// Initialize. Outputs are written on success only; a null output gives AAX_ERROR_NULL_ARGUMENT.
class AAX_IACFController : public IACFUnknown {
public:
    /// The identifier under which the effect was added to the collection. Returns AAX_SUCCESS. [main]
    virtual AAX_Result GetEffectID(AAX_IString* outID) const = 0;
    /// The sample rate in Hz. Returns AAX_SUCCESS. [main]
    virtual AAX_Result GetSampleRate(float* outRateHz) const = 0;
    /// The instance's input channels. Returns AAX_SUCCESS. [main]
    virtual AAX_Result GetInputStemFormat(AAX_EStemFormat* outFormat) const = 0;
    /// The instance's output channels. Returns AAX_SUCCESS. [main]
    virtual AAX_Result GetOutputStemFormat(AAX_EStemFormat* outFormat) const = 0;
    /// The latency that the host compensates for, in frames. Returns AAX_SUCCESS. [main]
    virtual AAX_Result GetSignalLatency(int32_t* outFrames) const = 0;
    /// The cycles of DSP hardware that a property allots. Returns AAX_SUCCESS, or
    /// AAX_ERROR_PROPERTY_UNDEFINED. [main]
    virtual AAX_Result GetCycleCount(AAX_EProperty property, int32_t* outCycles) const = 0;
    /// The position of the buffer being processed, in frames from the start of the time line.
    /// Returns AAX_SUCCESS. [any]
    virtual AAX_Result GetTODLocation(AAX_CTimeOfDay* outFrames) const = 0;
    /// Asks the host to compensate for `frames` of latency (0 or more). Returns AAX_SUCCESS, or
    /// AAX_ERROR_INVALID_ARGUMENT for a negative number. [main]
    virtual AAX_Result SetSignalLatency(int32_t frames) = 0;
    /// Tells the cycles of DSP hardware that `count` properties need; the arrays are borrowed.
    /// Returns AAX_SUCCESS, or a failure code where there is no such hardware. [main]
    virtual AAX_Result SetCycleCount(AAX_EProperty* properties, int32_t* cycles, int32_t count) = 0;
    /// Posts `size` bytes (copied) for a data-in port; they reach the context before the next buffer, the
    /// latest packet of a field winning. Returns AAX_SUCCESS; AAX_ERROR_INVALID_FIELD_INDEX for a field that
    /// is no data-in port; AAX_ERROR_INVALID_ARGUMENT for a size other than the port's;
    /// AAX_ERROR_NULL_ARGUMENT. [main]
    virtual AAX_Result PostPacket(AAX_CFieldIndex field, const void* payload, uint32_t size) = 0;
    /// The current value of a meter of the algorithm (1.0 is its full scale), by the four-character
    /// identifier of its tap. Returns AAX_SUCCESS, or AAX_ERROR_INVALID_METER_INDEX for an unknown one.
    /// [main]
    virtual AAX_Result GetCurrentMeterValue(AAX_CTypeID meterID, float* outValue) const = 0;
    /// The largest value of a meter since its peak was cleared. Returns AAX_SUCCESS, or
    /// AAX_ERROR_INVALID_METER_INDEX. [main]
    virtual AAX_Result GetMeterPeakValue(AAX_CTypeID meterID, float* outValue) const = 0;
    /// Clears a meter's peak. Returns AAX_SUCCESS, or AAX_ERROR_INVALID_METER_INDEX. [main]
    virtual AAX_Result ClearMeterPeakValue(AAX_CTypeID meterID) const = 0;
    /// 1 when a meter has been above full scale since its clip was cleared, else 0. Returns AAX_SUCCESS, or
    /// AAX_ERROR_INVALID_METER_INDEX. [main]
    virtual AAX_Result GetMeterClipped(AAX_CTypeID meterID, uint8_t* outClipped) const = 0;
    /// Clears a meter's clip. Returns AAX_SUCCESS, or AAX_ERROR_INVALID_METER_INDEX. [main]
    virtual AAX_Result ClearMeterClipped(AAX_CTypeID meterID) const = 0;
    /// The number of meter taps of the algorithm. Returns AAX_SUCCESS. [main]
    virtual AAX_Result GetMeterCount(uint32_t* outCount) const = 0;
    /// Takes the next MIDI message that the algorithm left for `*port`. Returns AAX_SUCCESS, or a failure
    /// code when there is none. [main]
    virtual AAX_Result GetNextMIDIPacket(AAX_CFieldIndex* port, AAX_CMidiPacket* outPacket) = 0;

protected:
    ~AAX_IACFController() = default;
};

/// Version 2 (IID_IAAXControllerV2).
class AAX_IACFController_V2 : public AAX_IACFController {
public:
    /// Hands a notification of `size` bytes (borrowed; null with size 0) to the other objects of the
    /// instance. Returns AAX_SUCCESS, or AAX_ERROR_NOTIFICATION_FAILED. [main]
    virtual AAX_Result SendNotification(AAX_CTypeID type, const void* data, uint32_t size) = 0;
    /// The latency of a hybrid render in frames. Returns AAX_SUCCESS. [main]
    virtual AAX_Result GetHybridSignalLatency(int32_t* outFrames) const = 0;
    /// The time of the automation being answered, in frames from the start of the time line.
    /// Returns AAX_SUCCESS. [main]
    virtual AAX_Result GetCurrentAutomationTimestamp(AAX_CTimeOfDay* outFrames) const = 0;
    /// The host's name and version as text. Returns AAX_SUCCESS. [main]
    virtual AAX_Result GetHostName(AAX_IString* outName) const = 0;

protected:
    ~AAX_IACFController_V2() = default;
};

/// Version 3 (IID_IAAXControllerV3).
class AAX_IACFController_V3 : public AAX_IACFController_V2 {
public:
    /// Where the algorithm runs, an AAX_ETargetPlatform. Returns AAX_SUCCESS. [main]
    virtual AAX_Result GetPlugInTargetPlatform(int32_t* outPlatform) const = 0;
    /// 1 when the instance renders offline, else 0. Returns AAX_SUCCESS. [main]
    virtual AAX_Result GetIsAudioSuite(uint8_t* outIsAudioSuite) const = 0;

protected:
    ~AAX_IACFController_V3() = default;
};

#endif
