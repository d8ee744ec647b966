#include "AAX_VCollection.h"
#include "Tests/Support/ForwardingCheck.h"
#include "Tests/Support/RecordingDescription.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

using Collection = AAX_ICollection;

// A host that makes every object.
class AAX_VCollectionTest : public testing::Test {
protected:
    AAX_VCollectionTest() {
        mCollection.offer(IID_IAAXCollectionV1, &mCollection);
        mEffect.offer(IID_IAAXEffectDescriptorV1, &mEffect);
        mComponent.offer(IID_IAAXComponentDescriptorV1, &mComponent);
        mMap.offer(IID_IAAXPropertyMapV1, &mMap);
        mInfo.offer(IID_IAAXFeatureInfoV1, &mInfo);
        mCollection.result = mEffect.result = mComponent.result = AAX_SUCCESS;
        mDescriptionHost.result = mInfo.result = AAX_SUCCESS;
        mDescriptionHost.made = &mInfo;
    }
    ~AAX_VCollectionTest() override {
        EXPECT_EQ(mCollection.references(), 0);
        EXPECT_EQ(mEffect.references(), 0);
        EXPECT_EQ(mComponent.references(), 0);
        EXPECT_EQ(mMap.references(), 0);
        EXPECT_EQ(mDescriptionHost.references(), 0);
        EXPECT_EQ(mInfo.references(), 0);
    }

    // Whether the maps of a collection, of its effects and of their components take an extended stem format.
    std::vector<bool> mapsTakeExtendedStemFormats() {
        mCollection.made = mEffect.made = mComponent.made = &mMap;
        AAX_VCollection collection(&mCollection);
        std::vector<AAX_IPropertyMap*> maps{collection.NewPropertyMap()};
        mCollection.made = &mEffect;
        AAX_IEffectDescriptor* effect = collection.NewDescriptor();
        maps.push_back(effect->NewPropertyMap());
        mEffect.made = &mComponent;
        AAX_IComponentDescriptor* component = effect->NewComponentDescriptor();
        maps.push_back(component->NewPropertyMap());
        maps.push_back(component->DuplicatePropertyMap(maps.front()));
        std::vector<bool> taken;
        for (AAX_IPropertyMap* map : maps) {
            taken.push_back(map->AddProperty(AAX_eProperty_InputStemFormat, 0xD0000) == kHostResult);
        }
        return taken;
    }

    RecordingCollection mCollection;
    RecordingEffectDescriptor mEffect;
    RecordingComponentDescriptor mComponent;
    RecordingPropertyMap mMap;
    RecordingDescriptionHost mDescriptionHost;
    RecordingFeatureInfo mInfo;
};

TEST_F(AAX_VCollectionTest, ForwardsToTheHost) {
    AAX_IEffectDescriptor* const noDescriptor = nullptr;
    AAX_IPropertyMap* const noMap = nullptr;
    expectForwarding<RecordingCollection, Collection>(
        {IID_IAAXCollectionV1},
        {
            operation<Collection>("AddEffect", 1, kWithoutHost, &Collection::AddEffect, kText, noDescriptor),
            operation<Collection>("SetManufacturerName", 1, kWithoutHost, &Collection::SetManufacturerName,
                                  kText),
            operation<Collection>("AddPackageName", 1, kWithoutHost, &Collection::AddPackageName, kText),
            operation<Collection>("SetPackageVersion", 1, kWithoutHost, &Collection::SetPackageVersion, 7U),
            operation<Collection>("SetProperties", 1, kWithoutHost, &Collection::SetProperties, noMap),
        },
        [](IACFUnknown* host) { return std::make_unique<AAX_VCollection>(host); });
}

TEST_F(AAX_VCollectionTest, VirtualSlotsHaveTheirOrder) {
    expectConsecutive({slotOf(&Collection::NewDescriptor), slotOf(&Collection::AddEffect),
                       slotOf(&Collection::SetManufacturerName), slotOf(&Collection::AddPackageName),
                       slotOf(&Collection::SetPackageVersion), slotOf(&Collection::NewPropertyMap),
                       slotOf(&Collection::SetProperties), slotOf(&Collection::DescriptionHost),
                       slotOf(&Collection::HostDefinition)});
}

