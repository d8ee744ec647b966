#include "AAX_VComponentDescriptor.h"
#include "Tests/Support/ForwardingCheck.h"
#include "Tests/Support/RecordingComponentDescriptor.h"
#include "Tests/Support/RecordingPropertyMap.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

using C = AAX_IComponentDescriptor;

constexpr auto kNull = AAX_ERROR_NULL_OBJECT;
constexpr const char* kText = "text";
constexpr const char* kEntry = "entry";
constexpr const char* kInit = "init";
constexpr const char* kBackground = "background";

void process(void* const[], const void*) {
}
std::int32_t initInstance(const void*, std::int32_t) {
    return 0;
}
std::int32_t runInBackground() {
    return 0;
}

AAX_IPropertyMap* const kNoMap = nullptr;

// The operations from Clear to AddReservedField, then those that register routines.
std::vector<Operation<C>> allOperations() {
    const AAX_CTypeID* ids = somewhere<AAX_CTypeID>();
    const auto mode = static_cast<AAX_IDma::EMode>(1);
    return {
        operation<C>("Clear", 1, kNull, &C::Clear),
        operation<C>("AddAudioIn", 1, kNull, &C::AddAudioIn, 1),
        operation<C>("AddAudioOut", 1, kNull, &C::AddAudioOut, 2),
        operation<C>("AddAudioBufferLength", 1, kNull, &C::AddAudioBufferLength, 3),
        operation<C>("AddSampleRate", 1, kNull, &C::AddSampleRate, 4),
        operation<C>("AddClock", 1, kNull, &C::AddClock, 5),
        operation<C>("AddSideChainIn", 1, kNull, &C::AddSideChainIn, 6),
        operation<C>("AddDataInPort", 1, kNull, &C::AddDataInPort, 7, 4U, AAX_eDataInPortType_Buffered),
        operation<C>("AddAuxOutputStem", 1, kNull, &C::AddAuxOutputStem, 8, 9, kText),
        operation<C>("AddPrivateData", 1, kNull, &C::AddPrivateData, 10, 11, 12U),
        operation<C>("AddTemporaryData", 1, kNull, &C::AddTemporaryData, 13, 14U),
        operation<C>("AddDmaInstance", 1, kNull, &C::AddDmaInstance, 15, mode),
        operation<C>("AddMeters", 1, kNull, &C::AddMeters, 16, ids, 17U),
        operation<C>("AddMIDINode", 1, kNull, &C::AddMIDINode, 18, 19, kText, 20U),
        operation<C>("AddReservedField", 1, kNull, &C::AddReservedField, 21, 22U),
        operation<C>("AddProcessProc_Native", 1, kNull, &C::AddProcessProc_Native, &process, kNoMap,
                     &initInstance, &runInBackground, somewhere<std::int32_t>()),
        operation<C>("AddProcessProc_TI", 1, kNull, &C::AddProcessProc_TI, kText, kEntry, kNoMap, kInit,
                     kBackground, somewhere<std::int32_t>()),
        operation<C>("AddProcessProc", 1, kNull, &C::AddProcessProc, kNoMap, somewhere<std::int32_t>(), 3),
    };
}

class AAX_VComponentDescriptorTest : public testing::Test {
protected:
    AAX_VComponentDescriptorTest() {
        mComponent.offer(IID_IAAXComponentDescriptorV1, &mComponent);
        mMap.offer(IID_IAAXPropertyMapV1, &mMap);
        mComponent.result = AAX_SUCCESS;
        mComponent.made = &mMap;
    }
    ~AAX_VComponentDescriptorTest() override {
        EXPECT_EQ(mComponent.references(), 0);
        EXPECT_EQ(mMap.references(), 0);
    }

    RecordingComponentDescriptor mComponent;
    RecordingPropertyMap mMap;
};

TEST_F(AAX_VComponentDescriptorTest, ForwardsToTheHost) {
    expectForwarding<RecordingComponentDescriptor, C>(
        {IID_IAAXComponentDescriptorV1}, allOperations(),
        [](IACFUnknown* host) { return std::make_unique<AAX_VComponentDescriptor>(host, false); });
}

TEST_F(AAX_VComponentDescriptorTest, VirtualSlotsHaveTheirOrder) {
    std::vector<std::ptrdiff_t> slots = slotsOf(allOperations());
    slots.insert(slots.end() - 3, {slotOf(&C::NewPropertyMap), slotOf(&C::DuplicatePropertyMap)});
    expectConsecutive(slots);
}

TEST_F(AAX_VComponentDescriptorTest, OwnsTheMapsThatItMakesThroughClear) {
    AAX_VComponentDescriptor component(&mComponent, false);
    AAX_IPropertyMap* map = component.NewPropertyMap();
    ASSERT_NE(map, nullptr);
    AAX_IPropertyMap* copy = component.DuplicatePropertyMap(map);
    ASSERT_NE(copy, nullptr);
    EXPECT_NE(copy, map);
    component.Clear();
    EXPECT_EQ(mMap.references(), 2);
    EXPECT_EQ(map->HostObject(), &mMap);
    EXPECT_EQ(mComponent.calls[1], callText("DuplicatePropertyMap", &mMap));
}

TEST_F(AAX_VComponentDescriptorTest, HandsTheHostItsOwnMaps) {
    AAX_VComponentDescriptor component(&mComponent, false);
    AAX_IPropertyMap* map = component.NewPropertyMap();
    mComponent.calls.clear();
    component.AddProcessProc_Native(&process, map, nullptr, nullptr, nullptr);
    component.AddProcessProc_TI(kText, kEntry, map, nullptr, nullptr, nullptr);
    component.AddProcessProc(map, nullptr, 0);
    EXPECT_EQ(mComponent.calls,
              (std::vector<std::string>{
                  callText("AddProcessProc_Native", &process, &mMap, nullptr, nullptr, nullptr),
                  callText("AddProcessProc_TI", kText, kEntry, &mMap, nullptr, nullptr, nullptr),
                  callText("AddProcessProc", &mMap, nullptr, 0)}));
}

TEST_F(AAX_VComponentDescriptorTest, MakesNoMapWhenTheHostFailsOrIsMissing) {
    AAX_VComponentDescriptor component(&mComponent, false);
    mComponent.result = AAX_ERROR_UNKNOWN_EXCEPTION;
    EXPECT_EQ(component.NewPropertyMap(), nullptr);
    EXPECT_EQ(component.DuplicatePropertyMap(nullptr), nullptr);
    AAX_VComponentDescriptor alone(nullptr, false);
    EXPECT_EQ(alone.NewPropertyMap(), nullptr);
    EXPECT_EQ(alone.DuplicatePropertyMap(nullptr), nullptr);
    EXPECT_EQ(alone.HostObject(), nullptr);
}

} // namespace
} // namespace varno
