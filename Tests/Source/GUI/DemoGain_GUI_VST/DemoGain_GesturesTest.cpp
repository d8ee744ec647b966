#include "GUI/DemoGain_GUI_VST/DemoGain_Gestures.h"

#include <gtest/gtest.h>

#include <clocale>
#include <locale>
#include <string>

namespace {

using namespace DemoGain_Gestures;

struct Expected {
    std::int32_t mTag;
    std::string mID;
    std::string mText; // At a value of 0.333.
    bool mRestarts;
};

const Expected kExpected[] = {
    {3, "Gain", "Gain -33.40", true},
    {4, "HP", "Hi Pass", true},
    {5, "Band", "Band Pass", true},
    {6, "Atk", "Attack 33.30", true},
    {7, "Rls", "Release 33.30", true},
    {8, "UK", "UK Mode", true},
    {9, "ASw", "Auto Gain", false},
    {10, "LinkSw", "Stereo Link", false},
    {11, "HSw", "Harmonic select", false},
    {12, "Volume", "Volume -33.40", false},
    {13, "Hot", "Hottitude 33.30", true},
    {14, "Ratio", "Ratio", true},
    {15, "Mix", "Mix 33.30", true},
    {18, "PR1K", "Preset to Clipboard", false},
    {19, "PR2K", "Preset From Clipboard", true},
};

std::string textOf(const char* id, float value) {
    return StatusText(GestureOf(*ControlOf(std::string_view(id))), value);
}

TEST(DemoGain_Gestures, EveryTagHasItsParameterTextAndRestart) {
    for (const Expected& expected : kExpected) {
        const DemoGain_ViewLayout::Control* const control = ControlOf(expected.mTag);
        ASSERT_NE(control, nullptr) << expected.mTag;
        EXPECT_EQ(control->mID, expected.mID);
        EXPECT_EQ(StatusText(GestureOf(*control), 0.333F), expected.mText);
        EXPECT_EQ(GestureOf(*control).mRestartsMatching, expected.mRestarts) << expected.mID;
    }
    EXPECT_EQ(std::size(kExpected), std::size(kGestures));
}

TEST(DemoGain_Gestures, OtherTagsAreNobodys) {
    for (const std::int32_t tag : {-2, DemoGain_ViewLayout::kNoTag, 0, 1, 2, 16, 17, 20, 1000}) {
        EXPECT_EQ(ControlOf(tag), nullptr) << tag;
    }
    EXPECT_EQ(ControlOf(std::string_view("gain")), nullptr);
    EXPECT_EQ(ControlOf(std::string_view()), nullptr);
}

TEST(DemoGain_Gestures, ShowsTheEndsAndTheMiddle) {
    EXPECT_EQ(textOf("Gain", 0.0F), "Gain -100.00");
    EXPECT_EQ(textOf("Gain", 0.5F), "Gain 0.00");
    EXPECT_EQ(textOf("Gain", 1.0F), "Gain 100.00");
    EXPECT_EQ(textOf("Mix", 0.0F), "Mix 0.00");
    EXPECT_EQ(textOf("Mix", 1.0F), "Mix 100.00");
    EXPECT_EQ(textOf("Mix", 0.12345F), "Mix 12.35") << "rounded, not cut";
    EXPECT_EQ(textOf("Gain", 0.499999F), "Gain -0.00") << "as C's printf writes it";
}

TEST(DemoGain_Gestures, WritesAPointInEveryLocale) {
    struct Comma : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
    };
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new Comma));
    const std::string cBefore = std::setlocale(LC_ALL, nullptr);
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "de_DE"}) {
        if (std::setlocale(LC_ALL, name) != nullptr) {
            break;
        }
    }
    const std::string text = textOf("Hot", 0.333F);
    std::setlocale(LC_ALL, cBefore.c_str());
    std::locale::global(before);
    EXPECT_EQ(text, "Hottitude 33.30");
}

} // namespace
