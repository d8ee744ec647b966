#include "AAX_VPropertyMap.h"
#include "Tests/Support/ForwardingCheck.h"
#include "Tests/Support/RecordingPropertyMap.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

using M = AAX_IPropertyMap;

constexpr auto kNull = AAX_ERROR_NULL_OBJECT;
constexpr auto kProperty = AAX_eProperty_Host60;
constexpr const char* kText = "text";

std::vector<Operation<M>> allOperations() {
    const auto addPointer =
        static_cast<AAX_Result (M::*)(AAX_EProperty, const void*)>(&M::AddPointerProperty);
    const auto addText = static_cast<AAX_Result (M::*)(AAX_EProperty, const char*)>(&M::AddPointerProperty);
    const AAX_CTypeID* ids = somewhere<AAX_CTypeID>();
    return {
        operation<M>("GetProperty", 1, kNull, &M::GetProperty, kProperty, somewhere<std::int32_t>()),
        operation<M>("GetPointerProperty", 1, kNull, &M::GetPointerProperty, kProperty,
                     somewhere<const void*>()),
        operation<M>("AddProperty", 1, kNull, &M::AddProperty, kProperty, 0x7FFFFFFF),
        operation<M>("AddPointerProperty", 1, kNull, addPointer, kProperty, somewhere<int>()),
        operation<M>("AddPointerProperty", 1, kNull, addText, kProperty, kText),
        operation<M>("RemoveProperty", 1, kNull, &M::RemoveProperty, kProperty),
        operation<M>("AddPropertyWithIDArray", 1, kNull, &M::AddPropertyWithIDArray, kProperty, ids, 3U),
        operation<M>("GetPropertyWithIDArray", 1, kNull, &M::GetPropertyWithIDArray, kProperty,
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
    expectForwarding<RecordingPropertyMap, M>(
        {IID_IAAXPropertyMapV1}, allOperations(),
        [](IACFUnknown* host) { return std::make_unique<AAX_VPropertyMap>(host, false); });
}

TEST_F(AAX_VPropertyMapTest, VirtualSlotsHaveTheirOrder) {
    expectConsecutive(slotsOf(allOperations()));
}

// Adds a value and tells whether the host was asked.
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

TEST_F(AAX_VPropertyMapTest, TellsTheHostsObject) {
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
