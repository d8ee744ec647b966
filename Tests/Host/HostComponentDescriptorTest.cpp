#include "Host/HostComponentDescriptor.h"

#include "ACF/ACFPtr.h"
#include "Host/HostPropertyMap.h"
#include "Tests/Host/TestContext.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

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
    EXPECT_EQ(FieldKind::AudioIn, last().kind);
    EXPECT_EQ(AAX_SUCCESS, component->AddAudioOut(1));
    EXPECT_EQ(FieldKind::AudioOut, last().kind);
    EXPECT_EQ(AAX_SUCCESS, component->AddAudioBufferLength(2));
    EXPECT_EQ(FieldKind::BufferLength, last().kind);
    EXPECT_EQ(AAX_SUCCESS, component->AddSampleRate(3));
    EXPECT_EQ(FieldKind::SampleRate, last().kind);
    EXPECT_EQ(AAX_SUCCESS, component->AddClock(4));
    EXPECT_EQ(FieldKind::Clock, last().kind);
    EXPECT_EQ(AAX_SUCCESS, component->AddSideChainIn(5));
    EXPECT_EQ(FieldKind::SideChainIn, last().kind);
    EXPECT_EQ(AAX_SUCCESS, component->AddDataInPort(6, 8, AAX_eDataInPortType_Buffered));
    EXPECT_EQ(FieldKind::DataInPort, last().kind);
    EXPECT_EQ(8U, last().size);
    EXPECT_EQ(1U, last().options);
    EXPECT_EQ(AAX_SUCCESS, component->AddPrivateData(7, 100, 2));
    EXPECT_EQ(FieldKind::PrivateData, last().kind);
    EXPECT_EQ(100U, last().size);
    EXPECT_EQ(2U, last().options);
    EXPECT_EQ(AAX_SUCCESS, component->AddTemporaryData(8, 40));
    EXPECT_EQ(FieldKind::TemporaryData, last().kind);
    EXPECT_EQ(40U, last().size);
    EXPECT_EQ(AAX_SUCCESS, component->AddMeters(9, ids, 3));
    EXPECT_EQ(FieldKind::Meters, last().kind);
    EXPECT_EQ(12U, last().size);
    EXPECT_EQ((std::vector<AAX_CTypeID>{7, 8, 9}), last().meterIDs);
    EXPECT_EQ(AAX_SUCCESS, component->AddReservedField(10, 77));
    EXPECT_EQ(FieldKind::Reserved, last().kind);
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

TEST_F(HostComponentDescriptorTest, ClearForgetsEverythingButTheNumbersGivenOut) {
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

TEST_F(HostComponentDescriptorTest, FailsAsOrdered) {
    context->options.faults.noComponentPropertyMap = true;
    context->options.faults.addProcess = AAX_ERROR_ACF_ERROR;
    IACFUnknown* made = map.Get();
    EXPECT_EQ(AAX_ERROR_NULL_OBJECT, component->NewPropertyMap(&made));
    EXPECT_EQ(nullptr, made);
    EXPECT_EQ(AAX_ERROR_ACF_ERROR,
              component->AddProcessProc_Native(routine, map.Get(), nullptr, nullptr, nullptr));
    EXPECT_EQ(AAX_ERROR_ACF_ERROR,
              component->AddProcessProc_TI("a", "b", map.Get(), nullptr, nullptr, nullptr));
}

} // namespace
} // namespace varno
