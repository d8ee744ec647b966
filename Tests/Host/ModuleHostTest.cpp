#include "Host/ModuleHost.h"
#include "AAX_IACFFeatureInfo.h"
#include "ACF/ACFPtr.h"
#include "Host/HostDescriptors.h"
#include "Tests/Host/TestContext.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace varno {
namespace {

using testing::ElementsAre;

class ModuleHostTest : public testing::Test {
protected:
    std::shared_ptr<HostContext> context = testContext();
    ACFPtr<ModuleHost> host = ACFPtr<ModuleHost>::Adopt(new ModuleHost(context));

    ACFPtr<HostEffectDescriptor> makeEffect(bool withName, bool withVariant) {
        IACFUnknown* made = nullptr;
        EXPECT_EQ(AAX_SUCCESS, host->NewDescriptor(&made));
        const auto owned = ACFPtr<IACFUnknown>::Adopt(made);
        auto effect = ACFPtr<HostEffectDescriptor>::Retain(ownObject<HostEffectDescriptor>(made));
        const auto component = ACFPtr<HostComponentDescriptor>::Adopt(new HostComponentDescriptor(context));
        if (withName) {
            effect->AddName("Name");
        }
        if (withVariant) {
            effect->AddComponent(component.Get());
        }
        return effect;
    }
};

TEST_F(ModuleHostTest, AnswersToAllItsInterfaces) {
    for (const acfIID& iid : {IID_IAAXCollectionV1, IID_IACFPluginDefinition, IID_IAAXDescriptionHostV1,
                              IID_IACFComponentFactory, IID_IACFUnknown}) {
        const auto found = ACFPtr<IACFUnknown>::Query(host.Get(), iid);
        EXPECT_TRUE(found);
    }
    EXPECT_FALSE(ACFPtr<IACFUnknown>::Query(host.Get(), IID_IAAXControllerV1));
    EXPECT_EQ(1U, host->references());
}

TEST_F(ModuleHostTest, EveryInterfaceOfItIsTheSameObject) {
    const auto definition = ACFPtr<IACFPluginDefinition>::Query(host.Get(), IID_IACFPluginDefinition);
    EXPECT_EQ(3U, definition->AddRef());
    EXPECT_EQ(2U, definition->Release());
    const auto root = ACFPtr<IACFUnknown>::Query(definition.Get(), IID_IACFUnknown);
    EXPECT_EQ(static_cast<IACFUnknown*>(host.Get()), root.Get());
}

TEST_F(ModuleHostTest, CollectsTheModule) {
    const auto map = ACFPtr<HostPropertyMap>::Adopt(new HostPropertyMap(context));
    map->AddProperty(AAX_eProperty_Host54, 3);
    EXPECT_EQ(AAX_SUCCESS, host->SetManufacturerName("Maker"));
    EXPECT_EQ(AAX_SUCCESS, host->AddPackageName("Package"));
    EXPECT_EQ(AAX_SUCCESS, host->AddPackageName("Pkg"));
    EXPECT_EQ(AAX_SUCCESS, host->SetPackageVersion(12));
    EXPECT_EQ(AAX_SUCCESS, host->SetProperties(map.Get()));
    EXPECT_EQ("Maker", host->description().manufacturerName);
    EXPECT_THAT(host->description().packageNames, ElementsAre("Package", "Pkg"));
    EXPECT_EQ(12U, host->description().packageVersion);
    EXPECT_EQ(3, integerProperty(host->description().properties, AAX_eProperty_Host54));
}

TEST_F(ModuleHostTest, AddsEffectsOnce) {
    const auto effect = makeEffect(true, true);
    EXPECT_EQ(AAX_SUCCESS, host->AddEffect("id", effect.Get()));
    EXPECT_EQ(AAX_ERROR_DUPLICATE_EFFECT_ID, host->AddEffect("id", effect.Get()));
    EXPECT_EQ(AAX_SUCCESS, host->AddEffect("other", effect.Get()));
    EXPECT_EQ(2U, host->description().effects.size());
    EXPECT_EQ("other", host->description().effects[1].id);
}

TEST_F(ModuleHostTest, RefusesIncompleteEffects) {
    EXPECT_EQ(AAX_ERROR_NO_COMPONENTS, host->AddEffect("id", makeEffect(true, false).Get()));
    EXPECT_EQ(AAX_ERROR_EMPTY_EFFECT_NAME, host->AddEffect("id", makeEffect(false, true).Get()));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, host->AddEffect(nullptr, makeEffect(true, true).Get()));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, host->AddEffect("id", nullptr));
    EXPECT_TRUE(host->description().effects.empty());
}

TEST_F(ModuleHostTest, RefusesNull) {
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, host->NewDescriptor(nullptr));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, host->SetManufacturerName(nullptr));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, host->AddPackageName(nullptr));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, host->NewPropertyMap(nullptr));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, host->SetProperties(nullptr));
}

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

