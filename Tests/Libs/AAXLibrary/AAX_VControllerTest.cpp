#include "AAX_VController.h"
#include "AAX_CString.h"
#include "Tests/Support/ForwardingCheck.h"
#include "Tests/Support/RecordingInstance.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

using Controller = AAX_IController;

const std::vector<acfIID> kControllerVersions{IID_IAAXControllerV1, IID_IAAXControllerV2,
                                              IID_IAAXControllerV3};

// All operations with a result code, in their order.
std::vector<Operation<Controller>> controllerOperations() {
    const auto sendWithData =
        static_cast<AAX_Result (Controller::*)(AAX_CTypeID, const void*, std::uint32_t)>(
            &Controller::SendNotification);
    const auto sendWithoutData =
        static_cast<AAX_Result (Controller::*)(AAX_CTypeID)>(&Controller::SendNotification);
    const auto property = AAX_eProperty_Host62;
    return {
        operation<Controller>("GetEffectID", 1, kWithoutHost, &Controller::GetEffectID,
                              somewhere<AAX_CString>()),
        operation<Controller>("GetSampleRate", 1, kWithoutHost, &Controller::GetSampleRate,
                              somewhere<float>()),
        operation<Controller>("GetInputStemFormat", 1, kWithoutHost, &Controller::GetInputStemFormat,
                              somewhere<AAX_EStemFormat>()),
        operation<Controller>("GetOutputStemFormat", 1, kWithoutHost, &Controller::GetOutputStemFormat,
                              somewhere<AAX_EStemFormat>()),
        operation<Controller>("GetSignalLatency", 1, kWithoutHost, &Controller::GetSignalLatency,
                              somewhere<std::int32_t>()),
        operation<Controller>("GetCycleCount", 1, kWithoutHost, &Controller::GetCycleCount, property,
                              somewhere<std::int32_t>()),
        operation<Controller>("GetTODLocation", 1, kWithoutHost, &Controller::GetTODLocation,
                              somewhere<std::int64_t>()),
        operation<Controller>("SetSignalLatency", 1, kWithoutHost, &Controller::SetSignalLatency, 17),
        operation<Controller>("SetCycleCount", 1, kWithoutHost, &Controller::SetCycleCount,
                              somewhere<AAX_EProperty>(), somewhere<std::int32_t>(), 3),
        operation<Controller>("PostPacket", 1, kWithoutHost, &Controller::PostPacket, 11, somewhere<float>(),
                              4U),
        operation<Controller>("GetCurrentMeterValue", 1, kWithoutHost, &Controller::GetCurrentMeterValue, 5U,
                              somewhere<float>()),
        operation<Controller>("GetMeterPeakValue", 1, kWithoutHost, &Controller::GetMeterPeakValue, 6U,
                              somewhere<float>()),
        operation<Controller>("ClearMeterPeakValue", 1, kWithoutHost, &Controller::ClearMeterPeakValue, 7U),
        operation<Controller>("GetMeterClipped", 1, kWithoutHost, &Controller::GetMeterClipped, 8U,
                              somewhere<std::uint8_t>()),
        operation<Controller>("ClearMeterClipped", 1, kWithoutHost, &Controller::ClearMeterClipped, 9U),
        operation<Controller>("GetMeterCount", 1, kWithoutHost, &Controller::GetMeterCount,
                              somewhere<std::uint32_t>()),
        operation<Controller>("GetNextMIDIPacket", 1, kWithoutHost, &Controller::GetNextMIDIPacket,
                              somewhere<std::int32_t>(), somewhere<AAX_CMidiPacket>()),
        operation<Controller>("SendNotification", 2, kWithoutVersion, sendWithData, 5U, somewhere<char>(),
                              12U),
        reaching(operation<Controller>("SendNotification", 2, kWithoutVersion, sendWithoutData, 6U),
                 callText("SendNotification", 6U, nullptr, 0U)),
        operation<Controller>("GetHybridSignalLatency", 2, kWithoutVersion,
                              &Controller::GetHybridSignalLatency, somewhere<std::int32_t>()),
        operation<Controller>("GetCurrentAutomationTimestamp", 2, kWithoutVersion,
                              &Controller::GetCurrentAutomationTimestamp, somewhere<std::int64_t>()),
        operation<Controller>("GetHostName", 2, kWithoutVersion, &Controller::GetHostName,
                              somewhere<AAX_CString>()),
        operation<Controller>("GetPlugInTargetPlatform", 3, kWithoutVersion,
                              &Controller::GetPlugInTargetPlatform, somewhere<std::int32_t>()),
        operation<Controller>("GetIsAudioSuite", 3, kWithoutVersion, &Controller::GetIsAudioSuite,
                              somewhere<std::uint8_t>()),
    };
}

