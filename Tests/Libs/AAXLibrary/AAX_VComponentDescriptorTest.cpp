#include "AAX_VComponentDescriptor.h"
#include "Tests/Support/ForwardingCheck.h"
#include "Tests/Support/RecordingDescription.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

using Component = AAX_IComponentDescriptor;

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
std::vector<Operation<Component>> componentOperations() {
    const AAX_CTypeID* ids = somewhere<AAX_CTypeID>();
    const auto mode = static_cast<AAX_IDma::EMode>(1);
    return {
        operation<Component>("Clear", 1, kWithoutHost, &Component::Clear),
        operation<Component>("AddAudioIn", 1, kWithoutHost, &Component::AddAudioIn, 1),
        operation<Component>("AddAudioOut", 1, kWithoutHost, &Component::AddAudioOut, 2),
        operation<Component>("AddAudioBufferLength", 1, kWithoutHost, &Component::AddAudioBufferLength, 3),
        operation<Component>("AddSampleRate", 1, kWithoutHost, &Component::AddSampleRate, 4),
        operation<Component>("AddClock", 1, kWithoutHost, &Component::AddClock, 5),
        operation<Component>("AddSideChainIn", 1, kWithoutHost, &Component::AddSideChainIn, 6),
        operation<Component>("AddDataInPort", 1, kWithoutHost, &Component::AddDataInPort, 7, 4U,
                             AAX_eDataInPortType_Buffered),
        operation<Component>("AddAuxOutputStem", 1, kWithoutHost, &Component::AddAuxOutputStem, 8, 9, kText),
        operation<Component>("AddPrivateData", 1, kWithoutHost, &Component::AddPrivateData, 10, 11, 12U),
        operation<Component>("AddTemporaryData", 1, kWithoutHost, &Component::AddTemporaryData, 13, 14U),
        operation<Component>("AddDmaInstance", 1, kWithoutHost, &Component::AddDmaInstance, 15, mode),
        operation<Component>("AddMeters", 1, kWithoutHost, &Component::AddMeters, 16, ids, 17U),
        operation<Component>("AddMIDINode", 1, kWithoutHost, &Component::AddMIDINode, 18, 19, kText, 20U),
        operation<Component>("AddReservedField", 1, kWithoutHost, &Component::AddReservedField, 21, 22U),
        operation<Component>("AddProcessProc_Native", 1, kWithoutHost, &Component::AddProcessProc_Native,
                             &process, kNoMap, &initInstance, &runInBackground, somewhere<std::int32_t>()),
        operation<Component>("AddProcessProc_TI", 1, kWithoutHost, &Component::AddProcessProc_TI, kText,
                             kEntry, kNoMap, kInit, kBackground, somewhere<std::int32_t>()),
        operation<Component>("AddProcessProc", 1, kWithoutHost, &Component::AddProcessProc, kNoMap,
                             somewhere<std::int32_t>(), 3),
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
    expectForwarding<RecordingComponentDescriptor, Component>(
        {IID_IAAXComponentDescriptorV1}, componentOperations(),
        [](IACFUnknown* host) { return std::make_unique<AAX_VComponentDescriptor>(host, false); });
}

TEST_F(AAX_VComponentDescriptorTest, VirtualSlotsHaveTheirOrder) {
    std::vector<std::ptrdiff_t> slots = slotsOf(componentOperations());
    slots.insert(slots.end() - 3,
                 {slotOf(&Component::NewPropertyMap), slotOf(&Component::DuplicatePropertyMap)});
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
