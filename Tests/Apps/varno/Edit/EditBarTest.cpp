#include "Surround/CurvePane.h"
#include "Tests/Apps/varno/Support/BarTest.h"

#include <X11/keysym.h>

#include <filesystem>
#include <gmock/gmock.h>

// The window around the editor, used with mouse and keys.

namespace varno::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class EditBar : public BarTest {
protected:
    // As with the focus on the window, where it stays.
    std::unique_ptr<Subprocess> editFocused(const std::vector<std::string>& arguments = {}) const {
        auto program = editEffect(arguments);
        mPerson.giveFocus(window());
        EXPECT_TRUE(eventually([&] { return receivesKeys(); }));
        return program;
    }
};

TEST_F(EditBar, BypassIsSeenAndUndoesItself) {
    const auto program = editFocused();
    const auto before = picture(kFreeFace);
    click(middleOf(BarLayout::Button::kBypass));
    point({300, 500});
    EXPECT_TRUE(eventually([&] { return picture(kFreeFace) != before; }));
    click(middleOf(BarLayout::Button::kBypass));
    point({300, 500});
    EXPECT_TRUE(eventually([&] { return picture(kFreeFace) == before; }));
    EXPECT_EQ(settingsOf(*program), "");
}

TEST_F(EditBar, TheBypassOfTheModuleIsSeenToo) {
    auto program = editFocused();
    const auto plain = picture(kFreeFace);
    close();
    program->wait();
    program = editFocused({"--set", "MasterBypassID=1"});
    const auto ofModule = picture(kFreeFace);
    EXPECT_NE(ofModule, plain);
    click(middleOf(BarLayout::Button::kBypass)); // another reason
    EXPECT_TRUE(eventually([&] { return picture(kFreeFace) != ofModule; }));
    EXPECT_NE(picture(kFreeFace), plain);
    close();
    program->wait();
}

TEST_F(EditBar, UndoAndRedoByKeysAndButtons) {
    auto program = editFocused();
    wheel(middleOf("Gain"), Button::kWheelUp, 2);
    wheel(middleOf("Mix"), Button::kWheelUp);
    key(XK_z, {XK_Control_L});
    click(middleOf(BarLayout::Button::kUndo));
    EXPECT_EQ(settingsOf(*program), "");
    program = editFocused();
    wheel(middleOf("Gain"), Button::kWheelUp, 2); // one step
    key(XK_z, {XK_Control_L});
    key(XK_y, {XK_Control_L});
    EXPECT_EQ(settingsOf(*program), "--set Gain=0.5307692\n");
}

TEST_F(EditBar, TwoSettingsAreCompared) {
    const auto program = editFocused();
    wheel(middleOf("Gain"), Button::kWheelUp);
    click(middleOf(BarLayout::Button::kSlotB));
    wheel(middleOf("Mix"), Button::kWheelUp);
    click(middleOf(BarLayout::Button::kSlotA));
    click(middleOf(BarLayout::Button::kCopySlot));
    click(middleOf(BarLayout::Button::kSlotB));
    EXPECT_EQ(settingsOf(*program), "--set Gain=0.5153846\n");
}

TEST_F(EditBar, PresetsAreLoadedSavedAndShownAgain) {
    auto program = editFocused();
    click(middleOf(BarLayout::Button::kNextPreset));
    key(XK_z, {XK_Control_L});
    wheel(middleOf("Gain"), Button::kWheelUp);
    click(middleOf(BarLayout::Button::kPresets));
    key(XK_Down);
    key(XK_Return); // "Save as"
    type("mine");
    key(XK_Return);
    const std::string file = path("data/varno-s/presets/mine.txt");
    EXPECT_TRUE(eventually([&] { return std::filesystem::exists(file); }));
    EXPECT_THAT(shell("cat '" + file + '\''), StartsWith("Varno-S 030001\nGain 0.5153846145 "));
    EXPECT_THAT(settingsOf(*program), StartsWith("--set Gain=0.5153846"));
    program = editFocused();
    click(middleOf(BarLayout::Button::kPreviousPreset)); // the last one, which is the user's
    EXPECT_THAT(settingsOf(*program), StartsWith("--set Gain=0.5153846"));
}

