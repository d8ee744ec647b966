#include "CommandLine/TextLayout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace varno {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(TextLayout, WrapsAtBlanks) {
    EXPECT_THAT(wrapText("one two three", 7), ElementsAre("one two", "three"));
    EXPECT_THAT(wrapText("one two", 7), ElementsAre("one two"));
    EXPECT_THAT(wrapText("one two", 6), ElementsAre("one", "two"));
}

TEST(TextLayout, LeavesLongWordsWhole) {
    EXPECT_THAT(wrapText("a unbreakable b", 5), ElementsAre("a", "unbreakable", "b"));
}

TEST(TextLayout, WrapsNothingToNothing) {
    EXPECT_THAT(wrapText("", 5), IsEmpty());
    EXPECT_EQ(paragraph(""), "");
}

TEST(TextLayout, IndentsParagraphs) {
    EXPECT_EQ(paragraph("one two", 4), "    one two\n");
    const std::string text = paragraph(std::string(100, 'a') + " b", 4);
    EXPECT_EQ(text, "    " + std::string(100, 'a') + "\n    b\n");
}

TEST(TextLayout, SetsTextBesideATerm) {
    EXPECT_EQ(termAndText("--a", "text", 8), "  --a   text\n");
    EXPECT_EQ(termAndText("--a", "", 8), "  --a\n");
}

TEST(TextLayout, SetsTextBelowALongTerm) {
    EXPECT_EQ(termAndText("--abcd", "text", 10), "  --abcd  text\n");
    EXPECT_EQ(termAndText("--abcde", "text", 10), "  --abcde\n          text\n");
}

TEST(TextLayout, ContinuesTextInItsColumn) {
    const std::string word(50, 'w');
    EXPECT_EQ(termAndText("t", word + ' ' + word, 6), "  t   " + word + "\n      " + word + '\n');
}

TEST(TextLayout, Pads) {
    EXPECT_EQ(padRight("ab", 4), "ab  ");
    EXPECT_EQ(padLeft("ab", 4), "  ab");
    EXPECT_EQ(padRight("abcde", 4), "abcde");
    EXPECT_EQ(padLeft("abcde", 4), "abcde");
}

TEST(TextTable, AlignsColumns) {
    TextTable table({{"N", Align::kRight}, {"NAME", Align::kLeft}, {"X", Align::kLeft}});
    table.addRow({"1", "one", "a"});
    table.addRow({"10", "ten and more", "b"});
    EXPECT_EQ(table.text(), " N  NAME          X\n"
                            " 1  one           a\n"
                            "10  ten and more  b\n");
}

TEST(TextTable, NeedsNoHeadings) {
    TextTable table({{"", Align::kLeft}, {"", Align::kLeft}});
    EXPECT_EQ(table.text(), "");
    table.addRow({"name", "value"});
    EXPECT_EQ(table.text(), "name  value\n");
}

TEST(TextTable, LeavesNoBlanksAtLineEnds) {
    TextTable table({{"A", Align::kLeft}, {"B", Align::kLeft}});
    table.addRow({"long cell", ""});
    table.addRow({"", "x"});
    EXPECT_EQ(table.text(), "A          B\nlong cell\n           x\n");
}

} // namespace
} // namespace varno
