#include "Surround/CurvePane.h"
#include "Surround/SizeSteps.h"
#include "Tests/Apps/varno/Support/BarTest.h"
#include "Tests/Support/WindowManager.h"

#include <X11/keysym.h>

#include <algorithm>
#include <gmock/gmock.h>
#include <xcb/xcb_icccm.h>

// The window around the editor on a desktop: a window manager frames it, places it and gives it the focus.

namespace varno::test {
namespace {

using testing::HasSubstr;

class EditManaged : public BarTest {
protected:
    // With the focus that the desktop gives to a new window, and the pointer on the empty desktop.
    std::unique_ptr<Subprocess> editManaged(const std::vector<std::string>& arguments = {}) {
        mPointer.move({1, mPerson.screen().height_in_pixels - 2});
        auto program = editEffect(arguments);
        EXPECT_TRUE(eventually([&] { return receivesKeys(); })) << "the desktop gives no focus";
        return program;
    }
    bool hasFocusWithin(xcb_window_t window) const { return mPerson.isWithin(mPerson.focus(), window); }
    // Clicks on the screen.
    void clickAt(Place place) {
        mPointer.move(place);
        mPointer.press();
        pause();
        mPointer.release();
        pause();
    }
    // A small window of another program in the upper left corner of the screen, with the focus.
    xcb_window_t openOtherWindow() const {
        auto* const connection = mPerson.connection();
        const xcb_window_t other = xcb_generate_id(connection);
        constexpr int kEdge = 40;
        xcb_create_window(connection, XCB_COPY_FROM_PARENT, other, mPerson.screen().root, 0, 0, kEdge, kEdge,
                          0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_size_hints_t hints{};
        xcb_icccm_size_hints_set_position(&hints, 1, 0, 0);
        xcb_icccm_set_wm_normal_hints(connection, other, &hints);
        xcb_map_window(connection, other);
        EXPECT_TRUE(eventually([&] { return hasFocusWithin(other); }));
        return other;
    }
    // A place on the title bar: above the program's window, in the frame.
    Place titleBar() const { return corner() + Place{kWidth / 2, -8}; }

    static constexpr Area kGainArea = {20, BarLayout::kHeight + 52, 70, 70};

    WindowManager mManager{mPerson, mServer.display(), mFolder.path()};
};

TEST_F(EditManaged, IsFramedAndKeysReachItAtOnce) {
    const auto program = editManaged();
    EXPECT_GT(corner().y, 0); // below a title bar
    key(XK_Tab, {XK_Shift_L});
    key(XK_Tab, {XK_Shift_L});
    key(XK_Tab, {XK_Shift_L}); // Mix
    type("40");
    key(XK_Return);
    key(XK_Tab); // Copy, Paste, then the bar
    key(XK_Tab);
    key(XK_Tab);
    key(XK_space); // Bypass
    key(XK_space);
    for (std::size_t i = 0; i < std::size(BarLayout::kButtons); ++i) {
        key(XK_Tab);
    }
    key(XK_End); // Gain
    EXPECT_EQ(settingsOf(*program), "--set Gain=1 --set Mix=0.4\n");
}

TEST_F(EditManaged, ADragIsOneStepOfUndo) {
    const auto program = editManaged();
    const auto gain = [&] {
        point({300, kHeight - 10});
        settle();
        return picture(kGainArea);
    };
    const auto drag = [&] {
        const Place knob = middleOf("Gain");
        point(knob);
        mPointer.press();
        for (int pixels = 10; pixels <= 40; pixels += 10) {
            point({knob.x, knob.y - pixels});
            pause();
        }
        mPointer.release();
        pause();
    };
    const auto before = gain();
    drag();
    const auto after = gain();
    EXPECT_NE(after, before);
    key(XK_z, {XK_Control_L});
    EXPECT_EQ(gain(), before);
    key(XK_z, {XK_Control_L, XK_Shift_L});
    EXPECT_EQ(gain(), after);
    click(middleOf(BarLayout::Button::kUndo));
    EXPECT_EQ(settingsOf(*program), "");
}

TEST_F(EditManaged, ADoubleClickResetsAKnob) {
    const auto program = editManaged({"--set", "Gain=0.75", "--set", "HP=1"});
    doubleClick(middleOf("Gain"));
    EXPECT_EQ(settingsOf(*program), "--set HP=1\n");
}

TEST_F(EditManaged, AControlsMenuIsUsedWithTheMouse) {
    const auto program = editManaged({"--set", "Mix=0.75"});
    click(middleOf("Mix"), Button::kRight);
    ASSERT_TRUE(opensMenu());
    const Area area = menu();
    // Heading, "Type a value", "Reset", "Copy value", "Paste value", a line, "Undo".
    clickAt({area.x + area.width / 2, area.y + area.height * 5 / 13});
    EXPECT_TRUE(closesMenu());
    EXPECT_THAT(settingsOf(*program), HasSubstr("they come back with: varno edit\n")); // with the defaults
}

TEST_F(EditManaged, AMenuClosesWhereverElseIsClicked) {
    const auto program = editManaged();
    click(middleOf(BarLayout::Button::kPresets));
    EXPECT_TRUE(opensMenu());
    clickAt({2, 2}); // the desktop
    EXPECT_TRUE(closesMenu());
    click(middleOf(BarLayout::Button::kSize));
    EXPECT_TRUE(opensMenu());
    clickAt(titleBar());
    EXPECT_TRUE(closesMenu());
    click(middleOf("Mix"), Button::kRight);
    EXPECT_TRUE(opensMenu());
    click({300, kHeight - 10});
    EXPECT_TRUE(closesMenu());
    click(middleOf("HP")); // and the next click is the control's
    EXPECT_EQ(settingsOf(*program), "--set HP=1\n");
}

TEST_F(EditManaged, AnotherWindowClosesAMenuAndLeavesAField) {
    const auto program = editManaged();
    click(middleOf(BarLayout::Button::kPresets));
    ASSERT_TRUE(opensMenu());
    const xcb_window_t other = openOtherWindow();
    EXPECT_TRUE(closesMenu());
    mPerson.destroyWindow(other);
    EXPECT_TRUE(eventually([&] { return receivesKeys(); }));
    point(middleOf("Mix"));
    pause();
    type("4"); // a field with what follows
    const xcb_window_t next = openOtherWindow();
    pause();
    type("0"); // is the other window's
    mPerson.destroyWindow(next);
    EXPECT_TRUE(eventually([&] { return receivesKeys(); }));
    key(XK_Return);
    EXPECT_EQ(settingsOf(*program), "--set Mix=0.04\n");
}

TEST_F(EditManaged, NoTipCoversAField) {
    const auto program = editManaged();
    key(XK_Tab, {XK_Shift_L});
    key(XK_Tab, {XK_Shift_L});
    key(XK_Tab, {XK_Shift_L}); // Mix: its value is shown
    EXPECT_TRUE(eventually([&] { return isTipShown(); }));
    type("4");
    EXPECT_TRUE(eventually([&] { return !isTipShown(); }, std::chrono::milliseconds(300)));
    point(middleOf("Mix"));
    std::this_thread::sleep_for(
        std::chrono::milliseconds(700)); // long enough for the tip of what is pointed at
    EXPECT_FALSE(isTipShown());
    key(XK_Return);
    EXPECT_TRUE(eventually([&] { return isTipShown(); })); // the new value
    EXPECT_EQ(settingsOf(*program), "--set Mix=0.04\n");
}

TEST_F(EditManaged, AClickGivesItTheFocusAndIsNotLost) {
    const auto program = editManaged();
    const xcb_window_t other = openOtherWindow();
    wheel(middleOf("Volume"), Button::kWheelUp); // without the focus
    EXPECT_FALSE(receivesKeys());
    click(middleOf("HP"));
    EXPECT_TRUE(eventually([&] { return receivesKeys(); }));
    point(middleOf("Mix"));
    pause();
    type("40");
    key(XK_Return);
    EXPECT_EQ(settingsOf(*program), "--set HP=1 --set Volume=0.5153846 --set Mix=0.4\n");
    mPerson.destroyWindow(other);
}

TEST_F(EditManaged, StaysUsableWhereItIsMovedTo) {
    const auto program = editManaged();
    const Place before = corner();
    const Place grip = titleBar();
    mPointer.move(grip);
    mPointer.press();
    for (int step = 1; step <= 4; ++step) {
        pause();
        mPointer.move(grip + Place{30 * step, 20 * step});
    }
    pause();
    mPointer.release();
    EXPECT_TRUE(eventually([&] { return corner().x != before.x && corner().y != before.y; }));
    pause();
    click(middleOf("HP"));
    click(middleOf(BarLayout::Button::kSize));
    ASSERT_TRUE(opensMenu());
    const Area area = menu();
    const Box button = BarLayout::row(BarLayout::Button::kSize).place;
    EXPECT_EQ(area.y, corner().y + button.y + button.height);
    key(XK_Escape);
    EXPECT_TRUE(closesMenu());
    EXPECT_EQ(settingsOf(*program), "--set HP=1\n");
}

TEST_F(EditManaged, TheFrameFollowsTheSize) {
    const auto program = editManaged();
    click(middleOf(BarLayout::Button::kSize));
    ASSERT_TRUE(opensMenu());
    const Area area = menu();
    const auto rowOf = [&](int row) {
        constexpr int kRows = static_cast<int>(std::size(kWindowSizes));
        return Place{area.x + area.width / 2, area.y + area.height * (2 * row + 1) / (2 * kRows)};
    };
    clickAt(rowOf(0)); // 75 %
    const WindowSize small = {kWidth * 3 / 4, BarLayout::kHeight * 3 / 4 + kFaceHeight * 3 / 4};
    EXPECT_TRUE(eventually([&] { return size() == small; })) << size().width << " x " << size().height;
    pause();
    key(XK_plus, {XK_Control_L});
    EXPECT_TRUE(eventually([&] { return size() == WindowSize{kWidth, kHeight}; }));
    for (int i = 0; i < 5; ++i) {
        key(XK_plus, {XK_Control_L});
    }
    pause();
    EXPECT_GT(size().width, kWidth);
    EXPECT_GE(corner().x, 0);
    EXPECT_LE(corner().x + size().width, mPerson.screen().width_in_pixels);
    EXPECT_GE(corner().y, 0);
    EXPECT_LE(corner().y + size().height, mPerson.screen().height_in_pixels);
    close();
    program->wait();
}

TEST_F(EditManaged, BypassPresetsAndCurveAreUsedWithTheMouse) {
    const auto program = editManaged();
    const auto before = picture(kFreeFace);
    click(middleOf(BarLayout::Button::kBypass));
    EXPECT_TRUE(eventually([&] { return picture(kFreeFace) != before; }));
    click(middleOf(BarLayout::Button::kBypass));
    EXPECT_TRUE(eventually([&] { return picture(kFreeFace) == before; }));
    click(middleOf(BarLayout::Button::kCurve));
    EXPECT_TRUE(eventually([&] { return size() == WindowSize{kWidth, kHeight + CurvePane::kHeight}; }));
    pause();
    click(middleOf("HP") + Place{0, CurvePane::kHeight});
    click(middleOf(BarLayout::Button::kPresets));
    ASSERT_TRUE(opensMenu());
    const Area area = menu();
    clickAt({area.x + area.width / 2, area.y + area.height - 14}); // the last preset
    EXPECT_TRUE(closesMenu());
    pause();
    click(middleOf(BarLayout::Button::kUndo));
    EXPECT_EQ(settingsOf(*program), "--set HP=1\n");
}

TEST_F(EditManaged, EscapeAsksAndTheDesktopCloses) {
    auto program = editManaged();
    wheel(middleOf("Gain"), Button::kWheelUp);
    key(XK_Escape);
    EXPECT_NE(window(), xcb_window_t{XCB_WINDOW_NONE});
    key(XK_Escape);
    EXPECT_EQ(settingsIn(program->wait()), "--set Gain=0.5153846\n");
    program = editManaged();
    wheel(middleOf("Gain"), Button::kWheelUp);
    key(XK_F4, {XK_Alt_L});
    EXPECT_EQ(settingsIn(program->wait()), "--set Gain=0.5153846\n");
}

} // namespace
} // namespace varno::test