// The button's picture is that of a window which begins with the quality.
TEST_F(EditBar, AQualityIsChosenWithMouseAndKeys) {
    const Box box = BarLayout::row(BarLayout::Button::kQuality).place;
    const auto button = [&] { return picture({box.x, box.y, box.width, box.height}); };
    auto program = editFocused({"--quality", "4x"});
    const Picture four = button();
    close();
    program->wait();
    program = editFocused();
    const Picture one = button();
    EXPECT_NE(one, four);
    click(middleOf(BarLayout::Button::kQuality));
    ASSERT_TRUE(opensMenu());
    const Area area = menu();
    constexpr int kRows = 5; // a heading, 1x, 2x, 4x, 8x
    mPointer.move({area.middle().x, area.y + area.height * 7 / (2 * kRows)});
    mPointer.press();
    pause();
    mPointer.release();
    EXPECT_TRUE(closesMenu());
    point({300, 500});
    EXPECT_TRUE(eventually([&] { return button() == four; }));
    key(XK_z, {XK_Control_L}); // it is no step of undo
    EXPECT_EQ(button(), four);
    constexpr int kTabs = static_cast<int>(BarLayout::Button::kQuality) + 1;
    for (int i = 0; i < kTabs; ++i) {
        key(XK_Tab);
    }
    key(XK_Return);
    ASSERT_TRUE(opensMenu());
    key(XK_Down);
    key(XK_Return); // 1x
    EXPECT_TRUE(closesMenu());
    key(XK_Escape); // the mark
    EXPECT_TRUE(eventually([&] { return button() == one; }));
    EXPECT_EQ(settingsOf(*program), "");
    program = editFocused();
    EXPECT_EQ(button(), one) << "kept from the window before";
    EXPECT_EQ(settingsOf(*program), "");
}

TEST_F(EditBar, SizesAreChosenByKeysAndKept) {
    auto program = editFocused();
    key(XK_plus, {XK_Control_L});
    EXPECT_TRUE(eventually([&] { return size() == WindowSize{862, 567}; })) << size().height;
    EXPECT_EQ(settingsOf(*program), "");
    program = editFocused();
    EXPECT_EQ(size().width, 862);
    key(XK_minus, {XK_Control_L});
    EXPECT_TRUE(eventually([&] { return size() == WindowSize{kWidth, kHeight}; }));
    EXPECT_EQ(settingsOf(*program), "");
}

TEST_F(EditBar, IsNeverMadeLargerThanTheScreen) {
    const auto program = editFocused();
    for (int i = 0; i < 5; ++i) {
        key(XK_plus, {XK_Control_L});
    }
    pause();
    const auto screen = mPerson.screen();
    EXPECT_GT(size().width, kWidth);
    EXPECT_LE(size().width, screen.width_in_pixels);
    EXPECT_LE(size().height, screen.height_in_pixels);
    EXPECT_EQ(settingsOf(*program), "");
}

TEST_F(EditBar, TheCurveFoldsOutAndStays) {
    auto program = editFocused();
    click(middleOf(BarLayout::Button::kCurve));
    EXPECT_TRUE(eventually([&] { return size() == WindowSize{kWidth, kHeight + CurvePane::kHeight}; }));
    EXPECT_EQ(settingsOf(*program), "");
    program = editFocused();
    EXPECT_EQ(size().height, kHeight + CurvePane::kHeight);
    EXPECT_GT(picture({0, BarLayout::kHeight, kWidth, CurvePane::kHeight}).countColours(), 10);
    click(middleOf(BarLayout::Button::kCurve));
    EXPECT_TRUE(eventually([&] { return size().height == kHeight; }));
    EXPECT_EQ(settingsOf(*program), "");
}

TEST_F(EditBar, CanBeLeftOut) {
    const auto program = editFocused({"--no-bar"});
    EXPECT_EQ(size(), (WindowSize{kWidth, kFaceHeight}));
    EXPECT_EQ(settingsOf(*program), "");
}

TEST_F(EditBar, ADoubleClickResetsAKnob) {
    const auto program = editFocused({"--set", "Gain=0.75"});
    doubleClick(middleOf("Gain"));
    // Switches count every click.
    point(middleOf("HP"));
    for (int i = 0; i < 3; ++i) {
        mPointer.press();
        mPointer.release();
        pause();
    }
    EXPECT_EQ(settingsOf(*program), "--set HP=1\n");
}

TEST_F(EditBar, ARightClickOpensAMenu) {
    const auto program = editFocused({"--set", "Mix=0.75"});
    click(middleOf("Mix"), Button::kRight);
    key(XK_Down);
    key(XK_Down); // "Reset"
    key(XK_Return);
    pause();
    EXPECT_THAT(settingsOf(*program), HasSubstr("they come back with: varno edit\n")); // with the defaults
}

