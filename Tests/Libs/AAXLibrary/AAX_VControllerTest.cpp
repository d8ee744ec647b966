#include "AAX_VController.h"
#include "AAX_CString.h"
#include "Tests/Support/ForwardingCheck.h"
#include "Tests/Support/RecordingController.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

using C = AAX_IController;

constexpr auto kNull = AAX_ERROR_NULL_OBJECT;
constexpr auto kOld = AAX_ERROR_UNIMPLEMENTED;

const std::vector<acfIID> kVersions{IID_IAAXControllerV1, IID_IAAXControllerV2, IID_IAAXControllerV3};

// All operations with a result code, in their order.
std::vector<Operation<C>> allOperations() {
    const auto sendWithData =
        static_cast<AAX_Result (C::*)(AAX_CTypeID, const void*, std::uint32_t)>(&C::SendNotification);
    const auto sendWithoutData = static_cast<AAX_Result (C::*)(AAX_CTypeID)>(&C::SendNotification);
    const auto property = AAX_eProperty_Host62;
    return {
        operation<C>("GetEffectID", 1, kNull, &C::GetEffectID, somewhere<AAX_CString>()),
        operation<C>("GetSampleRate", 1, kNull, &C::GetSampleRate, somewhere<float>()),
        operation<C>("GetInputStemFormat", 1, kNull, &C::GetInputStemFormat, somewhere<AAX_EStemFormat>()),
        operation<C>("GetOutputStemFormat", 1, kNull, &C::GetOutputStemFormat, somewhere<AAX_EStemFormat>()),
        operation<C>("GetSignalLatency", 1, kNull, &C::GetSignalLatency, somewhere<std::int32_t>()),
        operation<C>("GetCycleCount", 1, kNull, &C::GetCycleCount, property, somewhere<std::int32_t>()),
        operation<C>("GetTODLocation", 1, kNull, &C::GetTODLocation, somewhere<std::int64_t>()),
        operation<C>("SetSignalLatency", 1, kNull, &C::SetSignalLatency, 17),
        operation<C>("SetCycleCount", 1, kNull, &C::SetCycleCount, somewhere<AAX_EProperty>(),
                     somewhere<std::int32_t>(), 3),
        operation<C>("PostPacket", 1, kNull, &C::PostPacket, 11, somewhere<float>(), 4U),
        operation<C>("GetCurrentMeterValue", 1, kNull, &C::GetCurrentMeterValue, 5U, somewhere<float>()),
        operation<C>("GetMeterPeakValue", 1, kNull, &C::GetMeterPeakValue, 6U, somewhere<float>()),
        operation<C>("ClearMeterPeakValue", 1, kNull, &C::ClearMeterPeakValue, 7U),
        operation<C>("GetMeterClipped", 1, kNull, &C::GetMeterClipped, 8U, somewhere<std::uint8_t>()),
        operation<C>("ClearMeterClipped", 1, kNull, &C::ClearMeterClipped, 9U),
        operation<C>("GetMeterCount", 1, kNull, &C::GetMeterCount, somewhere<std::uint32_t>()),
        operation<C>("GetNextMIDIPacket", 1, kNull, &C::GetNextMIDIPacket, somewhere<std::int32_t>(),
                     somewhere<AAX_CMidiPacket>()),
        operation<C>("SendNotification", 2, kOld, sendWithData, 5U, somewhere<char>(), 12U),
        reaching(operation<C>("SendNotification", 2, kOld, sendWithoutData, 6U),
                 callText("SendNotification", 6U, nullptr, 0U)),
        operation<C>("GetHybridSignalLatency", 2, kOld, &C::GetHybridSignalLatency,
                     somewhere<std::int32_t>()),
        operation<C>("GetCurrentAutomationTimestamp", 2, kOld, &C::GetCurrentAutomationTimestamp,
                     somewhere<std::int64_t>()),
        operation<C>("GetHostName", 2, kOld, &C::GetHostName, somewhere<AAX_CString>()),
        operation<C>("GetPlugInTargetPlatform", 3, kOld, &C::GetPlugInTargetPlatform,
                     somewhere<std::int32_t>()),
        operation<C>("GetIsAudioSuite", 3, kOld, &C::GetIsAudioSuite, somewhere<std::uint8_t>()),
    };
}

TEST(AAX_VControllerTest, ForwardsToTheVersionThatCarriesTheOperation) {
    expectForwarding<RecordingController, C>(kVersions, allOperations(), [](IACFUnknown* host) {
        return std::make_unique<AAX_VController>(host);
    });
}

TEST(AAX_VControllerTest, VirtualSlotsHaveTheirOrder) {
    std::vector<std::ptrdiff_t> slots = slotsOf(allOperations());
    slots.push_back(slotOf(&C::CreatePageTable));
    slots.push_back(slotOf(&C::CreateTableCopyForEffect));
    slots.push_back(slotOf(&C::CreateTableCopyForLayout));
    slots.push_back(slotOf(&C::CreateTableCopyForEffectFromFile));
    slots.push_back(slotOf(&C::CreateTableCopyForLayoutFromFile));
    expectConsecutive(slots);
}

TEST(AAX_VControllerTest, OldHostHasNoAutomationTimeAndTellsZero) {
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
