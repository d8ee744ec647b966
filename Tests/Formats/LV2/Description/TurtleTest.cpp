#include "LV2/Description/Turtle.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

TEST(Turtle, quotesTexts) {
    EXPECT_EQ(turtleText("plain"), "\"plain\"");
    EXPECT_EQ(turtleText("a \"b\" \\ c"), "\"a \\\"b\\\" \\\\ c\"");
    EXPECT_EQ(turtleText("two\nlines"), "\"two lines\"");
}

TEST(Turtle, writesDecimalsWithAPoint) {
    EXPECT_EQ(turtleDecimal(0.0F), "0.0");
    EXPECT_EQ(turtleDecimal(1.0F), "1.0");
    EXPECT_EQ(turtleDecimal(0.07F), "0.07");
    EXPECT_EQ(turtleDecimal(-20.5F), "-20.5");
    EXPECT_EQ(turtleDecimal(1.0e-6F), "0.000001");
    EXPECT_EQ(turtleDecimal(1.0F / 7.0F), "0.14285715");
}

TEST(Turtle, joinsStatements) {
    TurtleSubject subject(turtleUri("urn:a"));
    subject.add("a", "lv2:Plugin");
    subject.add("lv2:name", std::vector<std::string>{turtleText("x"), turtleText("y")});
    subject.add("lv2:nothing", std::vector<std::string>{});
    EXPECT_EQ(subject.statement(), "<urn:a>\n\ta lv2:Plugin ;\n\tlv2:name \"x\" , \"y\" .\n\n");
}

} // namespace
} // namespace varno
