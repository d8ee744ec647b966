#include "TextTable.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

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
