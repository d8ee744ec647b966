#include "Window/KeyGrabs.h"

#include "Tests/Window/WindowFixture.h"
#include "Window/KeyText.h"

#include <X11/keysym.h>

namespace varno::test {
namespace {

// How they work with locks and layouts is tested with the window of an editor.
class KeyGrabsTest : public WindowFixture {
protected:
    KeyGrabsTest() {
        settle();
        giveFocus(mChild);
    }

    int key(xcb_keysym_t symbol) const { return keycodeOf(mPerson, symbol); }

    int mSaves = 0;
    int mToggles = 0;
    KeyGrabs mGrabs{
        mConnection,
        mShell,
        {{XK_s, XCB_MOD_MASK_CONTROL, [this] { ++mSaves; }}, {XK_space, 0, [this] { ++mToggles; }, false}}};
    const WindowEvents::Registration mEvents{mConnection.events().add(mShell, [this](const auto& event) {
        if (eventKind(event) == XCB_KEY_PRESS || eventKind(event) == XCB_KEY_RELEASE) {
            mGrabs.handle(eventAs<xcb_key_press_event_t>(event));
        }
    })};
};

// The server reports changes of the keyboard otherwise to a connection that reads texts.
TEST_F(KeyGrabsTest, AreFoundAgainWhileTextsAreRead) {
    KeyText text(mConnection);
    xcb_key_press_event_t event{};
    event.response_type = XCB_KEY_PRESS;
    event.detail = static_cast<xcb_keycode_t>(key(XK_x));
    EXPECT_EQ(text.press(event).text, "x");
    const auto before = keycodeOf(mPerson, XK_s);
    const auto after = keycodeOf(mPerson, XK_x);
    const xcb_keysym_t s[] = {XK_s, XK_S};
    const xcb_keysym_t d[] = {XK_d, XK_D};
    xcb_change_keyboard_mapping(mPerson.connection(), 1, after, 2, s);
    xcb_change_keyboard_mapping(mPerson.connection(), 1, before, 2, d);
    settle();
    ASSERT_EQ(keycodeOf(mPerson, XK_s), after);
    mKeyboard.tap(XK_s, {XK_Control_L});
    settle();
    EXPECT_EQ(mSaves, 1);
    EXPECT_EQ(text.press(event).text, "s");
}

TEST_F(KeyGrabsTest, ReportWhatTheyUse) {
    const auto isUsed = [&](std::uint8_t kind, xcb_keysym_t symbol, std::uint16_t state) {
        xcb_key_press_event_t event{};
        event.response_type = kind;
        event.detail = static_cast<xcb_keycode_t>(key(symbol));
        event.state = state;
        return mGrabs.handle(event);
    };
    EXPECT_TRUE(isUsed(XCB_KEY_PRESS, XK_s, XCB_MOD_MASK_CONTROL));
    EXPECT_FALSE(isUsed(XCB_KEY_RELEASE, XK_s, XCB_MOD_MASK_CONTROL));
    EXPECT_FALSE(isUsed(XCB_KEY_PRESS, XK_s, 0));
    EXPECT_EQ(mSaves, 1);
}

TEST_F(KeyGrabsTest, AHeldKeyRepeatsOnlyWhereThatIsMeant) {
    const auto repeat = [&](xcb_keysym_t symbol, std::uint16_t state) {
        xcb_key_press_event_t event{};
        event.detail = static_cast<xcb_keycode_t>(key(symbol));
        event.state = state;
        event.event = mShell;
        const auto send = [&](std::uint8_t kind, xcb_timestamp_t time) {
            event.response_type = kind;
            event.time = time;
            mGrabs.handle(event);
        };
        send(XCB_KEY_PRESS, 1000);
        send(XCB_KEY_RELEASE, 1300);
        send(XCB_KEY_PRESS, 1300);
        send(XCB_KEY_RELEASE, 1340);
        send(XCB_KEY_PRESS, 1340);
        send(XCB_KEY_RELEASE, 1350);
        send(XCB_KEY_PRESS, 1500); // by the finger
        send(XCB_KEY_RELEASE, 1600);
    };
    repeat(XK_s, XCB_MOD_MASK_CONTROL);
    EXPECT_EQ(mSaves, 4);
    repeat(XK_space, 0);
    EXPECT_EQ(mToggles, 2);
}

// The server repeats a key that is held for about 0.7 s.
TEST_F(KeyGrabsTest, TheServersRepeatsAreSeen) {
    int count = 0;
    const auto events = mConnection.events().add(
        mShell, [&](const auto& event) { count += eventKind(event) == XCB_KEY_PRESS ? 1 : 0; });
    mKeyboard.press(XK_space);
    EXPECT_TRUE(comes([&] { return count >= 4; }));
    mKeyboard.release(XK_space);
    settle();
    EXPECT_EQ(mToggles, 1);
    // A finger is slower than a millisecond; these taps may not be.
    EXPECT_TRUE(comes([&] {
        mKeyboard.tap(XK_space);
        return mToggles > 1;
    }));
}

} // namespace
} // namespace varno::test
