/// The host's time line.
#ifndef VARNO_HOST_HOSTTRANSPORT_H
#define VARNO_HOST_HOSTTRANSPORT_H

#include "AAX_IACFTransport.h"
#include "Host/HostObject.h"
#include "Host/InstanceState.h"

namespace varno {

inline constexpr double kTempoBPM = 120.0;
inline constexpr std::int32_t kMeterNumerator = 4;
inline constexpr std::int32_t kMeterDenominator = 4;
/// Divides by every common note value and by 2, 3 and 5, and keeps a tick below one frame at 384 kHz.
inline constexpr std::uint32_t kTicksPerQuarter = 960000;

/// Transport versions 1 to 3: a time line of 120 quarter notes a minute in 4/4 that always runs and stands
/// where the render stands. No loop, no selection, no time code, no metronome. [any]
class HostTransport final : public Facet<AAX_IACFTransport_V3> {
public:
    HostTransport(IACFUnknown& owner, InstanceState& state);

    AAX_Result GetCurrentTempo(double* outTempoBPM) const override;
    AAX_Result GetCurrentMeter(std::int32_t* outNumerator, std::int32_t* outDenominator) const override;
    AAX_Result IsTransportPlaying(bool* outIsPlaying) const override;
    AAX_Result GetCurrentTickPosition(std::int64_t* outTicks) const override;
    AAX_Result GetCurrentLoopPosition(bool* outIsLooping, std::int64_t* outStartTicks,
                                      std::int64_t* outEndTicks) const override;
    AAX_Result GetCurrentNativeSampleLocation(std::int64_t* outFrames) const override;
    AAX_Result GetCustomTickPosition(std::int64_t* outTicks, std::int64_t frames) const override;
    AAX_Result GetBarBeatPosition(std::int32_t* outBar, std::int32_t* outBeat, std::int64_t* outDisplayTicks,
                                  std::int64_t frames) const override;
    AAX_Result GetTicksPerQuarter(std::uint32_t* outTicks) const override;
    AAX_Result GetCurrentTicksPerBeat(std::uint32_t* outTicks) const override;
    AAX_Result GetTimelineSelectionStartPosition(std::int64_t* outFrames) const override;
    AAX_Result GetTimeCodeInfo(AAX_EFrameRate* outRate, std::int32_t* outOffset) const override;
    AAX_Result GetFeetFramesInfo(AAX_EFeetFramesRate* outRate, std::int64_t* outOffset) const override;
    AAX_Result IsMetronomeEnabled(std::int32_t* outIsEnabled) const override;
    AAX_Result GetHDTimeCodeInfo(AAX_EFrameRate* outRate, std::int64_t* outOffset) const override;

private:
    std::int64_t ticksAt(std::int64_t frames) const;

    InstanceState& mState;
};

} // namespace varno

#endif
