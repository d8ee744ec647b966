#include "HostTransport.h"

#include "TellOutput.h"

#include <cmath>

namespace varno {

namespace {

constexpr int64_t kTicksPerBeat = static_cast<int64_t>(kTicksPerQuarter) * 4 / kMeterDenominator;

/// Quotient rounded down, so that positions before the start count on.
constexpr int64_t floorDivide(int64_t dividend, int64_t divisor) {
    return dividend >= 0 ? dividend / divisor : -((-dividend + divisor - 1) / divisor);
}

} // namespace

HostTransport::HostTransport(IACFUnknown& owner, InstanceState& state)
    : Facet(owner),
      mState(state) {
}

int64_t HostTransport::ticksAt(int64_t frames) const {
    const double ticksPerFrame = kTempoBPM / 60.0 * kTicksPerQuarter / mState.setup.sampleRateHz;
    return static_cast<int64_t>(std::floor(static_cast<double>(frames) * ticksPerFrame));
}

AAX_Result HostTransport::GetCurrentTempo(double* outTempoBPM) const {
    return tell(outTempoBPM, kTempoBPM);
}

AAX_Result HostTransport::GetCurrentMeter(int32_t* outNumerator, int32_t* outDenominator) const {
    return tell(outNumerator, kMeterNumerator, outDenominator, kMeterDenominator);
}

AAX_Result HostTransport::IsTransportPlaying(bool* outIsPlaying) const {
    return tell(outIsPlaying, true);
}

AAX_Result HostTransport::GetCurrentTickPosition(int64_t* outTicks) const {
    return tell(outTicks, ticksAt(mState.positionFrames.load()));
}

AAX_Result HostTransport::GetCurrentLoopPosition(bool* outIsLooping, int64_t* outStartTicks,
                                                 int64_t* outEndTicks) const {
    if (outIsLooping == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    const AAX_Result result = tell(outStartTicks, 0, outEndTicks, 0);
    if (result == AAX_SUCCESS) {
        *outIsLooping = false;
    }
    return result;
}

AAX_Result HostTransport::GetCurrentNativeSampleLocation(int64_t* outFrames) const {
    return tell(outFrames, mState.positionFrames.load());
}

AAX_Result HostTransport::GetCustomTickPosition(int64_t* outTicks, int64_t frames) const {
    return tell(outTicks, ticksAt(frames));
}

AAX_Result HostTransport::GetBarBeatPosition(int32_t* outBar, int32_t* outBeat, int64_t* outDisplayTicks,
                                             int64_t frames) const {
    if (outDisplayTicks == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    const int64_t ticks = ticksAt(frames);
    const int64_t beats = floorDivide(ticks, kTicksPerBeat);
    const int64_t bars = floorDivide(beats, kMeterNumerator);
    const AAX_Result result = tell(outBar, static_cast<int32_t>(bars + 1), outBeat,
                                   static_cast<int32_t>(beats - bars * kMeterNumerator + 1));
    if (result == AAX_SUCCESS) {
        *outDisplayTicks = ticks - beats * kTicksPerBeat;
    }
    return result;
}

AAX_Result HostTransport::GetTicksPerQuarter(uint32_t* outTicks) const {
    return tell(outTicks, kTicksPerQuarter);
}

AAX_Result HostTransport::GetCurrentTicksPerBeat(uint32_t* outTicks) const {
    return tell(outTicks, static_cast<uint32_t>(kTicksPerBeat));
}

AAX_Result HostTransport::GetTimelineSelectionStartPosition(int64_t* outFrames) const {
    return tell(outFrames, 0);
}

AAX_Result HostTransport::GetTimeCodeInfo(AAX_EFrameRate* outRate, int32_t* outOffset) const {
    return tell(outRate, AAX_eFrameRate_Undeclared, outOffset, 0);
}

AAX_Result HostTransport::GetFeetFramesInfo(AAX_EFeetFramesRate* outRate, int64_t* outOffset) const {
    return tell(outRate, AAX_eFeetFramesRate_24, outOffset, 0);
}

AAX_Result HostTransport::IsMetronomeEnabled(int32_t* outIsEnabled) const {
    return tell(outIsEnabled, 0);
}

AAX_Result HostTransport::GetHDTimeCodeInfo(AAX_EFrameRate* outRate, int64_t* outOffset) const {
    return tell(outRate, AAX_eFrameRate_Undeclared, outOffset, 0);
}

} // namespace varno
