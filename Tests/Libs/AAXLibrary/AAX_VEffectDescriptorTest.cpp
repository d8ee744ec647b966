#include "AAX_VEffectDescriptor.h"
#include "Tests/Support/ForwardingCheck.h"
#include "Tests/Support/RecordingComponentDescriptor.h"
#include "Tests/Support/RecordingEffectDescriptor.h"
#include "Tests/Support/RecordingPropertyMap.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

using E = AAX_IEffectDescriptor;

constexpr auto kNull = AAX_ERROR_NULL_OBJECT;
constexpr const char* kText = "text";

class AAX_VEffectDescriptorTest : public testing::Test {
protected:
    AAX_VEffectDescriptorTest() {
        mEffect.offer(IID_IAAXEffectDescriptorV1, &mEffect);
        mComponent.offer(IID_IAAXComponentDescriptorV1, &mComponent);
        mMap.offer(IID_IAAXPropertyMapV1, &mMap);
        mEffect.result = AAX_SUCCESS;
    }
    ~AAX_VEffectDescriptorTest() override {
        EXPECT_EQ(mEffect.references(), 0);
        EXPECT_EQ(mComponent.references(), 0);
        EXPECT_EQ(mMap.references(), 0);
    }

    RecordingEffectDescriptor mEffect;
    RecordingComponentDescriptor mComponent;
    RecordingPropertyMap mMap;
};

TEST_F(AAX_VEffectDescriptorTest, ForwardsToTheHost) {
    AAX_IComponentDescriptor* const noComponent = nullptr;
    AAX_IPropertyMap* const noMap = nullptr;
    expectForwarding<RecordingEffectDescriptor, E>(
        {IID_IAAXEffectDescriptorV1},
        {
            operation<E>("AddComponent", 1, kNull, &E::AddComponent, noComponent),
            operation<E>("AddName", 1, kNull, &E::AddName, kText),
            operation<E>("AddCategory", 1, kNull, &E::AddCategory, 2U),
            operation<E>("AddCategoryBypassParameter", 1, kNull, &E::AddCategoryBypassParameter, 3U, kText),
            operation<E>("AddProcPtr", 1, kNull, &E::AddProcPtr, static_cast<void*>(somewhere<int>()),
                         kAAX_ProcPtrID_Create_EffectGUI),
            operation<E>("SetProperties", 1, kNull, &E::SetProperties, noMap),
            operation<E>("AddResourceInfo", 1, kNull, &E::AddResourceInfo, AAX_eResourceType_PageTable,
                         kText),
            operation<E>("AddMeterDescription", 1, kNull, &E::AddMeterDescription, 4U, kText, noMap),
            operation<E>("AddControlMIDINode", 1, kNull, &E::AddControlMIDINode, 5U, 6, kText, 7U),
        },
        [](IACFUnknown* host) { return std::make_unique<AAX_VEffectDescriptor>(host, false); });
}

TEST_F(AAX_VEffectDescriptorTest, VirtualSlotsHaveTheirOrder) {
    expectConsecutive({slotOf(&E::NewComponentDescriptor), slotOf(&E::AddComponent), slotOf(&E::AddName),
                       slotOf(&E::AddCategory), slotOf(&E::AddCategoryBypassParameter),
                       slotOf(&E::AddProcPtr), slotOf(&E::NewPropertyMap), slotOf(&E::SetProperties),
                       slotOf(&E::AddResourceInfo), slotOf(&E::AddMeterDescription),
                       slotOf(&E::AddControlMIDINode)});
}

TEST_F(AAX_VEffectDescriptorTest, OwnsWhatItMakesAndHandsTheHostItsOwnObjects) {
    AAX_VEffectDescriptor effect(&mEffect, false);
    mEffect.made = &mComponent;
    AAX_IComponentDescriptor* component = effect.NewComponentDescriptor();
    mEffect.made = &mMap;
    AAX_IPropertyMap* map = effect.NewPropertyMap();
    EXPECT_NE(map, effect.NewPropertyMap());
    ASSERT_NE(component, nullptr);
    ASSERT_NE(map, nullptr);
    EXPECT_EQ(mComponent.references(), 1);
    EXPECT_EQ(mMap.references(), 2);
    EXPECT_EQ(component->HostObject(), &mComponent);
    mEffect.calls.clear();
    effect.AddComponent(component);
    effect.SetProperties(map);
    effect.AddMeterDescription(4U, kText, map);
    EXPECT_EQ(mEffect.calls, (std::vector<std::string>{callText("AddComponent", &mComponent),
                                                       callText("SetProperties", &mMap),
                                                       callText("AddMeterDescription", 4U, kText, &mMap)}));
}

TEST_F(AAX_VEffectDescriptorTest, MakesNothingWhenTheHostFailsOrIsMissing) {
    AAX_VEffectDescriptor effect(&mEffect, false);
    mEffect.made = &mComponent;
    mEffect.result = AAX_ERROR_UNKNOWN_EXCEPTION;
    EXPECT_EQ(effect.NewComponentDescriptor(), nullptr);
    EXPECT_EQ(effect.NewPropertyMap(), nullptr);
    mEffect.made = nullptr;
    mEffect.result = AAX_SUCCESS;
    EXPECT_EQ(effect.NewComponentDescriptor(), nullptr);
    EXPECT_EQ(effect.NewPropertyMap(), nullptr);
    AAX_VEffectDescriptor alone(nullptr, false);
    EXPECT_EQ(alone.NewComponentDescriptor(), nullptr);
    EXPECT_EQ(alone.NewPropertyMap(), nullptr);
    EXPECT_EQ(alone.HostObject(), nullptr);
}

} // namespace
} // namespace varno
