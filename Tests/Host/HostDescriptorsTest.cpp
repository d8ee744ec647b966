#include "Host/HostDescriptors.h"
#include "ACF/ACFPtr.h"
#include "Tests/Host/TestContext.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace varno {
namespace {

using testing::ElementsAre;

constexpr AAX_EProperty kProperty = AAX_eProperty_Host54;
constexpr AAX_EProperty kOther = AAX_eProperty_Host56;

class HostPropertyMapTest : public testing::Test {
protected:
    ACFPtr<HostPropertyMap> map = ACFPtr<HostPropertyMap>::Adopt(new HostPropertyMap(testContext()));
};

TEST_F(HostPropertyMapTest, KeepsIntegers) {
    EXPECT_EQ(AAX_SUCCESS, map->AddProperty(kProperty, 5));
    EXPECT_EQ(AAX_SUCCESS, map->AddProperty(kProperty, -6));
    std::int32_t value = 0;
    EXPECT_EQ(AAX_SUCCESS, map->GetProperty(kProperty, &value));
    EXPECT_EQ(-6, value);
}

TEST_F(HostPropertyMapTest, KeepsPointers) {
    EXPECT_EQ(AAX_SUCCESS, map->AddPointerProperty(kProperty, this));
    const void* value = nullptr;
    EXPECT_EQ(AAX_SUCCESS, map->GetPointerProperty(kProperty, &value));
    EXPECT_EQ(this, value);
}

TEST_F(HostPropertyMapTest, KeepsLists) {
    const AAX_CTypeID ids[] = {3, 4};
    EXPECT_EQ(AAX_SUCCESS, map->AddPropertyWithIDArray(kProperty, ids, 2));
    const AAX_CTypeID* list = nullptr;
    std::uint32_t count = 0;
    EXPECT_EQ(AAX_SUCCESS, map->GetPropertyWithIDArray(kProperty, &list, &count));
    ASSERT_EQ(2U, count);
    EXPECT_EQ(4U, list[1]);
    EXPECT_EQ(AAX_SUCCESS, map->AddPropertyWithIDArray(kOther, nullptr, 0));
    EXPECT_EQ(AAX_SUCCESS, map->GetPropertyWithIDArray(kOther, &list, &count));
    EXPECT_EQ(0U, count);
}

TEST_F(HostPropertyMapTest, LeavesTheOutputAloneForWhatItDoesNotHave) {
    map->AddPointerProperty(kOther, this);
    std::int32_t value = 9;
    const void* pointer = this;
    const AAX_CTypeID* list = nullptr;
    std::uint32_t count = 8;
    EXPECT_EQ(AAX_ERROR_PROPERTY_UNDEFINED, map->GetProperty(kProperty, &value));
    EXPECT_EQ(AAX_ERROR_PROPERTY_UNDEFINED, map->GetProperty(kOther, &value));
    EXPECT_EQ(AAX_ERROR_PROPERTY_UNDEFINED, map->GetPointerProperty(kProperty, &pointer));
    EXPECT_EQ(AAX_ERROR_PROPERTY_UNDEFINED, map->GetPropertyWithIDArray(kProperty, &list, &count));
    EXPECT_EQ(9, value);
    EXPECT_EQ(this, pointer);
    EXPECT_EQ(8U, count);
}

TEST_F(HostPropertyMapTest, RemovesOnce) {
    map->AddProperty(kProperty, 1);
    EXPECT_EQ(AAX_SUCCESS, map->RemoveProperty(kProperty));
    EXPECT_EQ(AAX_ERROR_PROPERTY_UNDEFINED, map->RemoveProperty(kProperty));
}

TEST_F(HostPropertyMapTest, RefusesNull) {
    std::uint32_t count = 0;
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, map->GetProperty(kProperty, nullptr));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, map->GetPointerProperty(kProperty, nullptr));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, map->AddPropertyWithIDArray(kProperty, nullptr, 1));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, map->GetPropertyWithIDArray(kProperty, nullptr, &count));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, handOutPropertyMap(map->context(), {}, nullptr));
}

void routine(void* const[], const void*) {
}

