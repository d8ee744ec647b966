#include "Host/HostString.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

TEST(HostStringTest, IsWrittenThroughItsInterface) {
    HostString text;
    AAX_IString& face = text;
    EXPECT_EQ(0U, face.Length());
    EXPECT_STREQ("", face.Get());
    face.Set("one");
    EXPECT_EQ("one", text.text());
    face = "two";
    EXPECT_EQ("two", text.text());
    const HostString other("three");
    face = static_cast<const AAX_IString&>(other);
    EXPECT_EQ("three", text.text());
    EXPECT_EQ(5U, face.Length());
    EXPECT_EQ(0xFFFFFFFEU, face.MaxLength());
}

} // namespace
} // namespace varno
