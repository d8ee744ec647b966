/// The host's time line in the versions that the host offers.
#ifndef VARNO_INTERFACES_AAX_VTRANSPORT_H
#define VARNO_INTERFACES_AAX_VTRANSPORT_H

#include "AAX_IACFTransport.h"
#include "AAX_ITransport.h"
#include "ACF/ACFPtr.h"

/// Acquires each version once, when it is made, and holds it for its life.
class AAX_VTransport : public AAX_ITransport {
public:
    /// `host` (borrowed, may be null) is the object handed to the data model's or the editor's Initialize.
    explicit AAX_VTransport(IACFUnknown* host);

    /// Releases what is held of the host, all of it, then throws the first exception of the host. Each
    /// operation lacks its version from now on. [main]
    void ReleaseHost();

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
    ACFPtr<AAX_IACFTransport> mVersion1;
    ACFPtr<AAX_IACFTransport_V2> mVersion2;
    ACFPtr<AAX_IACFTransport_V3> mVersion3;
};

#endif
