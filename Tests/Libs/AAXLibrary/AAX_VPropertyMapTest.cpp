#include "AAX_VPropertyMap.h"
#include "Tests/Support/ForwardingCheck.h"
#include "Tests/Support/RecordingDescription.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

using PropertyMap = AAX_IPropertyMap;

constexpr auto kProperty = AAX_eProperty_Host60;

std::vector<Operation<PropertyMap>> propertyMapOperations() {
    const auto addPointer = static_cast<AAX_Result (PropertyMap::*)(AAX_EProperty, const void*)>(
        &PropertyMap::AddPointerProperty);
    const auto addText = static_cast<AAX_Result (PropertyMap::*)(AAX_EProperty, const char*)>(
        &PropertyMap::AddPointerProperty);
    const AAX_CTypeID* ids = somewhere<AAX_CTypeID>();
    return {
        operation<PropertyMap>("GetProperty", 1, kWithoutHost, &PropertyMap::GetProperty, kProperty,
                               somewhere<std::int32_t>()),
        operation<PropertyMap>("GetPointerProperty", 1, kWithoutHost, &PropertyMap::GetPointerProperty,
                               kProperty, somewhere<const void*>()),
        operation<PropertyMap>("AddProperty", 1, kWithoutHost, &PropertyMap::AddProperty, kProperty,
                               0x7FFFFFFF),
        operation<PropertyMap>("AddPointerProperty", 1, kWithoutHost, addPointer, kProperty,
                               somewhere<int>()),
        operation<PropertyMap>("AddPointerProperty", 1, kWithoutHost, addText, kProperty, kText),
        operation<PropertyMap>("RemoveProperty", 1, kWithoutHost, &PropertyMap::RemoveProperty, kProperty),
        operation<PropertyMap>("AddPropertyWithIDArray", 1, kWithoutHost,
                               &PropertyMap::AddPropertyWithIDArray, kProperty, ids, 3U),
        operation<PropertyMap>("GetPropertyWithIDArray", 1, kWithoutHost,
                               &PropertyMap::GetPropertyWithIDArray, kProperty,
                               somewhere<const AAX_CTypeID*>(), somewhere<std::uint32_t>()),
    };
}

class AAX_VPropertyMapTest : public testing::Test {
protected:
    AAX_VPropertyMapTest() { mMap.offer(IID_IAAXPropertyMapV1, &mMap); }
    ~AAX_VPropertyMapTest() override { EXPECT_EQ(mMap.references(), 0); }

    RecordingPropertyMap mMap;
};

TEST_F(AAX_VPropertyMapTest, ForwardsToTheHost) {
    expectForwarding<RecordingPropertyMap, PropertyMap>(
        {IID_IAAXPropertyMapV1}, propertyMapOperations(),
        [](IACFUnknown* host) { return std::make_unique<AAX_VPropertyMap>(host, false); });
}

TEST_F(AAX_VPropertyMapTest, VirtualSlotsHaveTheirOrder) {
    expectConsecutive(slotsOf(propertyMapOperations()));
}

// Adds a value and returns whether the host was called.
AAX_Result add(RecordingPropertyMap& host, bool supportsExtended, AAX_EProperty property,
               std::uint32_t value) {
    host.calls.clear();
    AAX_VPropertyMap map(&host, supportsExtended);
    return map.AddProperty(property, static_cast<std::int32_t>(value));
}

TEST_F(AAX_VPropertyMapTest, RefusesExtendedStemFormatsThatTheHostDoesNotSupport) {
    for (const AAX_EProperty property : {AAX_eProperty_InputStemFormat, AAX_eProperty_OutputStemFormat}) {
        for (const std::uint32_t value : {0xD0000U, 0xD0001U, 0x7FFFFFFFU, 0x80000000U, 0xFF9BFFFFU,
                                          0xFF9C0001U, 0xFFFEFFFFU, 0xFFFF0001U, 0xFFFFFFFFU}) {
            EXPECT_EQ(add(mMap, false, property, value), -20039) << value;
            EXPECT_TRUE(mMap.calls.empty());
        }
    }
}

TEST_F(AAX_VPropertyMapTest, PassesAllOtherStemFormatsOn) {
    for (const AAX_EProperty property : {AAX_eProperty_InputStemFormat, AAX_eProperty_OutputStemFormat}) {
        for (const std::uint32_t value : {0U, 1U, 0x10002U, 0xCFFFFU, 0xFFFF0000U, 0xFF9C0000U}) {
            EXPECT_EQ(add(mMap, false, property, value), kHostResult) << value;
            EXPECT_EQ(mMap.calls, std::vector<std::string>{
                                      callText("AddProperty", property, static_cast<std::int32_t>(value))});
        }
    }
}

TEST_F(AAX_VPropertyMapTest, PassesExtendedStemFormatsToAHostThatSupportsThem) {
    EXPECT_EQ(add(mMap, true, AAX_eProperty_InputStemFormat, 0xD0000U), kHostResult);
    EXPECT_EQ(mMap.calls.size(), 1U);
}

TEST_F(AAX_VPropertyMapTest, OtherPropertiesMayHaveAnyValue) {
    EXPECT_EQ(add(mMap, false, AAX_eProperty_Host54, 0xD0000U), kHostResult);
    EXPECT_EQ(add(mMap, false, AAX_eProperty_PlugInID_Native, 0x56445273U), kHostResult);
}

TEST_F(AAX_VPropertyMapTest, MissingMapComesBeforeTheStemFormat) {
    AAX_VPropertyMap map(nullptr, false);
    EXPECT_EQ(map.AddProperty(AAX_eProperty_InputStemFormat, 0xD0000), -20004);
}

TEST_F(AAX_VPropertyMapTest, ReturnsTheHostsObject) {
    EXPECT_EQ(AAX_VPropertyMap(&mMap, false).HostObject(), &mMap);
    EXPECT_EQ(AAX_VPropertyMap(nullptr, false).HostObject(), nullptr);
}

TEST_F(AAX_VPropertyMapTest, AcquireWrapsWithAReferenceOfItsOwn) {
    {
        const auto map = AAX_VPropertyMap::Acquire(&mMap);
        ASSERT_NE(map, nullptr);
        EXPECT_EQ(map->HostObject(), &mMap);
        EXPECT_EQ(mMap.references(), 1);
    }
    EXPECT_EQ(AAX_VPropertyMap::Acquire(nullptr), nullptr);
}

} // namespace
} // namespace varno
