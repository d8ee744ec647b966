#include "AAX_VEffectDescriptor.h"
#include "Tests/Support/ForwardingCheck.h"
#include "Tests/Support/RecordingDescription.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

using Effect = AAX_IEffectDescriptor;

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
    expectForwarding<RecordingEffectDescriptor, Effect>(
        {IID_IAAXEffectDescriptorV1},
        {
            operation<Effect>("AddComponent", 1, kWithoutHost, &Effect::AddComponent, noComponent),
            operation<Effect>("AddName", 1, kWithoutHost, &Effect::AddName, kText),
            operation<Effect>("AddCategory", 1, kWithoutHost, &Effect::AddCategory, 2U),
            operation<Effect>("AddCategoryBypassParameter", 1, kWithoutHost,
                              &Effect::AddCategoryBypassParameter, 3U, kText),
            operation<Effect>("AddProcPtr", 1, kWithoutHost, &Effect::AddProcPtr,
                              static_cast<void*>(somewhere<int>()), kAAX_ProcPtrID_Create_EffectGUI),
            operation<Effect>("SetProperties", 1, kWithoutHost, &Effect::SetProperties, noMap),
            operation<Effect>("AddResourceInfo", 1, kWithoutHost, &Effect::AddResourceInfo,
                              AAX_eResourceType_PageTable, kText),
            operation<Effect>("AddMeterDescription", 1, kWithoutHost, &Effect::AddMeterDescription, 4U, kText,
                              noMap),
            operation<Effect>("AddControlMIDINode", 1, kWithoutHost, &Effect::AddControlMIDINode, 5U, 6,
                              kText, 7U),
        },
        [](IACFUnknown* host) { return std::make_unique<AAX_VEffectDescriptor>(host, false); });
}

TEST_F(AAX_VEffectDescriptorTest, VirtualSlotsHaveTheirOrder) {
    expectConsecutive({slotOf(&Effect::NewComponentDescriptor), slotOf(&Effect::AddComponent),
                       slotOf(&Effect::AddName), slotOf(&Effect::AddCategory),
                       slotOf(&Effect::AddCategoryBypassParameter), slotOf(&Effect::AddProcPtr),
                       slotOf(&Effect::NewPropertyMap), slotOf(&Effect::SetProperties),
                       slotOf(&Effect::AddResourceInfo), slotOf(&Effect::AddMeterDescription),
                       slotOf(&Effect::AddControlMIDINode)});
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
