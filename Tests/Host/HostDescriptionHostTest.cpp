#include "Host/HostDescriptionHost.h"

#include "AAX_IACFFeatureInfo.h"
#include "ACF/ACFPtr.h"
#include "Host/HostPropertyMap.h"
#include "Host/ModuleHost.h"
#include "Tests/Host/TestContext.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

constexpr acfUID kFeature = {1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
constexpr acfUID kOtherFeature = {1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 12}};

class HostDescriptionHostTest : public testing::Test {
protected:
    std::shared_ptr<HostContext> context = testContext();
    ACFPtr<ModuleHost> module = ACFPtr<ModuleHost>::Adopt(new ModuleHost(context));
    ACFPtr<AAX_IACFDescriptionHost> host =
        ACFPtr<AAX_IACFDescriptionHost>::Query(module.Get(), IID_IAAXDescriptionHostV1);

    ACFPtr<AAX_IACFFeatureInfo> acquire(const acfUID& feature) {
        IACFUnknown* made = nullptr;
        EXPECT_EQ(AAX_SUCCESS, host->AcquireFeatureProperties(feature, &made));
        const auto owned = ACFPtr<IACFUnknown>::Adopt(made);
        return ACFPtr<AAX_IACFFeatureInfo>::Query(made, IID_IAAXFeatureInfoV1);
    }
};

TEST_F(HostDescriptionHostTest, KnowsExtendedStemFormatsAndDoesNotSupportThem) {
    AAX_ESupportLevel level = AAX_eSupportLevel_Supported;
    const auto info = acquire(AAX_FeatureUID_ExtendedStemFormats);
    EXPECT_EQ(AAX_SUCCESS, info->SupportLevel(&level));
    EXPECT_EQ(AAX_eSupportLevel_Unsupported, level);
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, info->SupportLevel(nullptr));
}

TEST_F(HostDescriptionHostTest, TellsTheFeaturesOfItsOptions) {
    context->options.features = {
        {kFeature, AAX_eSupportLevel_Supported, Properties{{AAX_eProperty_Host54, 6}}}};
    const auto info = acquire(kFeature);
    IACFUnknown* made = nullptr;
    EXPECT_EQ(AAX_SUCCESS, info->AcquireProperties(&made));
    const auto owned = ACFPtr<IACFUnknown>::Adopt(made);
    EXPECT_EQ(6, integerProperty(ownObject<HostPropertyMap>(made)->properties(), AAX_eProperty_Host54));
    EXPECT_EQ(AAX_ERROR_UNKNOWN_ID, host->AcquireFeatureProperties(kOtherFeature, &made));
    EXPECT_EQ(nullptr, made);
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, host->AcquireFeatureProperties(kFeature, nullptr));
}

TEST_F(HostDescriptionHostTest, AFeatureMayHaveNoProperties) {
    const auto info = acquire(AAX_FeatureUID_ExtendedStemFormats);
    IACFUnknown* made = module.Get();
    EXPECT_EQ(AAX_ERROR_NULL_OBJECT, info->AcquireProperties(&made));
    EXPECT_EQ(nullptr, made);
}

} // namespace
} // namespace varno
