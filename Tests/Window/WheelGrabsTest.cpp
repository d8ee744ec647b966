#include "Window/WheelGrabs.h"

#include "Tests/Window/WindowFixture.h"

#include <X11/keysym.h>

#include <optional>

namespace varno::test {
namespace {

using testing::ElementsAre;
using testing::Pair;
using Direction = WheelStep::Direction;

class WheelGrabsTest : public WindowFixture {
protected:
    WheelGrabsTest() {
        mGrabs.emplace(mConnection, mShell, [this](const WheelStep& step) { mSteps.push_back(step); });
        settle();
        mPointer.move(onScreen({33, 44}));
    }

    void turn(Button button) {
        mPointer.press(button);
        mPointer.release(button);
        settle();
    }

    std::vector<WheelStep> mSteps;
    std::optional<WheelGrabs> mGrabs;
};

TEST_F(WheelGrabsTest, ReportEachStepInPlaceOfTheView) {
    for (const auto button :
         {Button::kWheelUp, Button::kWheelDown, Button::kWheelLeft, Button::kWheelRight}) {
        turn(button);
    }
    std::vector<Direction> directions;
    for (const WheelStep& step : mSteps) {
        directions.push_back(step.direction);
        EXPECT_EQ(step.place, (WindowPlace{33, 44}));
        EXPECT_EQ(step.modifiers, 0);
        EXPECT_NE(step.timeMs, 0U);
    }
    EXPECT_THAT(directions,
                ElementsAre(Direction::kUp, Direction::kDown, Direction::kLeft, Direction::kRight));
    EXPECT_TRUE(viewEvents().empty());
}

TEST_F(WheelGrabsTest, ReportAStepWhenItIsMade) {
    mPointer.press(Button::kWheelUp);
    settle();
    EXPECT_EQ(mSteps.size(), 1U);
    mPointer.release(Button::kWheelUp);
    settle();
    EXPECT_EQ(mSteps.size(), 1U);
}

// Others may have selected the buttons of the window.
TEST_F(WheelGrabsTest, OtherButtonsOfTheWindowAreNoSteps) {
    mPerson.destroyWindow(mChild);
    mConnection.select(mShell, XCB_EVENT_MASK_BUTTON_PRESS);
    int presses = 0;
    const auto events = mConnection.events().add(
        mShell, [&](const auto& event) { presses += eventKind(event) == XCB_BUTTON_PRESS ? 1 : 0; });
    settle();
    turn(Button::kRight);
    EXPECT_EQ(presses, 1);
    EXPECT_TRUE(mSteps.empty());
}

TEST_F(WheelGrabsTest, WorkWithAnyModifiersAndLocks) {
    for (const auto lock : std::initializer_list<xcb_keysym_t>{XK_Caps_Lock, XK_Num_Lock}) {
        mKeyboard.tap(lock);
        mPointer.hold({Modifier::kShift, Modifier::kControl});
        turn(Button::kWheelUp);
        mPointer.hold({});
        turn(Button::kWheelUp);
        mKeyboard.tap(lock);
    }
    ASSERT_EQ(mSteps.size(), 4U);
    for (const std::size_t held : {0U, 2U}) {
        EXPECT_EQ(mSteps[held].modifiers, XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL);
        EXPECT_EQ(mSteps[held + 1].modifiers, 0);
    }
}

TEST_F(WheelGrabsTest, LeaveOtherButtonsAndOtherWindowsAlone) {
    turn(Button::kLeft);
    EXPECT_THAT(viewEvents(), ElementsAre(Pair(XCB_BUTTON_PRESS, 1), Pair(XCB_BUTTON_RELEASE, 1)));
    mPointer.move({5, 5});
    turn(Button::kWheelUp);
    EXPECT_TRUE(mSteps.empty());
}

// The client that holds the pointer keeps the wheel.
TEST_F(WheelGrabsTest, LeaveTheWheelToADrag) {
    mPointer.press();
    turn(Button::kWheelUp);
    mPointer.release();
    EXPECT_TRUE(mSteps.empty());
    EXPECT_EQ(viewEvents().size(), 4U);
    turn(Button::kWheelUp);
    EXPECT_EQ(mSteps.size(), 1U);
}

// The server waits for nobody: it goes on while this program does not read.
TEST_F(WheelGrabsTest, HoldNothingUp) {
    mPointer.press(Button::kWheelUp);
    mPointer.release(Button::kWheelUp);
    mPointer.press();
    mPointer.release();
    EXPECT_THAT(viewEvents(), ElementsAre(Pair(XCB_BUTTON_PRESS, 1), Pair(XCB_BUTTON_RELEASE, 1)));
}

TEST_F(WheelGrabsTest, EndWithTheObject) {
    mGrabs.reset();
    settle();
    turn(Button::kWheelDown);
    EXPECT_TRUE(mSteps.empty());
    EXPECT_THAT(viewEvents(), ElementsAre(Pair(XCB_BUTTON_PRESS, 5), Pair(XCB_BUTTON_RELEASE, 5)));
}

} // namespace
} // namespace varno::test
