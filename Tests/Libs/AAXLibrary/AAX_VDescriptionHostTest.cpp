#include "AAX_VDescriptionHost.h"
#include "Tests/Support/RecordingDescription.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

class AAX_VDescriptionHostTest : public testing::Test {
protected:
    AAX_VDescriptionHostTest() {
        mHost.offer(IID_IAAXDescriptionHostV1, &mHost);
        mInfo.offer(IID_IAAXFeatureInfoV1, &mInfo);
        mHost.made = &mInfo;
        mHost.result = AAX_SUCCESS;
    }
    ~AAX_VDescriptionHostTest() override {
        EXPECT_EQ(mHost.references(), 0);
        EXPECT_EQ(mInfo.references(), 0);
    }

    RecordingDescriptionHost mHost;
    RecordingFeatureInfo mInfo;
};

TEST_F(AAX_VDescriptionHostTest, HandsOutAFeatureAsTheCallersOwn) {
    const acfUID feature = AAX_FeatureUID_ExtendedStemFormats;
    std::unique_ptr<const AAX_IFeatureInfo> info;
    {
        const AAX_VDescriptionHost host(&mHost);
        info = host.AcquireFeatureProperties(feature);
    }
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(mHost.calls, std::vector<std::string>{callText("AcquireFeatureProperties", &feature)});
    EXPECT_TRUE(info->ID() == feature);
    AAX_ESupportLevel level{};
    EXPECT_EQ(info->SupportLevel(level), kHostResult);
    EXPECT_EQ(mInfo.references(), 1);
    info.reset();
}

TEST_F(AAX_VDescriptionHostTest, UnknownFeatureIsNull) {
    const AAX_VDescriptionHost host(&mHost);
    mHost.result = AAX_ERROR_UNKNOWN_ID;
    EXPECT_EQ(host.AcquireFeatureProperties(AAX_FeatureUID_ExtendedStemFormats), nullptr);
    EXPECT_EQ(mInfo.references(), 0);
    mHost.result = AAX_SUCCESS;
    mHost.made = nullptr;
    EXPECT_EQ(host.AcquireFeatureProperties(AAX_FeatureUID_ExtendedStemFormats), nullptr);
}

TEST_F(AAX_VDescriptionHostTest, MissingInterfaceKnowsNoFeature) {
    FakeHost bare;
    EXPECT_EQ(AAX_VDescriptionHost(nullptr).AcquireFeatureProperties(AAX_FeatureUID_ExtendedStemFormats),
              nullptr);
    EXPECT_EQ(AAX_VDescriptionHost(&bare).AcquireFeatureProperties(AAX_FeatureUID_ExtendedStemFormats),
              nullptr);
}

} // namespace
} // namespace varno
