/// The host's time line.
#ifndef HOSTTRANSPORT_H
#define HOSTTRANSPORT_H

#include "AAX_IACFTransport.h"
#include "HostObject.h"
#include "InstanceState.h"

namespace varno {

inline constexpr double kTempoBPM = 120.0;
inline constexpr int32_t kMeterNumerator = 4;
inline constexpr int32_t kMeterDenominator = 4;
/// Divides by every common note value and by 2, 3 and 5, and keeps a tick below one frame at 384 kHz.
inline constexpr uint32_t kTicksPerQuarter = 960000;

/// Transport versions 1 to 3: a time line of 120 quarter notes a minute in 4/4 that always runs and stands
/// where the render stands. No loop, no selection, no time code, no metronome. [any]
class HostTransport final : public Facet<AAX_IACFTransport_V3> {
public:
    HostTransport(IACFUnknown& owner, InstanceState& state);

    AAX_Result GetCurrentTempo(double* outTempoBPM) const override;
    AAX_Result GetCurrentMeter(int32_t* outNumerator, int32_t* outDenominator) const override;
    AAX_Result IsTransportPlaying(bool* outIsPlaying) const override;
    AAX_Result GetCurrentTickPosition(int64_t* outTicks) const override;
    AAX_Result GetCurrentLoopPosition(bool* outIsLooping, int64_t* outStartTicks,
                                      int64_t* outEndTicks) const override;
    AAX_Result GetCurrentNativeSampleLocation(int64_t* outFrames) const override;
    AAX_Result GetCustomTickPosition(int64_t* outTicks, int64_t frames) const override;
    AAX_Result GetBarBeatPosition(int32_t* outBar, int32_t* outBeat, int64_t* outDisplayTicks,
                                  int64_t frames) const override;
    AAX_Result GetTicksPerQuarter(uint32_t* outTicks) const override;
    AAX_Result GetCurrentTicksPerBeat(uint32_t* outTicks) const override;
    AAX_Result GetTimelineSelectionStartPosition(int64_t* outFrames) const override;
    AAX_Result GetTimeCodeInfo(AAX_EFrameRate* outRate, int32_t* outOffset) const override;
    AAX_Result GetFeetFramesInfo(AAX_EFeetFramesRate* outRate, int64_t* outOffset) const override;
    AAX_Result IsMetronomeEnabled(int32_t* outIsEnabled) const override;
    AAX_Result GetHDTimeCodeInfo(AAX_EFrameRate* outRate, int64_t* outOffset) const override;

private:
    int64_t ticksAt(int64_t frames) const;

    InstanceState& mState;
};

} // namespace varno

#endif
