#include "AAX_VTransport.h"
#include "Tests/Support/ForwardingCheck.h"
#include "Tests/Support/RecordingInstance.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

using Transport = AAX_ITransport;

std::vector<Operation<Transport>> transportOperations() {
    std::int64_t* const one = somewhere<std::int64_t, 1>();
    std::int64_t* const two = somewhere<std::int64_t, 2>();
    std::int32_t* const small = somewhere<std::int32_t, 1>();
    std::int32_t* const other = somewhere<std::int32_t, 2>();
    const std::int64_t frames = std::int64_t{1} << 40;
    return {
        operation<Transport>("GetCurrentTempo", 1, kWithoutHost, &Transport::GetCurrentTempo,
                             somewhere<double>()),
        operation<Transport>("GetCurrentMeter", 1, kWithoutHost, &Transport::GetCurrentMeter, small, other),
        operation<Transport>("IsTransportPlaying", 1, kWithoutHost, &Transport::IsTransportPlaying,
                             somewhere<bool>()),
        operation<Transport>("GetCurrentTickPosition", 1, kWithoutHost, &Transport::GetCurrentTickPosition,
                             one),
        operation<Transport>("GetCurrentLoopPosition", 1, kWithoutHost, &Transport::GetCurrentLoopPosition,
                             somewhere<bool>(), one, two),
        operation<Transport>("GetCurrentNativeSampleLocation", 1, kWithoutHost,
                             &Transport::GetCurrentNativeSampleLocation, one),
        operation<Transport>("GetCustomTickPosition", 1, kWithoutHost, &Transport::GetCustomTickPosition, one,
                             frames),
        operation<Transport>("GetBarBeatPosition", 1, kWithoutHost, &Transport::GetBarBeatPosition, small,
                             other, one, frames),
        operation<Transport>("GetTicksPerQuarter", 1, kWithoutHost, &Transport::GetTicksPerQuarter,
                             somewhere<std::uint32_t>()),
        operation<Transport>("GetCurrentTicksPerBeat", 1, kWithoutHost, &Transport::GetCurrentTicksPerBeat,
                             somewhere<std::uint32_t>()),
        operation<Transport>("GetTimelineSelectionStartPosition", 2, kWithoutVersion,
                             &Transport::GetTimelineSelectionStartPosition, one),
        operation<Transport>("GetTimeCodeInfo", 2, kWithoutVersion, &Transport::GetTimeCodeInfo,
                             somewhere<AAX_EFrameRate>(), small),
        operation<Transport>("GetFeetFramesInfo", 2, kWithoutVersion, &Transport::GetFeetFramesInfo,
                             somewhere<AAX_EFeetFramesRate>(), one),
        operation<Transport>("IsMetronomeEnabled", 2, kWithoutVersion, &Transport::IsMetronomeEnabled, small),
        operation<Transport>("GetHDTimeCodeInfo", 3, kWithoutVersion, &Transport::GetHDTimeCodeInfo,
                             somewhere<AAX_EFrameRate>(), one),
    };
}

TEST(AAX_VTransportTest, ForwardsToTheVersionThatCarriesTheOperation) {
    expectForwarding<RecordingTransport, Transport>(
        {IID_IAAXTransportV1, IID_IAAXTransportV2, IID_IAAXTransportV3}, transportOperations(),
        [](IACFUnknown* host) { return std::make_unique<AAX_VTransport>(host); });
}

TEST(AAX_VTransportTest, AsksTheHostForEachVersionOnceInOrder) {
    AskedHost host;
    const AAX_VTransport transport(&host);
    EXPECT_TRUE(host.asked ==
                (std::vector<acfIID>{IID_IAAXTransportV1, IID_IAAXTransportV2, IID_IAAXTransportV3}));
}

TEST(AAX_VTransportTest, ReleasesAllOfAHostThatThrows) {
    expectReleaseOfAll<AAX_VTransport>({IID_IAAXTransportV1, IID_IAAXTransportV2, IID_IAAXTransportV3});
}

TEST(AAX_VTransportTest, VirtualSlotsHaveTheirOrder) {
    expectConsecutive(slotsOf(transportOperations()));
}

} // namespace
} // namespace varno
