/// The host's time line, as the plug-in reads it.
#ifndef VARNO_INTERFACES_AAX_ITRANSPORT_H
#define VARNO_INTERFACES_AAX_ITRANSPORT_H

#include "AAX.h"

/// Each operation forwards its arguments to the host's of the same name (AAX_IACFTransport and its later
/// versions, which state units and codes in full). A missing first version is AAX_ERROR_NULL_OBJECT, a
/// missing later one AAX_ERROR_UNIMPLEMENTED; outputs are then left alone.
class AAX_ITransport {
public:
    virtual ~AAX_ITransport() = default;
    /// The tempo in quarter notes a minute. Returns the host's result, or AAX_ERROR_NULL_OBJECT without
    /// version 1. [any]
    virtual AAX_Result GetCurrentTempo(double* outTempoBPM) const = 0;
    /// The time signature. Returns the host's result, or AAX_ERROR_NULL_OBJECT without version 1. [any]
    virtual AAX_Result GetCurrentMeter(int32_t* outNumerator, int32_t* outDenominator) const = 0;
    /// Whether the transport runs. Returns the host's result, or AAX_ERROR_NULL_OBJECT without version 1.
    /// [any]
    virtual AAX_Result IsTransportPlaying(bool* outIsPlaying) const = 0;
    /// The position in ticks. Returns the host's result, or AAX_ERROR_NULL_OBJECT without version 1. [any]
    virtual AAX_Result GetCurrentTickPosition(int64_t* outTicks) const = 0;
    /// Whether the transport loops, and the loop in ticks. Returns the host's result, or
    /// AAX_ERROR_NULL_OBJECT without version 1. [any]
    virtual AAX_Result GetCurrentLoopPosition(bool* outIsLooping, int64_t* outStartTicks,
                                              int64_t* outEndTicks) const = 0;
    /// The position in frames. Returns the host's result, or AAX_ERROR_NULL_OBJECT without version 1. [any]
    virtual AAX_Result GetCurrentNativeSampleLocation(int64_t* outFrames) const = 0;
    /// The ticks of a position in frames. Returns the host's result, or AAX_ERROR_NULL_OBJECT without
    /// version 1. [any]
    virtual AAX_Result GetCustomTickPosition(int64_t* outTicks, int64_t frames) const = 0;
    /// Bar, beat and ticks behind it of a position in frames. Returns the host's result, or
    /// AAX_ERROR_NULL_OBJECT without version 1. [any]
    virtual AAX_Result GetBarBeatPosition(int32_t* outBar, int32_t* outBeat, int64_t* outDisplayTicks,
                                          int64_t frames) const = 0;
    /// Ticks of a quarter note. Returns the host's result, or AAX_ERROR_NULL_OBJECT without version 1. [any]
    virtual AAX_Result GetTicksPerQuarter(uint32_t* outTicks) const = 0;
    /// Ticks of a beat. Returns the host's result, or AAX_ERROR_NULL_OBJECT without version 1. [any]
    virtual AAX_Result GetCurrentTicksPerBeat(uint32_t* outTicks) const = 0;

    /// The start of the selection in frames. Returns the host's result, or AAX_ERROR_UNIMPLEMENTED without
    /// version 2. [any]
    virtual AAX_Result GetTimelineSelectionStartPosition(int64_t* outFrames) const = 0;
    /// The time code's rate and offset. Returns the host's result, or AAX_ERROR_UNIMPLEMENTED without
    /// version 2. [any]
    virtual AAX_Result GetTimeCodeInfo(AAX_EFrameRate* outRate, int32_t* outOffset) const = 0;
    /// The film rate and offset. Returns the host's result, or AAX_ERROR_UNIMPLEMENTED without version 2.
    /// [any]
    virtual AAX_Result GetFeetFramesInfo(AAX_EFeetFramesRate* outRate, int64_t* outOffset) const = 0;
    /// 1 when the metronome is on, else 0. Returns the host's result, or AAX_ERROR_UNIMPLEMENTED without
    /// version 2. [any]
    virtual AAX_Result IsMetronomeEnabled(int32_t* outIsEnabled) const = 0;

    /// The high-rate time code's rate and offset. Returns the host's result, or AAX_ERROR_UNIMPLEMENTED
    /// without version 3. [any]
    virtual AAX_Result GetHDTimeCodeInfo(AAX_EFrameRate* outRate, int64_t* outOffset) const = 0;
};

#endif
