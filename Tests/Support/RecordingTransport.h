/// The host's time line in all versions, for tests.
#ifndef VARNO_RECORDINGTRANSPORT_H
#define VARNO_RECORDINGTRANSPORT_H

#include "AAX_IACFTransport.h"
#include "Recording.h"

namespace varno {

/// Notes its calls and does nothing else.
class RecordingTransport : public Recording<AAX_IACFTransport_V3> {
public:
    AAX_Result GetCurrentTempo(double* outTempoBPM) const override {
        return note("GetCurrentTempo", outTempoBPM);
    }
    AAX_Result GetCurrentMeter(int32_t* outNumerator, int32_t* outDenominator) const override {
        return note("GetCurrentMeter", outNumerator, outDenominator);
    }
    AAX_Result IsTransportPlaying(bool* outIsPlaying) const override {
        return note("IsTransportPlaying", outIsPlaying);
    }
    AAX_Result GetCurrentTickPosition(int64_t* outTicks) const override {
        return note("GetCurrentTickPosition", outTicks);
    }
    AAX_Result GetCurrentLoopPosition(bool* outIsLooping, int64_t* outStartTicks,
                                      int64_t* outEndTicks) const override {
        return note("GetCurrentLoopPosition", outIsLooping, outStartTicks, outEndTicks);
    }
    AAX_Result GetCurrentNativeSampleLocation(int64_t* outFrames) const override {
        return note("GetCurrentNativeSampleLocation", outFrames);
    }
    AAX_Result GetCustomTickPosition(int64_t* outTicks, int64_t frames) const override {
        return note("GetCustomTickPosition", outTicks, frames);
    }
    AAX_Result GetBarBeatPosition(int32_t* outBar, int32_t* outBeat, int64_t* outDisplayTicks,
                                  int64_t frames) const override {
        return note("GetBarBeatPosition", outBar, outBeat, outDisplayTicks, frames);
    }
    AAX_Result GetTicksPerQuarter(uint32_t* outTicks) const override {
        return note("GetTicksPerQuarter", outTicks);
    }
    AAX_Result GetCurrentTicksPerBeat(uint32_t* outTicks) const override {
        return note("GetCurrentTicksPerBeat", outTicks);
    }
    AAX_Result GetTimelineSelectionStartPosition(int64_t* outFrames) const override {
        return note("GetTimelineSelectionStartPosition", outFrames);
    }
    AAX_Result GetTimeCodeInfo(AAX_EFrameRate* outRate, int32_t* outOffset) const override {
        return note("GetTimeCodeInfo", outRate, outOffset);
    }
    AAX_Result GetFeetFramesInfo(AAX_EFeetFramesRate* outRate, int64_t* outOffset) const override {
        return note("GetFeetFramesInfo", outRate, outOffset);
    }
    AAX_Result IsMetronomeEnabled(int32_t* outIsEnabled) const override {
        return note("IsMetronomeEnabled", outIsEnabled);
    }
    AAX_Result GetHDTimeCodeInfo(AAX_EFrameRate* outRate, int64_t* outOffset) const override {
        return note("GetHDTimeCodeInfo", outRate, outOffset);
    }
};

} // namespace varno

#endif
