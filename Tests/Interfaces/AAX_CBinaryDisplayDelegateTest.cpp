#include "AAX_CBinaryDisplayDelegate.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace varno {
namespace {

using BinaryDisplay = AAX_CBinaryDisplayDelegate<bool>;

std::string textOf(const AAX_IDisplayDelegate<bool>& display, bool value, std::int32_t maxChars) {
    AAX_CString text("earlier text");
    EXPECT_TRUE(display.ValueToString(value, maxChars, &text));
    return text.Get();
}

BinaryDisplay withShortenedStrings() {
    BinaryDisplay display("bypass", "on");
    display.AddShortenedStrings("byp", "on3", 3);
    display.AddShortenedStrings("b", "1", 1);
    display.AddShortenedStrings("bypas", "on5", 5);
    return display;
}

TEST(BinaryDisplay, ShowsOneTextForEachState) {
    AAX_CString text;
    EXPECT_TRUE(BinaryDisplay("bypass", "on").ValueToString(false, &text));
    EXPECT_STREQ(text.Get(), "bypass");
    EXPECT_TRUE(BinaryDisplay("bypass", "on").ValueToString(true, &text));
    EXPECT_STREQ(text.Get(), "on");
}

TEST(BinaryDisplay, ShowsTheFullTextWhereNothingShorterIsKnown) {
    const BinaryDisplay display("bypass", "on");
    for (const std::int32_t maxChars : {-1, 0, 2, 6, 100}) {
        EXPECT_EQ(textOf(display, false, maxChars), "bypass");
        EXPECT_EQ(textOf(display, true, maxChars), "on");
    }
}

TEST(BinaryDisplay, ShowsTheWidestShortenedTextThatFits) {
    const BinaryDisplay display = withShortenedStrings();
    EXPECT_EQ(textOf(display, false, 6), "bypass");
    EXPECT_EQ(textOf(display, false, 5), "bypas");
    EXPECT_EQ(textOf(display, false, 4), "byp");
    EXPECT_EQ(textOf(display, false, 3), "byp");
    EXPECT_EQ(textOf(display, false, 2), "b");
    EXPECT_EQ(textOf(display, true, 5), "on5") << "the longer of the full texts decides for both";
}

TEST(BinaryDisplay, ShowsTheShortestTextWhereNoneFits) {
    const BinaryDisplay display = withShortenedStrings();
    EXPECT_EQ(textOf(display, false, 0), "b");
    EXPECT_EQ(textOf(display, true, -5), "1");
}

TEST(BinaryDisplay, ShowsTheLastAddedOfShortenedTextsForTheSameWidth) {
    BinaryDisplay display("bypass", "on");
    for (int i = 0; i < 40; ++i) { // enough to detect an unstable sort
        display.AddShortenedStrings(std::to_string(i).c_str(), "on", 3);
    }
    EXPECT_EQ(textOf(display, false, 3), "39");
}

TEST(BinaryDisplay, ReadsItsFullTextsOnly) {
    const BinaryDisplay display = withShortenedStrings();
    bool value = false;
    EXPECT_TRUE(display.StringToValue("on", &value));
    EXPECT_TRUE(value);
    EXPECT_TRUE(display.StringToValue("bypass", &value));
    EXPECT_FALSE(value);
    for (const char* text : {"", "On", "byp", "1", "nan"}) {
        value = true;
        EXPECT_FALSE(display.StringToValue(text, &value)) << text;
        EXPECT_FALSE(value) << text;
    }
}

TEST(BinaryDisplay, ClonesItsShortenedTexts) {
    const std::unique_ptr<AAX_IDisplayDelegate<bool>> clone = withShortenedStrings().Clone();
    EXPECT_EQ(textOf(*clone, false, 3), "byp");
}

} // namespace
} // namespace varno