TEST(AAX_VControllerTest, ForwardsToTheVersionThatCarriesTheOperation) {
    expectForwarding<RecordingController, Controller>(
        kControllerVersions, controllerOperations(),
        [](IACFUnknown* host) { return std::make_unique<AAX_VController>(host); });
}

TEST(AAX_VControllerTest, VirtualSlotsHaveTheirOrder) {
    std::vector<std::ptrdiff_t> slots = slotsOf(controllerOperations());
    slots.push_back(slotOf(&Controller::CreatePageTable));
    slots.push_back(slotOf(&Controller::CreateTableCopyForEffect));
    slots.push_back(slotOf(&Controller::CreateTableCopyForLayout));
    slots.push_back(slotOf(&Controller::CreateTableCopyForEffectFromFile));
    slots.push_back(slotOf(&Controller::CreateTableCopyForLayoutFromFile));
    expectConsecutive(slots);
}

TEST(AAX_VControllerTest, AsksTheHostForEachInterfaceOnceInOrder) {
    AskedHost host;
    const AAX_VController controller(&host);
    EXPECT_TRUE(host.asked == (std::vector<acfIID>{IID_IAAXControllerV1, IID_IAAXControllerV2,
                                                   IID_IAAXControllerV3, IID_IAAXPageTableController,
                                                   IID_IAAXPageTableControllerV2, IID_IACFComponentFactory}));
}

TEST(AAX_VControllerTest, ReleasesAllOfAHostThatThrows) {
    expectReleaseOfAll<AAX_VController>({IID_IAAXControllerV1, IID_IAAXControllerV2, IID_IAAXControllerV3,
                                         IID_IAAXPageTableController, IID_IAAXPageTableControllerV2,
                                         IID_IACFComponentFactory});
}

TEST(AAX_VControllerTest, AutomationTimeIsTheHostsOwnWhereItHasOne) {
    VersionedHost<RecordingController> host(kControllerVersions, 0);
    const AAX_VController controller(host.object());
    AAX_CTimeOfDay time = 99;
    EXPECT_EQ(controller.GetCurrentAutomationTimestamp(&time), kHostResult);
    EXPECT_EQ(time, 99) << "this host writes nothing";
}

TEST(AAX_VControllerTest, OldHostHasNoAutomationTimeAndReturnsZero) {
    VersionedHost<RecordingController> host({IID_IAAXControllerV1}, 0);
    const AAX_VController controller(host.object());
    AAX_CTimeOfDay time = 99;
    EXPECT_EQ(controller.GetCurrentAutomationTimestamp(&time), -20009);
    EXPECT_EQ(time, 0);
    AAX_CString name("before");
    EXPECT_EQ(controller.GetHostName(&name), -20009);
    EXPECT_STREQ(name.Get(), "before");
    float rate = 0.0F;
    host.version(1).result = AAX_SUCCESS;
    EXPECT_EQ(controller.GetSampleRate(&rate), AAX_SUCCESS);
}

TEST(AAX_VControllerTest, MissingHostLeavesOutputsAlone) {
    const AAX_VController controller(nullptr);
    float rate = 7.0F;
    std::int32_t frames = 8;
    std::uint8_t flag = 9;
    EXPECT_EQ(controller.GetSampleRate(&rate), -20004);
    EXPECT_EQ(controller.GetSignalLatency(&frames), -20004);
    EXPECT_EQ(controller.GetHybridSignalLatency(&frames), -20009);
    EXPECT_EQ(controller.GetIsAudioSuite(&flag), -20009);
    EXPECT_EQ(rate, 7.0F);
    EXPECT_EQ(frames, 8);
    EXPECT_EQ(flag, 9);
}

} // namespace
} // namespace varno
