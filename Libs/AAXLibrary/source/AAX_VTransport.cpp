#include "AAX_VTransport.h"

#include "HostObjects.h"

AAX_VTransport::AAX_VTransport(IACFUnknown* host)
    : mVersion1(ACFPtr<AAX_IACFTransport>::Query(host, IID_IAAXTransportV1)),
      mVersion2(ACFPtr<AAX_IACFTransport_V2>::Query(host, IID_IAAXTransportV2)),
      mVersion3(ACFPtr<AAX_IACFTransport_V3>::Query(host, IID_IAAXTransportV3)) {
}

void AAX_VTransport::ReleaseHost() {
    ReleaseEach(mVersion3, mVersion2, mVersion1);
}

AAX_Result AAX_VTransport::GetCurrentTempo(double* outTempoBPM) const {
    return mVersion1 ? mVersion1->GetCurrentTempo(outTempoBPM) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VTransport::GetCurrentMeter(int32_t* outNumerator, int32_t* outDenominator) const {
    return mVersion1 ? mVersion1->GetCurrentMeter(outNumerator, outDenominator) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VTransport::IsTransportPlaying(bool* outIsPlaying) const {
    return mVersion1 ? mVersion1->IsTransportPlaying(outIsPlaying) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VTransport::GetCurrentTickPosition(int64_t* outTicks) const {
    return mVersion1 ? mVersion1->GetCurrentTickPosition(outTicks) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VTransport::GetCurrentLoopPosition(bool* outIsLooping, int64_t* outStartTicks,
                                                  int64_t* outEndTicks) const {
    return mVersion1 ? mVersion1->GetCurrentLoopPosition(outIsLooping, outStartTicks, outEndTicks)
                     : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VTransport::GetCurrentNativeSampleLocation(int64_t* outFrames) const {
    return mVersion1 ? mVersion1->GetCurrentNativeSampleLocation(outFrames) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VTransport::GetCustomTickPosition(int64_t* outTicks, int64_t frames) const {
    return mVersion1 ? mVersion1->GetCustomTickPosition(outTicks, frames) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VTransport::GetBarBeatPosition(int32_t* outBar, int32_t* outBeat, int64_t* outDisplayTicks,
                                              int64_t frames) const {
    return mVersion1 ? mVersion1->GetBarBeatPosition(outBar, outBeat, outDisplayTicks, frames)
                     : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VTransport::GetTicksPerQuarter(uint32_t* outTicks) const {
    return mVersion1 ? mVersion1->GetTicksPerQuarter(outTicks) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VTransport::GetCurrentTicksPerBeat(uint32_t* outTicks) const {
    return mVersion1 ? mVersion1->GetCurrentTicksPerBeat(outTicks) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VTransport::GetTimelineSelectionStartPosition(int64_t* outFrames) const {
    return mVersion2 ? mVersion2->GetTimelineSelectionStartPosition(outFrames) : AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result AAX_VTransport::GetTimeCodeInfo(AAX_EFrameRate* outRate, int32_t* outOffset) const {
    return mVersion2 ? mVersion2->GetTimeCodeInfo(outRate, outOffset) : AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result AAX_VTransport::GetFeetFramesInfo(AAX_EFeetFramesRate* outRate, int64_t* outOffset) const {
    return mVersion2 ? mVersion2->GetFeetFramesInfo(outRate, outOffset) : AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result AAX_VTransport::IsMetronomeEnabled(int32_t* outIsEnabled) const {
    return mVersion2 ? mVersion2->IsMetronomeEnabled(outIsEnabled) : AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result AAX_VTransport::GetHDTimeCodeInfo(AAX_EFrameRate* outRate, int64_t* outOffset) const {
    return mVersion3 ? mVersion3->GetHDTimeCodeInfo(outRate, outOffset) : AAX_ERROR_UNIMPLEMENTED;
}
