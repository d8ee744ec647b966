/// The host's time line.
#ifndef VARNO_INTERFACES_AAX_IACFTRANSPORT_H
#define VARNO_INTERFACES_AAX_IACFTRANSPORT_H

#include "AAX.h"

/// Version 1 (IID_IAAXTransportV1), offered by the same object as the controller. A tick is a fraction of a
/// quarter note (GetTicksPerQuarter). Outputs are written on success only; a null output gives
/// AAX_ERROR_NULL_ARGUMENT.
class AAX_IACFTransport : public IACFUnknown {
public:
    /// The tempo in quarter notes a minute. Returns AAX_SUCCESS. [any]
    virtual AAX_Result GetCurrentTempo(double* outTempoBPM) const = 0;
    /// The time signature. Returns AAX_SUCCESS. [any]
    virtual AAX_Result GetCurrentMeter(int32_t* outNumerator, int32_t* outDenominator) const = 0;
    /// Whether the transport runs. Returns AAX_SUCCESS. [any]
    virtual AAX_Result IsTransportPlaying(bool* outIsPlaying) const = 0;
    /// The position in ticks. Returns AAX_SUCCESS. [any]
    virtual AAX_Result GetCurrentTickPosition(int64_t* outTicks) const = 0;
    /// Whether the transport loops, and the loop's bounds in ticks. Returns AAX_SUCCESS. [any]
    virtual AAX_Result GetCurrentLoopPosition(bool* outIsLooping, int64_t* outStartTicks,
                                              int64_t* outEndTicks) const = 0;
    /// The position in frames. Returns AAX_SUCCESS. [any]
    virtual AAX_Result GetCurrentNativeSampleLocation(int64_t* outFrames) const = 0;
    /// The position in ticks of a position in frames. Returns AAX_SUCCESS. [any]
    virtual AAX_Result GetCustomTickPosition(int64_t* outTicks, int64_t frames) const = 0;
    /// Bar and beat (both counted from 1) and the ticks behind the beat, of a position in frames.
    /// Returns AAX_SUCCESS. [any]
    virtual AAX_Result GetBarBeatPosition(int32_t* outBar, int32_t* outBeat, int64_t* outDisplayTicks,
                                          int64_t frames) const = 0;
    /// Ticks of a quarter note. Returns AAX_SUCCESS. [any]
    virtual AAX_Result GetTicksPerQuarter(uint32_t* outTicks) const = 0;
    /// Ticks of a beat of the current meter. Returns AAX_SUCCESS. [any]
    virtual AAX_Result GetCurrentTicksPerBeat(uint32_t* outTicks) const = 0;

protected:
    ~AAX_IACFTransport() = default;
};

/// Version 2 (IID_IAAXTransportV2).
class AAX_IACFTransport_V2 : public AAX_IACFTransport {
public:
    /// The start of the time line's selection in frames. Returns AAX_SUCCESS. [any]
    virtual AAX_Result GetTimelineSelectionStartPosition(int64_t* outFrames) const = 0;
    /// The time code's rate and its offset in frames of that rate. Returns AAX_SUCCESS. [any]
    virtual AAX_Result GetTimeCodeInfo(AAX_EFrameRate* outRate, int32_t* outOffset) const = 0;
    /// The film rate and its offset in frames of that rate. Returns AAX_SUCCESS. [any]
    virtual AAX_Result GetFeetFramesInfo(AAX_EFeetFramesRate* outRate, int64_t* outOffset) const = 0;
    /// 1 when the metronome is on, else 0. Returns AAX_SUCCESS. [any]
    virtual AAX_Result IsMetronomeEnabled(int32_t* outIsEnabled) const = 0;

protected:
    ~AAX_IACFTransport_V2() = default;
};

/// Version 3 (IID_IAAXTransportV3).
class AAX_IACFTransport_V3 : public AAX_IACFTransport_V2 {
public:
    /// The high-rate time code's rate and its offset in frames of that rate. Returns AAX_SUCCESS. [any]
    virtual AAX_Result GetHDTimeCodeInfo(AAX_EFrameRate* outRate, int64_t* outOffset) const = 0;

protected:
    ~AAX_IACFTransport_V3() = default;
};

#endif