TEST_F(HostDescriptionHostTest, ReportsTheFeaturesOfItsOptions) {
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

class HostComponentFactoryTest : public testing::Test {
protected:
    std::shared_ptr<HostContext> context = testContext();
    ACFPtr<ModuleHost> module = ACFPtr<ModuleHost>::Adopt(new ModuleHost(context));
    ACFPtr<IACFComponentFactory> factory =
        ACFPtr<IACFComponentFactory>::Query(module.Get(), IID_IACFComponentFactory);

    bool makes(const acfCLSID& component, const acfIID& iid) {
        void* made = &made;
        const ACFRESULT result = factory->CreateComponent(nullptr, component, iid, &made);
        const auto owned = ACFPtr<IACFUnknown>::Adopt(static_cast<IACFUnknown*>(made));
        EXPECT_EQ(result == ACF_OK, static_cast<bool>(owned));
        return result == ACF_OK;
    }
};

TEST_F(HostComponentFactoryTest, MakesServicesAndPageTables) {
    EXPECT_TRUE(makes(AAXCompID_HostServices, IID_IAAXHostServicesV1));
    EXPECT_TRUE(makes(AAXCompID_HostServices, IID_IAAXHostServicesV3));
    EXPECT_TRUE(makes(AAXCompID_PageTable, IID_IAAXPageTableV1));
    EXPECT_TRUE(makes(AAXCompID_PageTable, IID_IAAXPageTableV2));
    EXPECT_EQ(1, context->ledger.total());
}

TEST_F(HostComponentFactoryTest, MakesNothingElse) {
    EXPECT_FALSE(makes(IID_IAAXControllerV1, IID_IACFUnknown));
    EXPECT_FALSE(makes(AAXCompID_PageTable, IID_IAAXHostServicesV1));
    EXPECT_EQ(ACF_E_NOINTERFACE,
              factory->CreateComponent(nullptr, AAXCompID_PageTable, IID_IAAXPageTableV1, nullptr));
    void* made = &made;
    EXPECT_EQ(ACF_E_NOINTERFACE,
              factory->CreateComponent(module.Get(), AAXCompID_PageTable, IID_IAAXPageTableV1, &made));
    EXPECT_EQ(nullptr, made);
    EXPECT_EQ(1, context->ledger.total());
}

TEST_F(HostComponentFactoryTest, MakesNoComponentForAWithheldInterface) {
    context->options.withheld = {IID_IAAXHostServicesV2};
    EXPECT_TRUE(makes(AAXCompID_HostServices, IID_IAAXHostServicesV1));
    EXPECT_FALSE(makes(AAXCompID_HostServices, IID_IAAXHostServicesV2));
}

TEST(HostServicesTest, EveryVersionCanBeWithheldOnItsOwn) {
    const acfIID versions[] = {IID_IAAXHostServicesV1, IID_IAAXHostServicesV2, IID_IAAXHostServicesV3};
    for (const acfIID& withheld : versions) {
        HostOptions options;
        options.withheld = {withheld};
        const auto services = ACFPtr<HostServices>::Adopt(new HostServices(testContext(options)));
        for (const acfIID& version : versions) {
            EXPECT_EQ(!(version == withheld),
                      static_cast<bool>(ACFPtr<IACFUnknown>::Query(services.Get(), version)));
        }
    }
}

TEST(HostServicesTest, HandsEverythingToTheMonitor) {
    const auto context = testContext();
    std::vector<TraceLine> traces;
    std::vector<AssertFailure> failures;
    context->monitor->setTraceListener([&](const TraceLine& line) { traces.push_back(line); });
    context->monitor->setAssertListener([&](const AssertFailure& failure) { failures.push_back(failure); });
    context->monitor->expectTrace("line");
    context->monitor->expectAssertion("a < b");
    const auto services = ACFPtr<HostServices>::Adopt(new HostServices(context));
    EXPECT_EQ(AAX_SUCCESS, services->Trace(1, "line one"));
    EXPECT_EQ(AAX_SUCCESS, services->StackTrace(2, 3, "line two"));
    EXPECT_EQ(AAX_SUCCESS, services->HandleAssertFailure("f.cpp", 10, "a < b", 1));
    ASSERT_EQ(2U, traces.size());
    EXPECT_EQ(2, traces[1].priority);
    EXPECT_EQ("line two", traces[1].text);
    ASSERT_EQ(1U, failures.size());
    EXPECT_EQ("f.cpp", failures[0].file);
    EXPECT_EQ(10, failures[0].line);
    EXPECT_EQ(1, failures[0].flags);
    EXPECT_TRUE(context->monitor->violations().empty());
}

} // namespace
} // namespace varno
