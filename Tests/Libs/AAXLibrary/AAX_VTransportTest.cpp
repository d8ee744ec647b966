#include "AAX_VTransport.h"
#include "Tests/Support/ForwardingCheck.h"
#include "Tests/Support/RecordingTransport.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

using T = AAX_ITransport;

constexpr auto kNull = AAX_ERROR_NULL_OBJECT;
constexpr auto kOld = AAX_ERROR_UNIMPLEMENTED;

std::vector<Operation<T>> allOperations() {
    std::int64_t* const one = somewhere<std::int64_t, 1>();
    std::int64_t* const two = somewhere<std::int64_t, 2>();
    std::int32_t* const small = somewhere<std::int32_t, 1>();
    std::int32_t* const other = somewhere<std::int32_t, 2>();
    const std::int64_t frames = std::int64_t{1} << 40;
    return {
        operation<T>("GetCurrentTempo", 1, kNull, &T::GetCurrentTempo, somewhere<double>()),
        operation<T>("GetCurrentMeter", 1, kNull, &T::GetCurrentMeter, small, other),
        operation<T>("IsTransportPlaying", 1, kNull, &T::IsTransportPlaying, somewhere<bool>()),
        operation<T>("GetCurrentTickPosition", 1, kNull, &T::GetCurrentTickPosition, one),
        operation<T>("GetCurrentLoopPosition", 1, kNull, &T::GetCurrentLoopPosition, somewhere<bool>(), one,
                     two),
        operation<T>("GetCurrentNativeSampleLocation", 1, kNull, &T::GetCurrentNativeSampleLocation, one),
        operation<T>("GetCustomTickPosition", 1, kNull, &T::GetCustomTickPosition, one, frames),
        operation<T>("GetBarBeatPosition", 1, kNull, &T::GetBarBeatPosition, small, other, one, frames),
        operation<T>("GetTicksPerQuarter", 1, kNull, &T::GetTicksPerQuarter, somewhere<std::uint32_t>()),
        operation<T>("GetCurrentTicksPerBeat", 1, kNull, &T::GetCurrentTicksPerBeat,
                     somewhere<std::uint32_t>()),
        operation<T>("GetTimelineSelectionStartPosition", 2, kOld, &T::GetTimelineSelectionStartPosition,
                     one),
        operation<T>("GetTimeCodeInfo", 2, kOld, &T::GetTimeCodeInfo, somewhere<AAX_EFrameRate>(), small),
        operation<T>("GetFeetFramesInfo", 2, kOld, &T::GetFeetFramesInfo, somewhere<AAX_EFeetFramesRate>(),
                     one),
        operation<T>("IsMetronomeEnabled", 2, kOld, &T::IsMetronomeEnabled, small),
        operation<T>("GetHDTimeCodeInfo", 3, kOld, &T::GetHDTimeCodeInfo, somewhere<AAX_EFrameRate>(), one),
    };
}

TEST(AAX_VTransportTest, ForwardsToTheVersionThatCarriesTheOperation) {
    expectForwarding<RecordingTransport, T>(
        {IID_IAAXTransportV1, IID_IAAXTransportV2, IID_IAAXTransportV3}, allOperations(),
        [](IACFUnknown* host) { return std::make_unique<AAX_VTransport>(host); });
}

TEST(AAX_VTransportTest, VirtualSlotsHaveTheirOrder) {
    expectConsecutive(slotsOf(allOperations()));
}

} // namespace
} // namespace varno
