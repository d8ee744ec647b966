#include "AAX_CAutoreleasePool.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace varno {
namespace {

TEST(AAX_CAutoreleasePoolTest, IsAScopeThatNests) {
    static_assert(!std::is_copy_constructible_v<AAX_CAutoreleasePool>);
    static_assert(!std::is_copy_assignable_v<AAX_CAutoreleasePool>);
    static_assert(sizeof(AAX_CAutoreleasePool) == sizeof(void*));
    EXPECT_NO_THROW({
        const AAX_CAutoreleasePool outer;
        const AAX_CAutoreleasePool inner;
    });
}

} // namespace
} // namespace varno
