#include "Platform/X11/Latin1.h"

#include <gtest/gtest.h>

namespace {

using varno::latin1FromUtf8;
using varno::utf8FromLatin1;

TEST(Latin1, LeavesAsciiAsItIs) {
    std::string ascii;
    for (char character = 0; character >= 0 && character < 127; ++character) {
        ascii += character;
    }

    EXPECT_EQ(latin1FromUtf8(ascii), ascii);
    EXPECT_EQ(utf8FromLatin1(ascii), ascii);
    EXPECT_EQ(latin1FromUtf8(""), "");
}

TEST(Latin1, HasEveryCharacterOfOneByteBothWays) {
    std::string all;
    for (int code = 0; code < 256; ++code) {
        all += static_cast<char>(code);
    }

    const std::string utf8 = utf8FromLatin1(all);

    EXPECT_EQ(utf8.size(), 128u + 2 * 128u);
    EXPECT_EQ(latin1FromUtf8(utf8), all);
    EXPECT_EQ(utf8FromLatin1("\xe4\x80\xff"), "\xc3\xa4\xc2\x80\xc3\xbf");
}

TEST(Latin1, PutsOneQuestionMarkForEachCharacterBeyond) {
    EXPECT_EQ(latin1FromUtf8("\xc4\x80"), "?");              // the first beyond
    EXPECT_EQ(latin1FromUtf8("5 \xe2\x82\xac"), "5 ?");      // three bytes
    EXPECT_EQ(latin1FromUtf8("\xf0\x9f\x8e\x9b!"), "?!");    // four bytes
    EXPECT_EQ(latin1FromUtf8("\xe2\x82\xac\xc4\x80"), "??"); // two of them
}

TEST(Latin1, PutsAQuestionMarkForWhatIsNoUtf8) {
    EXPECT_EQ(latin1FromUtf8("\x80"), "?");         // without a first byte
    EXPECT_EQ(latin1FromUtf8("\x80\x80"), "??");    // two of them
    EXPECT_EQ(latin1FromUtf8("a\x80"), "a?");       // one behind a character of one byte
    EXPECT_EQ(latin1FromUtf8("\xc3"), "?");         // cut off at the end
    EXPECT_EQ(latin1FromUtf8("\xc3 x"), "? x");     // cut off within
    EXPECT_EQ(latin1FromUtf8("\xe2\x82 x"), "? x"); // the same of three
    EXPECT_EQ(latin1FromUtf8("\xc0\xaf"), "?");     // longer than need be
    EXPECT_EQ(latin1FromUtf8("\xff"), "?");
}

} // namespace
