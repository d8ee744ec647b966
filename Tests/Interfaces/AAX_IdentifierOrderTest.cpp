#include "AAX_IdentifierOrder.h"

#include "Tests/Support/Properties.h"
#include "Tests/Support/TestRun.h"

#include <gtest/gtest.h>

#include <string>

namespace varno::test {
namespace {

bool isBefore(const std::string& left, const std::string& right) {
    return AAX_SIdentifierOrder()(left, right);
}

TEST(IdentifierOrder, IsByteWiseAndCaseSensitive) {
    EXPECT_TRUE(isBefore("ASw", "Atk"));
    EXPECT_FALSE(isBefore("Atk", "ASw"));
    EXPECT_FALSE(isBefore("Atk", "Atk"));
    EXPECT_TRUE(isBefore("HP", "HSw"));
    EXPECT_TRUE(isBefore("Mix", "mix"));
}

TEST(IdentifierOrder, PutsABeginningBeforeTheWhole) {
    EXPECT_TRUE(isBefore("Hot", "Hotter"));
    EXPECT_FALSE(isBefore("Hotter", "Hot"));
    EXPECT_TRUE(isBefore("", "A"));
    EXPECT_FALSE(isBefore("", ""));
}

TEST(IdentifierOrder, TakesBytesAsUnsigned) {
    EXPECT_TRUE(isBefore("z", "\xC3\xA4"));
    EXPECT_FALSE(isBefore("\xC3\xA4", "z"));
}

#if VARNO_HAS_PROPERTIES
RC_GTEST_PROP(IdentifierOrder, IsThatOfStrings, (const std::string& left, const std::string& right)) {
    RC_ASSERT(isBefore(left, right) == (left < right));
    RC_ASSERT(isBefore(left, left + right) == !right.empty());
}
#endif

} // namespace
} // namespace varno::test