TEST_F(EditBar, EscapeGivesBackWhatADragHasChanged) {
    const auto program = editFocused();
    const Place knob = middleOf("Hot");
    point(knob);
    mPointer.press();
    point({knob.x, knob.y - 40});
    pause();
    key(XK_Escape);
    point({knob.x, knob.y - 60});
    pause();
    mPointer.release();
    pause();
    EXPECT_EQ(settingsOf(*program), "");
}

TEST_F(EditBar, TheWheelWorksOnEveryControl) {
    const auto program = editFocused();
    wheel(middleOf("HP"), Button::kWheelUp, 2);
    wheel(middleOf("Ratio"), Button::kWheelDown);
    EXPECT_THAT(settingsOf(*program), testing::AllOf(HasSubstr("HP=1"), HasSubstr("Ratio=0.42857")));
}

TEST_F(EditBar, ControlMakesADragFineFromItsFirstPixel) {
    const auto dragged = [&](const std::set<Modifier>& held) {
        const auto program = editFocused();
        const Place knob = middleOf("Gain");
        point(knob);
        mPointer.hold(held);
        mPointer.press();
        for (int pixels = 5; pixels <= 20; pixels += 5) {
            point({knob.x, knob.y - pixels});
            pause(); // the library asks for each next motion
        }
        mPointer.release();
        // Held until the end: a late motion is fine too.
        const std::string settings = settingsOf(*program);
        mPointer.hold({});
        return std::stod(settings.substr(std::string("--set Gain=").size())) - 0.5;
    };
    const double plain = dragged({});
    EXPECT_GT(plain, 0.05);
    constexpr double kFiner = 6.0; // by which the editor's knobs turn less with Shift
    EXPECT_NEAR(dragged({Modifier::kControl}), plain / kFiner, 1e-4);
}

TEST_F(EditBar, TheNameOfASwitchIsAPartOfIt) {
    const auto program = editFocused();
    const Box name = FaceLayout::legendOf(*FaceLayout::controlOf("UK"));
    click({name.x + name.width / 2, BarLayout::kHeight + name.y + name.height / 2});
    EXPECT_EQ(settingsOf(*program), "--set UK=1\n");
}

TEST_F(EditBar, EverythingIsReachedByKeys) {
    auto program = editFocused();
    for (std::size_t i = 0; i <= std::size(BarLayout::kButtons); ++i) {
        key(XK_Tab); // to the first control after the bar
    }
    key(XK_End);
    key(XK_Tab);
    key(XK_space); // High Pass
    EXPECT_EQ(settingsOf(*program), "--set Gain=1 --set HP=1\n");
    program = editFocused();
    key(XK_Tab, {XK_Shift_L});
    for (int i = 0; i < 2; ++i) {
        key(XK_Tab, {XK_Shift_L}); // before Paste and Copy: Mix
    }
    type("40");
    key(XK_Return);
    EXPECT_EQ(settingsOf(*program), "--set Mix=0.4\n");
}

TEST_F(EditBar, ANumberIsTypedOverWhatThePointerIsOn) {
    const auto program = editFocused();
    point(middleOf("Gain"));
    pause();
    type("-3");
    key(XK_Return);
    EXPECT_EQ(settingsOf(*program), "--set Gain=0.425\n");
}

TEST_F(EditBar, AClickBesideAFieldClosesIt) {
    const auto program = editFocused();
    const Place places[] = {{300, kHeight - 10}, // the plate
                            {300, BarLayout::kSecond + 10},
                            middleOf(BarLayout::Button::kUndo)};
    for (const Place place : places) {
        point(middleOf("Mix"));
        pause();
        type("40");
        click(place);
        key(XK_Return);
    }
    point(middleOf("Gain"));
    pause();
    type("-");
    click(middleOf("Gain") + Place{0, 40}); // in the field
    point({300, kHeight - 10});
    type("6");
    key(XK_Return);
    EXPECT_EQ(settingsOf(*program), "--set Gain=0.35\n");
}

TEST_F(EditBar, EscapeAsksOnceBeforeSettingsAreLost) {
    const auto program = editFocused();
    wheel(middleOf("Gain"), Button::kWheelUp);
    key(XK_Escape);
    EXPECT_NE(window(), xcb_window_t{XCB_WINDOW_NONE});
    key(XK_Escape);
    EXPECT_THAT(program->wait().err, HasSubstr("--set Gain=0.5153846"));
}

} // namespace
} // namespace varno::test
