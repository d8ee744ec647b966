#include "CommandLine/VisibleText.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace varno {
namespace {

TEST(VisibleText, KeepsWhatCanBeSeen) {
    for (const std::string text :
         {"", "plain, 100 %", "two\n\tlines", "\u00e4\u00df\u20ac\U0001f3b5", "\u00a0"}) {
        EXPECT_EQ(visibleText(text), text);
    }
}

TEST(VisibleText, EscapesControlCharacters) {
    EXPECT_EQ(visibleText("\x1b[31m"), "\\u001b[31m");
    EXPECT_EQ(visibleText(std::string("\0\r\x7f", 3)), "\\u0000\\u000d\\u007f");
    EXPECT_EQ(visibleText("\xc2\x80 \xc2\x9b 2J"), "\\u0080 \\u009b 2J"); // of eight bits
    EXPECT_EQ(visibleText("a\u202eb\u2066\u200f\u2028\u061c"), "a\\u202eb\\u2066\\u200f\\u2028\\u061c");
}

TEST(VisibleText, EscapesWhatIsNotUtf8) {
    const std::vector<std::pair<std::string, std::string>> texts = {
        {"\xff.wav", "\\xff.wav"},   // never in UTF-8
        {"\x9b\x32J", "\\x9b\x32J"}, // a control character of Latin-1
        {"\xc3", "\\xc3"},           // cut off
        {"\xe2\x82", "\\xe2\\x82"},
        {"\xc3\x28", "\\xc3("},     // no second byte
        {"\xc0\x9b", "\\xc0\\x9b"}, // longer than necessary
        {"\xe0\x82\x9b", "\\xe0\\x82\\x9b"},
        {"\xed\xa0\x80", "\\xed\\xa0\\x80"},          // half of a pair
        {"\xf4\x90\x80\x80", "\\xf4\\x90\\x80\\x80"}, // beyond the last character
    };
    for (const auto& [text, visible] : texts) {
        EXPECT_EQ(visibleText(text), visible);
    }
}

TEST(VisibleLine, IsOneLine) {
    EXPECT_EQ(visibleLine("a\nb\tc\rd"), "a\\nb\\tc\\u000dd");
}

TEST(VisibleLine, LeavesOutTheMiddleOfALongText) {
    EXPECT_EQ(visibleLine(std::string(kMostLineBytes, 'x')), std::string(kMostLineBytes, 'x'));
    const std::string line = visibleLine("start" + std::string(100'000, 'x') + ": reason");
    EXPECT_LE(line.size(), kMostLineBytes + 10);
    EXPECT_TRUE(line.starts_with("startxxx"));
    EXPECT_TRUE(line.ends_with("xxx: reason"));
    EXPECT_NE(line.find("x [...] x"), std::string::npos);
}

TEST(VisibleLine, CutsBetweenCharacters) {
    for (const std::string shift : {"", "x", "xx"}) {
        std::string text = shift;
        for (int i = 0; i < 1000; ++i) {
            text += "\u20ac"; // three bytes
        }
        EXPECT_EQ(visibleLine(text).find("\\x"), std::string::npos);
    }
}

} // namespace
} // namespace varno
