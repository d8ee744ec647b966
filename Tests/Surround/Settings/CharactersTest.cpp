#include "Surround/Settings/Characters.h"

#include <gtest/gtest.h>
#include <string>

namespace varno::test {
namespace {

TEST(Characters, areKept) {
    for (const char* text :
         {"", "plain", "Straße", "日本語", "\xF0\x9F\xA5\x81", "\xED\x9F\xBF", "\xEF\xBF\xBF",
          "\xF4\x8F\xBF\xBF", "\xC2\xA0", "\xE0\xA0\x80", "\xF0\x90\x80\x80"}) {
        EXPECT_EQ(safeText(text), text);
    }
}

TEST(Characters, replacesWhatIsNoUtf8) {
    const std::string mark = "\xEF\xBF\xBD";
    EXPECT_EQ(safeText("a\xFFz"), "a" + mark + "z");
    EXPECT_EQ(safeText("\x80"), mark) << "a continuation alone";
    EXPECT_EQ(safeText("\xC3"), mark) << "cut off";
    EXPECT_EQ(safeText("\xC3z"), mark + "z");
    EXPECT_EQ(safeText("\xE2\x82"), mark + mark);
    EXPECT_EQ(safeText("\xC0\x80"), mark + mark) << "longer than necessary";
    EXPECT_EQ(safeText("\xC1\xBF"), mark + mark);
    EXPECT_EQ(safeText("\xE0\x9F\xBF"), mark + mark + mark);
    EXPECT_EQ(safeText("\xF0\x8F\xBF\xBF"), mark + mark + mark + mark);
    EXPECT_EQ(safeText("\xED\xA0\x80"), mark + mark + mark) << "a surrogate";
    EXPECT_EQ(safeText("\xF4\x90\x80\x80"), mark + mark + mark + mark) << "beyond the last character";
    EXPECT_EQ(safeText("\xF5\x80\x80\x80"), mark + mark + mark + mark);
}

TEST(Characters, areReplacedWhereTheyAreUnsafe) {
    const std::string mark = "\xEF\xBF\xBD";
    // In two parts: clang-tidy refuses a text that turns the direction of writing and does not end it.
    const std::string rightToLeft = std::string("\xE2\x80") + "\xAE";
    EXPECT_EQ(safeText("a\nb\x7F\xC2\x80 " + rightToLeft + "."),
              "a" + mark + "b" + mark + mark + " " + mark + ".");
    EXPECT_TRUE(isUnsafe(0x1F));
    EXPECT_FALSE(isUnsafe(' '));
    EXPECT_TRUE(isUnsafe(0x2069));
    EXPECT_FALSE(isUnsafe(0x206A));
}

TEST(Characters, haveTheirNumbers) {
    EXPECT_EQ(firstCharacter("ab").code, U'a');
    EXPECT_EQ(firstCharacter("ä").code, U'ä');
    EXPECT_EQ(firstCharacter("日本").code, U'日');
    EXPECT_EQ(firstCharacter("\xF0\x9F\xA5\x81").code, 0x1F941U);
    EXPECT_EQ(firstCharacter("\xF0\x9F\xA5\x81").bytes, 4U);
}

} // namespace
} // namespace varno::test