class HostComponentDescriptorTest : public testing::Test {
protected:
    std::shared_ptr<HostContext> context = testContext();
    ACFPtr<HostComponentDescriptor> component =
        ACFPtr<HostComponentDescriptor>::Adopt(new HostComponentDescriptor(context));
    ACFPtr<HostPropertyMap> map = ACFPtr<HostPropertyMap>::Adopt(new HostPropertyMap(context));

    const FieldDescription& last() const { return component->description().fields.back(); }
};

TEST_F(HostComponentDescriptorTest, RecordsEachKindOfField) {
    const AAX_CTypeID ids[] = {7, 8, 9};
    EXPECT_EQ(AAX_SUCCESS, component->AddAudioIn(0));
    EXPECT_EQ(FieldKind::kAudioIn, last().kind);
    EXPECT_EQ(AAX_SUCCESS, component->AddAudioOut(1));
    EXPECT_EQ(FieldKind::kAudioOut, last().kind);
    EXPECT_EQ(AAX_SUCCESS, component->AddAudioBufferLength(2));
    EXPECT_EQ(FieldKind::kBufferLength, last().kind);
    EXPECT_EQ(AAX_SUCCESS, component->AddSampleRate(3));
    EXPECT_EQ(FieldKind::kSampleRate, last().kind);
    EXPECT_EQ(AAX_SUCCESS, component->AddClock(4));
    EXPECT_EQ(FieldKind::kClock, last().kind);
    EXPECT_EQ(AAX_SUCCESS, component->AddSideChainIn(5));
    EXPECT_EQ(FieldKind::kSideChainIn, last().kind);
    EXPECT_EQ(AAX_SUCCESS, component->AddDataInPort(6, 8, AAX_eDataInPortType_Buffered));
    EXPECT_EQ(FieldKind::kDataInPort, last().kind);
    EXPECT_EQ(8U, last().size);
    EXPECT_EQ(1U, last().options);
    EXPECT_EQ(AAX_SUCCESS, component->AddPrivateData(7, 100, 2));
    EXPECT_EQ(FieldKind::kPrivateData, last().kind);
    EXPECT_EQ(100U, last().size);
    EXPECT_EQ(2U, last().options);
    EXPECT_EQ(AAX_SUCCESS, component->AddTemporaryData(8, 40));
    EXPECT_EQ(FieldKind::kTemporaryData, last().kind);
    EXPECT_EQ(40U, last().size);
    EXPECT_EQ(AAX_SUCCESS, component->AddMeters(9, ids, 3));
    EXPECT_EQ(FieldKind::kMeters, last().kind);
    EXPECT_EQ(12U, last().size);
    EXPECT_EQ((std::vector<AAX_CTypeID>{7, 8, 9}), last().meterIDs);
    EXPECT_EQ(AAX_SUCCESS, component->AddReservedField(10, 77));
    EXPECT_EQ(FieldKind::kReserved, last().kind);
    EXPECT_EQ(77U, last().options);
    EXPECT_EQ(11U, component->description().contextLength());
}

TEST_F(HostComponentDescriptorTest, RefusesTakenAndNegativeFields) {
    EXPECT_EQ(AAX_SUCCESS, component->AddAudioIn(3));
    EXPECT_EQ(AAX_ERROR_INVALID_FIELD_INDEX, component->AddAudioOut(3));
    EXPECT_EQ(AAX_ERROR_INVALID_FIELD_INDEX, component->AddAudioOut(-1));
    EXPECT_EQ(1U, component->description().fields.size());
}

TEST_F(HostComponentDescriptorTest, RefusesSizesAndListsThatAreNone) {
    const AAX_CTypeID ids[] = {1};
    EXPECT_EQ(AAX_ERROR_INVALID_ARGUMENT, component->AddDataInPort(0, 0, AAX_eDataInPortType_Buffered));
    EXPECT_EQ(AAX_ERROR_INVALID_ARGUMENT, component->AddPrivateData(0, 0, 0));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, component->AddMeters(0, nullptr, 1));
    EXPECT_EQ(AAX_SUCCESS, component->AddMeters(0, ids, 1));
    EXPECT_EQ(AAX_ERROR_CONTEXT_ALREADY_HAS_METERS, component->AddMeters(1, ids, 1));
}