TEST_F(AAX_VCollectionTest, OwnsWhatItMakes) {
    AAX_VCollection collection(&mCollection);
    mCollection.made = &mEffect;
    AAX_IEffectDescriptor* first = collection.NewDescriptor();
    AAX_IEffectDescriptor* second = collection.NewDescriptor();
    ASSERT_NE(first, nullptr);
    EXPECT_NE(first, second);
    EXPECT_EQ(first->HostObject(), &mEffect);
    EXPECT_EQ(mEffect.references(), 2);
    mCollection.made = &mMap;
    AAX_IPropertyMap* map = collection.NewPropertyMap();
    ASSERT_NE(map, nullptr);
    EXPECT_EQ(map->HostObject(), &mMap);
    EXPECT_EQ(mMap.references(), 1);
}

TEST_F(AAX_VCollectionTest, HandsTheHostItsOwnObjects) {
    AAX_VCollection collection(&mCollection);
    mCollection.made = &mEffect;
    AAX_IEffectDescriptor* effect = collection.NewDescriptor();
    mCollection.made = &mMap;
    AAX_IPropertyMap* map = collection.NewPropertyMap();
    mCollection.calls.clear();
    EXPECT_EQ(collection.AddEffect(kText, effect), AAX_SUCCESS);
    EXPECT_EQ(collection.SetProperties(map), AAX_SUCCESS);
    EXPECT_EQ(mCollection.calls, (std::vector<std::string>{callText("AddEffect", kText, &mEffect),
                                                           callText("SetProperties", &mMap)}));
}

TEST_F(AAX_VCollectionTest, MakesNothingWhenTheHostFailsOrIsMissing) {
    AAX_VCollection collection(&mCollection);
    mCollection.made = &mEffect;
    mCollection.result = AAX_ERROR_UNKNOWN_EXCEPTION;
    EXPECT_EQ(collection.NewDescriptor(), nullptr);
    EXPECT_EQ(collection.NewPropertyMap(), nullptr);
    mCollection.made = nullptr;
    mCollection.result = AAX_SUCCESS;
    EXPECT_EQ(collection.NewDescriptor(), nullptr);
    EXPECT_EQ(collection.NewPropertyMap(), nullptr);
    AAX_VCollection alone(nullptr);
    EXPECT_EQ(alone.NewDescriptor(), nullptr);
    EXPECT_EQ(alone.NewPropertyMap(), nullptr);
}

TEST_F(AAX_VCollectionTest, ReturnsTheHostsDefinitionAndDescription) {
    mCollection.offer(IID_IAAXDescriptionHostV1, &mDescriptionHost);
    const AAX_VCollection collection(&mCollection);
    EXPECT_EQ(collection.HostDefinition(), &mCollection);
    ASSERT_NE(collection.DescriptionHost(), nullptr);
    EXPECT_NE(collection.DescriptionHost()->AcquireFeatureProperties(AAX_FeatureUID_ExtendedStemFormats),
              nullptr);

    const AAX_VCollection alone(nullptr);
    EXPECT_EQ(alone.HostDefinition(), nullptr);
    ASSERT_NE(alone.DescriptionHost(), nullptr);
    EXPECT_EQ(alone.DescriptionHost()->AcquireFeatureProperties(AAX_FeatureUID_ExtendedStemFormats), nullptr);
}

TEST_F(AAX_VCollectionTest, HostsSupportForExtendedStemFormatsReachesEveryMap) {
    const std::vector<bool> all(4, true);
    const std::vector<bool> none(4, false);
    EXPECT_EQ(mapsTakeExtendedStemFormats(), none) << "a host that tells nothing of itself";
    mCollection.offer(IID_IAAXDescriptionHostV1, &mDescriptionHost);
    EXPECT_EQ(mapsTakeExtendedStemFormats(), none) << "the feature is not supported";
    mInfo.level = AAX_eSupportLevel_Supported;
    EXPECT_EQ(mapsTakeExtendedStemFormats(), all);
    mInfo.result = AAX_ERROR_UNKNOWN_ID;
    EXPECT_EQ(mapsTakeExtendedStemFormats(), none) << "the host fails to tell the level";
    mInfo.result = AAX_SUCCESS;
    mDescriptionHost.result = AAX_ERROR_UNKNOWN_ID;
    EXPECT_EQ(mapsTakeExtendedStemFormats(), none) << "the host does not know the feature";
}

} // namespace
} // namespace varno
