#include "AAX_VFeatureInfo.h"
#include "Tests/Support/ForwardingCheck.h"
#include "Tests/Support/RecordingDescription.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

class AAX_VFeatureInfoTest : public testing::Test {
protected:
    AAX_VFeatureInfoTest() {
        mInfo.offer(IID_IAAXFeatureInfoV1, &mInfo);
        mMap.offer(IID_IAAXPropertyMapV1, &mMap);
    }
    ~AAX_VFeatureInfoTest() override {
        EXPECT_EQ(mInfo.references(), 0);
        EXPECT_EQ(mMap.references(), 0);
    }

    RecordingFeatureInfo mInfo;
    RecordingPropertyMap mMap;
};

TEST_F(AAX_VFeatureInfoTest, KeepsTheIdentifier) {
    acfUID id = AAX_FeatureUID_ExtendedStemFormats;
    const AAX_VFeatureInfo info(nullptr, id);
    id.Data1 = 0;
    EXPECT_TRUE(info.ID() == AAX_FeatureUID_ExtendedStemFormats);
}

TEST_F(AAX_VFeatureInfoTest, ReportsTheSupportLevel) {
    const AAX_VFeatureInfo info(&mInfo, AAX_FeatureUID_ExtendedStemFormats);
    mInfo.level = AAX_eSupportLevel_Supported;
    AAX_ESupportLevel level = AAX_eSupportLevel_Unsupported;
    EXPECT_EQ(info.SupportLevel(level), kHostResult);
    EXPECT_EQ(level, AAX_eSupportLevel_Supported);
}

TEST_F(AAX_VFeatureInfoTest, HandsOutThePropertiesAsTheCallersOwn) {
    mInfo.result = AAX_SUCCESS;
    mInfo.made = &mMap;
    std::unique_ptr<const AAX_IPropertyMap> properties;
    {
        const AAX_VFeatureInfo info(&mInfo, AAX_FeatureUID_ExtendedStemFormats);
        properties = info.AcquireProperties();
    }
    ASSERT_NE(properties, nullptr);
    EXPECT_EQ(mMap.references(), 1);
    std::int32_t value = 0;
    EXPECT_EQ(properties->GetProperty(AAX_eProperty_Host54, &value), kHostResult);
    EXPECT_EQ(mMap.calls, std::vector<std::string>{callText("GetProperty", AAX_eProperty_Host54, &value)});
    properties.reset();
}

TEST_F(AAX_VFeatureInfoTest, NoPropertiesWhenTheHostFailsOrHasNone) {
    const AAX_VFeatureInfo info(&mInfo, AAX_FeatureUID_ExtendedStemFormats);
    mInfo.made = &mMap;
    mInfo.result = AAX_ERROR_UNKNOWN_ID;
    EXPECT_EQ(info.AcquireProperties(), nullptr);
    EXPECT_EQ(mMap.references(), 0);
    mInfo.made = nullptr;
    mInfo.result = AAX_SUCCESS;
    EXPECT_EQ(info.AcquireProperties(), nullptr);
}

TEST_F(AAX_VFeatureInfoTest, MissingInterfaceHasItsCode) {
    FakeHost bare;
    for (IACFUnknown* host : {static_cast<IACFUnknown*>(nullptr), static_cast<IACFUnknown*>(&bare)}) {
        const AAX_VFeatureInfo info(host, AAX_FeatureUID_ExtendedStemFormats);
        AAX_ESupportLevel level = AAX_eSupportLevel_Supported;
        EXPECT_EQ(info.SupportLevel(level), -20004);
        EXPECT_EQ(level, AAX_eSupportLevel_Supported);
        EXPECT_EQ(info.AcquireProperties(), nullptr);
    }
}

TEST_F(AAX_VFeatureInfoTest, VirtualSlotsHaveTheirOrder) {
    EXPECT_EQ(slotOf(&AAX_IFeatureInfo::SupportLevel), kDestructorSlots);
    EXPECT_EQ(slotOf(&AAX_IFeatureInfo::AcquireProperties), kDestructorSlots + 1);
    EXPECT_EQ(slotOf(&AAX_IFeatureInfo::ID), kDestructorSlots + 2);
}

} // namespace
} // namespace varno