TEST_F(HostComponentDescriptorTest, RefusesWhatThisHostDoesNotHave) {
    EXPECT_EQ(AAX_ERROR_UNIMPLEMENTED, component->AddAuxOutputStem(0, 1, "aux"));
    EXPECT_EQ(AAX_ERROR_UNIMPLEMENTED, component->AddDmaInstance(0, AAX_IDma::EMode{}));
    EXPECT_EQ(AAX_ERROR_UNIMPLEMENTED, component->AddMIDINode(0, 0, "midi", 0));
    EXPECT_EQ(AAX_ERROR_UNIMPLEMENTED, component->AddProcessProc(map.Get(), nullptr, 0));
    EXPECT_TRUE(component->description().fields.empty());
}

TEST_F(HostComponentDescriptorTest, RegistersRoutinesWithACopyOfTheirProperties) {
    std::int32_t first = 0;
    std::int32_t second = 0;
    map->AddProperty(AAX_eProperty_Host54, 1);
    EXPECT_EQ(AAX_SUCCESS, component->AddProcessProc_Native(routine, map.Get(), nullptr, nullptr, &first));
    map->AddProperty(AAX_eProperty_Host54, 2);
    EXPECT_EQ(AAX_SUCCESS, component->AddProcessProc_TI("a.dll", "Go", map.Get(), "Init", nullptr, &second));
    const VariantDescription& variant = component->description();
    EXPECT_EQ(1, integerProperty(variant.natives[0].properties, AAX_eProperty_Host54));
    EXPECT_EQ(2, integerProperty(variant.tis[0].properties, AAX_eProperty_Host54));
    EXPECT_EQ(&routine, variant.natives[0].process);
    EXPECT_EQ("Init", variant.tis[0].initName);
    EXPECT_EQ("", variant.tis[0].backgroundName);
    EXPECT_NE(first, second);
}

TEST_F(HostComponentDescriptorTest, RefusesIncompleteRegistrations) {
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT,
              component->AddProcessProc_Native(nullptr, map.Get(), nullptr, nullptr, nullptr));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT,
              component->AddProcessProc_Native(routine, nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT,
              component->AddProcessProc_TI(nullptr, "Go", map.Get(), nullptr, nullptr, nullptr));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT,
              component->AddProcessProc_TI("a.dll", nullptr, map.Get(), nullptr, nullptr, nullptr));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT,
              component->AddProcessProc_TI("a.dll", "Go", component.Get(), nullptr, nullptr, nullptr));
}

TEST_F(HostComponentDescriptorTest, ClearRemovesEverythingButTheNumbersAssigned) {
    std::int32_t first = 0;
    std::int32_t second = 0;
    component->AddAudioIn(0);
    component->AddProcessProc_Native(routine, map.Get(), nullptr, nullptr, &first);
    EXPECT_EQ(AAX_SUCCESS, component->Clear());
    EXPECT_TRUE(component->description().fields.empty());
    EXPECT_TRUE(component->description().natives.empty());
    component->AddProcessProc_Native(routine, map.Get(), nullptr, nullptr, &second);
    EXPECT_NE(first, second);
}

TEST_F(HostComponentDescriptorTest, MakesAndDuplicatesPropertyMaps) {
    map->AddProperty(AAX_eProperty_Host54, 5);
    IACFUnknown* copy = nullptr;
    EXPECT_EQ(AAX_SUCCESS, component->DuplicatePropertyMap(map.Get(), &copy));
    const auto owned = ACFPtr<IACFUnknown>::Adopt(copy);
    EXPECT_EQ(5, integerProperty(ownObject<HostPropertyMap>(copy)->properties(), AAX_eProperty_Host54));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, component->DuplicatePropertyMap(nullptr, &copy));
    EXPECT_EQ(nullptr, copy);
    EXPECT_EQ(AAX_SUCCESS, component->NewPropertyMap(&copy));
    const auto fresh = ACFPtr<IACFUnknown>::Adopt(copy);
    EXPECT_TRUE(ownObject<HostPropertyMap>(copy)->properties().empty());
}

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

} // namespace
} // namespace varno
