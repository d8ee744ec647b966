#include "Host/HostTransport.h"

#include "Host/TellOutput.h"

#include <cmath>

namespace varno {

namespace {

constexpr std::int64_t kTicksPerBeat = static_cast<std::int64_t>(kTicksPerQuarter) * 4 / kMeterDenominator;

// Quotient rounded down, so that positions before the start count on.
constexpr std::int64_t floorDivide(std::int64_t dividend, std::int64_t divisor) {
    return dividend >= 0 ? dividend / divisor : -((-dividend + divisor - 1) / divisor);
}

} // namespace

HostTransport::HostTransport(IACFUnknown& owner, InstanceState& state)
    : Facet(owner),
      mState(state) {
}

std::int64_t HostTransport::ticksAt(std::int64_t frames) const {
    const double ticksPerFrame = kTempoBPM / 60.0 * kTicksPerQuarter / mState.setup.sampleRateHz;
    return static_cast<std::int64_t>(std::floor(static_cast<double>(frames) * ticksPerFrame));
}

AAX_Result HostTransport::GetCurrentTempo(double* outTempoBPM) const {
    return tell(outTempoBPM, kTempoBPM);
}

AAX_Result HostTransport::GetCurrentMeter(std::int32_t* outNumerator, std::int32_t* outDenominator) const {
    return tell(outNumerator, kMeterNumerator, outDenominator, kMeterDenominator);
}

AAX_Result HostTransport::IsTransportPlaying(bool* outIsPlaying) const {
    return tell(outIsPlaying, true);
}

AAX_Result HostTransport::GetCurrentTickPosition(std::int64_t* outTicks) const {
    return tell(outTicks, ticksAt(mState.positionFrames.load()));
}

AAX_Result HostTransport::GetCurrentLoopPosition(bool* outIsLooping, std::int64_t* outStartTicks,
                                                 std::int64_t* outEndTicks) const {
    if (outIsLooping == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    const AAX_Result result = tell(outStartTicks, 0, outEndTicks, 0);
    if (result == AAX_SUCCESS) {
        *outIsLooping = false;
    }
    return result;
}

AAX_Result HostTransport::GetCurrentNativeSampleLocation(std::int64_t* outFrames) const {
    return tell(outFrames, mState.positionFrames.load());
}

AAX_Result HostTransport::GetCustomTickPosition(std::int64_t* outTicks, std::int64_t frames) const {
    return tell(outTicks, ticksAt(frames));
}

AAX_Result HostTransport::GetBarBeatPosition(std::int32_t* outBar, std::int32_t* outBeat,
                                             std::int64_t* outDisplayTicks, std::int64_t frames) const {
    if (outDisplayTicks == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    const std::int64_t ticks = ticksAt(frames);
    const std::int64_t beats = floorDivide(ticks, kTicksPerBeat);
    const std::int64_t bars = floorDivide(beats, kMeterNumerator);
    const AAX_Result result = tell(outBar, static_cast<std::int32_t>(bars + 1), outBeat,
                                   static_cast<std::int32_t>(beats - bars * kMeterNumerator + 1));
    if (result == AAX_SUCCESS) {
        *outDisplayTicks = ticks - beats * kTicksPerBeat;
    }
    return result;
}

AAX_Result HostTransport::GetTicksPerQuarter(std::uint32_t* outTicks) const {
    return tell(outTicks, kTicksPerQuarter);
}

AAX_Result HostTransport::GetCurrentTicksPerBeat(std::uint32_t* outTicks) const {
    return tell(outTicks, static_cast<std::uint32_t>(kTicksPerBeat));
}

AAX_Result HostTransport::GetTimelineSelectionStartPosition(std::int64_t* outFrames) const {
    return tell(outFrames, 0);
}

AAX_Result HostTransport::GetTimeCodeInfo(AAX_EFrameRate* outRate, std::int32_t* outOffset) const {
    return tell(outRate, AAX_eFrameRate_Undeclared, outOffset, 0);
}

AAX_Result HostTransport::GetFeetFramesInfo(AAX_EFeetFramesRate* outRate, std::int64_t* outOffset) const {
    return tell(outRate, AAX_eFeetFramesRate_24, outOffset, 0);
}

AAX_Result HostTransport::IsMetronomeEnabled(std::int32_t* outIsEnabled) const {
    return tell(outIsEnabled, 0);
}

AAX_Result HostTransport::GetHDTimeCodeInfo(AAX_EFrameRate* outRate, std::int64_t* outOffset) const {
    return tell(outRate, AAX_eFrameRate_Undeclared, outOffset, 0);
}

} // namespace varno
