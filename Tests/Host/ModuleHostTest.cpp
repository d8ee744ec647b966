#include "Host/ModuleHost.h"

#include "ACF/ACFPtr.h"
#include "Host/HostComponentDescriptor.h"
#include "Host/HostEffectDescriptor.h"
#include "Host/HostPropertyMap.h"
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

TEST_F(ModuleHostTest, FailsAsOrdered) {
    const auto effect = makeEffect(true, true);
    context->options.faults.noEffectDescriptor = true;
    context->options.faults.addEffect = AAX_ERROR_ACF_ERROR;
    IACFUnknown* made = effect.Get();
    EXPECT_EQ(AAX_ERROR_NULL_OBJECT, host->NewDescriptor(&made));
    EXPECT_EQ(nullptr, made);
    EXPECT_EQ(AAX_ERROR_ACF_ERROR, host->AddEffect("id", effect.Get()));
}

} // namespace
} // namespace varno
