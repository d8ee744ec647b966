#include "Window/KeyFocus.h"

#include "Tests/Window/WindowFixture.h"
#include "Window/KeyGrabs.h"

#include <X11/keysym.h>

namespace varno::test {
namespace {

using testing::ElementsAre;

class KeyFocusTest : public WindowFixture {
protected:
    KeyFocusTest() {
        mFocus.setFocusHandler([this](bool hasFocus) { mChanges.push_back(hasFocus); });
        settle();
    }

    // The call that asks, and the one that acts on the answer.
    void takeBack() {
        mFocus.takeBack();
        mConnection.sync();
        mFocus.takeBack();
        mConnection.sync();
    }

    std::vector<std::pair<int, int>> mKeys;
    std::vector<bool> mChanges;
    KeyFocus mFocus{mConnection, mShell, [this](const xcb_key_press_event_t& event) {
                        mKeys.emplace_back(event.response_type, event.detail);
                    }};
};

TEST_F(KeyFocusTest, ReceivesEveryKeyWhereverThePointerIs) {
    const Picture before = picture();
    EXPECT_FALSE(mFocus.hasFocus());
    mFocus.take();
    settle();
    EXPECT_EQ(focus(), mFocus.id());
    EXPECT_TRUE(mFocus.hasFocus());
    EXPECT_EQ(picture(), before);
    const int s = keycodeOf(mPerson, XK_s);
    for (const Place place : {Place{0, 0}, onScreen({10, 10}), onScreen({0, 0})}) {
        mKeys.clear();
        mPointer.move(place);
        mKeyboard.tap(XK_s);
        settle();
        EXPECT_EQ(mKeys, (std::vector<std::pair<int, int>>{{XCB_KEY_PRESS, s}, {XCB_KEY_RELEASE, s}}));
    }
    EXPECT_TRUE(viewEvents().empty());
}

TEST_F(KeyFocusTest, ReportsThatItCameAndWent) {
    mFocus.take();
    settle();
    mFocus.take();
    settle();
    EXPECT_THAT(mChanges, ElementsAre(true));
    giveFocus(mChild);
    settle();
    EXPECT_THAT(mChanges, ElementsAre(true, false));
    EXPECT_FALSE(mFocus.hasFocus());
}

TEST_F(KeyFocusTest, IsTakenBackFromTheViewOnly) {
    mFocus.take();
    settle();
    giveFocus(mChild);
    takeBack();
    EXPECT_EQ(focus(), mFocus.id());
    const XWindow other(mPerson, {600, 600, 20, 20});
    for (const xcb_window_t elsewhere : {other.id(), xcb_window_t{XCB_INPUT_FOCUS_POINTER_ROOT}, mShell}) {
        giveFocus(elsewhere);
        takeBack();
        takeBack();
        EXPECT_EQ(focus(), elsewhere == mShell ? mFocus.id() : elsewhere);
    }
    giveFocus(mChild);
    takeBack();
    EXPECT_EQ(focus(), mFocus.id());
}

// A program that gets the focus after the question keeps it.
TEST_F(KeyFocusTest, IsNotTakenBackForAnOldAnswer) {
    giveFocus(mChild);
    mFocus.takeBack();
    mConnection.sync();
    const XWindow other(mPerson, {600, 600, 20, 20});
    giveFocus(other.id());
    mFocus.takeBack();
    settle();
    EXPECT_EQ(focus(), other.id());
}

TEST_F(KeyFocusTest, MayBeTakenBackAsSoonAsItIsLost) {
    mFocus.setFocusHandler([this](bool hasFocus) {
        if (!hasFocus) {
            takeBack();
        }
    });
    mFocus.take();
    settle();
    giveFocus(mChild);
    settle();
    EXPECT_EQ(focus(), mFocus.id());
    const XWindow other(mPerson, {600, 600, 20, 20});
    giveFocus(other.id());
    settle();
    EXPECT_EQ(focus(), other.id());
    EXPECT_FALSE(mFocus.hasFocus());
}

TEST_F(KeyFocusTest, IsTakenNoMoreThanTheEventAllows) {
    giveFocus(mChild);
    mFocus.take(1); // long ago
    settle();
    EXPECT_EQ(focus(), mChild);
}

TEST_F(KeyFocusTest, BoundKeysOfTheWindowGoFirst) {
    int saves = 0;
    KeyGrabs grabs(mConnection, mShell, {{XK_s, XCB_MOD_MASK_CONTROL, [&] { ++saves; }}});
    const auto events = mConnection.events().add(mShell, [&](const auto& event) {
        if (eventKind(event) == XCB_KEY_PRESS) {
            grabs.handle(eventAs<xcb_key_press_event_t>(event));
        }
    });
    mFocus.take();
    settle();
    mKeyboard.tap(XK_s, {XK_Control_L});
    settle();
    EXPECT_EQ(saves, 1);
    EXPECT_THAT(mChanges, ElementsAre(true)); // a grab takes the keyboard, not the focus
    EXPECT_THAT(
        mKeys, testing::Not(testing::Contains(std::pair<int, int>{XCB_KEY_PRESS, keycodeOf(mPerson, XK_s)})));
}

} // namespace
} // namespace varno::test
