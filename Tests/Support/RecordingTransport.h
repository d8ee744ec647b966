/// The host's time line in all versions, for tests.
#ifndef VARNO_TESTS_SUPPORT_RECORDINGTRANSPORT_H
#define VARNO_TESTS_SUPPORT_RECORDINGTRANSPORT_H

#include "AAX_IACFTransport.h"
#include "Tests/Support/Recording.h"

namespace varno {

/// Notes its calls and does nothing else.
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

} // namespace varno

#endif
