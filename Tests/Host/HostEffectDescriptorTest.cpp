#include "Host/HostEffectDescriptor.h"

#include "ACF/ACFPtr.h"
#include "Host/HostComponentDescriptor.h"
#include "Host/HostPropertyMap.h"
#include "Tests/Host/TestContext.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace varno {
namespace {

using testing::ElementsAre;

IACFUnknown* create() {
    return nullptr;
}

class HostEffectDescriptorTest : public testing::Test {
protected:
    std::shared_ptr<HostContext> context = testContext();
    ACFPtr<HostEffectDescriptor> effect =
        ACFPtr<HostEffectDescriptor>::Adopt(new HostEffectDescriptor(context));
    ACFPtr<HostPropertyMap> map = ACFPtr<HostPropertyMap>::Adopt(new HostPropertyMap(context));

    const EffectDescription& description() const { return effect->description(); }
};

TEST_F(HostEffectDescriptorTest, RecordsEverything) {
    map->AddProperty(AAX_eProperty_Host201, 4);
    EXPECT_EQ(AAX_SUCCESS, effect->AddName("Long Name"));
    EXPECT_EQ(AAX_SUCCESS, effect->AddName("LN"));
    EXPECT_EQ(AAX_SUCCESS, effect->AddCategory(2));
    EXPECT_EQ(AAX_SUCCESS, effect->AddCategoryBypassParameter(4, "Bypass"));
    EXPECT_EQ(AAX_SUCCESS,
              effect->AddProcPtr(reinterpret_cast<void*>(&create), kAAX_ProcPtrID_Create_EffectGUI));
    EXPECT_EQ(AAX_SUCCESS, effect->AddResourceInfo(AAX_eResourceType_PageTable, "a.xml"));
    EXPECT_EQ(AAX_SUCCESS, effect->AddMeterDescription(9, "In", map.Get()));
    EXPECT_EQ(AAX_SUCCESS, effect->SetProperties(map.Get()));
    EXPECT_THAT(description().names, ElementsAre("Long Name", "LN"));
    EXPECT_THAT(description().categories, ElementsAre(2U, 4U));
    EXPECT_THAT(description().bypassParameters, ElementsAre("Bypass"));
    EXPECT_EQ(&create, description().procedure(kAAX_ProcPtrID_Create_EffectGUI));
    EXPECT_EQ("a.xml", description().resource(AAX_eResourceType_PageTable)->fileName);
    EXPECT_EQ(9U, description().meters[0].id);
    EXPECT_EQ("In", description().meters[0].name);
    EXPECT_EQ(4, integerProperty(description().properties, AAX_eProperty_Host201));
}

TEST_F(HostEffectDescriptorTest, CopiesAComponentAsItIs) {
    IACFUnknown* made = nullptr;
    EXPECT_EQ(AAX_SUCCESS, effect->NewComponentDescriptor(&made));
    const auto owned = ACFPtr<IACFUnknown>::Adopt(made);
    auto* component = ownObject<HostComponentDescriptor>(made);
    component->AddAudioIn(0);
    EXPECT_EQ(AAX_SUCCESS, effect->AddComponent(made));
    component->Clear();
    EXPECT_EQ(AAX_SUCCESS, effect->AddComponent(made));
    ASSERT_EQ(2U, description().variants.size());
    EXPECT_EQ(1U, description().variants[0].fields.size());
    EXPECT_TRUE(description().variants[1].fields.empty());
}

TEST_F(HostEffectDescriptorTest, RefusesWhatIsMissing) {
    EXPECT_EQ(AAX_ERROR_EMPTY_EFFECT_NAME, effect->AddName(nullptr));
    EXPECT_EQ(AAX_ERROR_EMPTY_EFFECT_NAME, effect->AddName(""));
    EXPECT_EQ(AAX_ERROR_NULL_COMPONENT, effect->AddComponent(nullptr));
    EXPECT_EQ(AAX_ERROR_NULL_COMPONENT, effect->AddComponent(map.Get()));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, effect->AddCategoryBypassParameter(1, nullptr));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, effect->AddProcPtr(nullptr, kAAX_ProcPtrID_Create_EffectGUI));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, effect->SetProperties(nullptr));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, effect->AddResourceInfo(AAX_eResourceType_PageTable, nullptr));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, effect->AddMeterDescription(1, nullptr, map.Get()));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, effect->AddMeterDescription(1, "In", nullptr));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, effect->NewComponentDescriptor(nullptr));
    EXPECT_EQ(AAX_ERROR_UNIMPLEMENTED, effect->AddControlMIDINode(1, 0, "midi", 0));
    EXPECT_TRUE(description().names.empty());
    EXPECT_TRUE(description().variants.empty());
}

TEST_F(HostEffectDescriptorTest, FailsAsOrdered) {
    context->options.faults.noComponentDescriptor = true;
    context->options.faults.effectPropertyMaps = 1;
    context->options.faults.addComponent = AAX_ERROR_ACF_ERROR;
    IACFUnknown* made = map.Get();
    EXPECT_EQ(AAX_ERROR_NULL_OBJECT, effect->NewComponentDescriptor(&made));
    EXPECT_EQ(nullptr, made);
    EXPECT_EQ(AAX_SUCCESS, effect->NewPropertyMap(&made));
    const auto owned = ACFPtr<IACFUnknown>::Adopt(made);
    EXPECT_EQ(AAX_ERROR_NULL_OBJECT, effect->NewPropertyMap(&made));
    EXPECT_EQ(nullptr, made);
    const auto component = ACFPtr<HostComponentDescriptor>::Adopt(new HostComponentDescriptor(context));
    EXPECT_EQ(AAX_ERROR_ACF_ERROR, effect->AddComponent(component.Get()));
}

} // namespace
} // namespace varno
