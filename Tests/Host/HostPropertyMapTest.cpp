#include "Host/HostPropertyMap.h"

#include "ACF/ACFPtr.h"
#include "Tests/Host/TestContext.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

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

} // namespace
} // namespace varno
