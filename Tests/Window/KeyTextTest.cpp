#include "Window/KeyText.h"

#include "Tests/Support/EnvironmentVariable.h"
#include "Tests/Window/WindowFixture.h"
#include "Window/KeyFocus.h"

#include <X11/keysym.h>

namespace varno::test {
namespace {

constexpr std::uint16_t kAlt = XCB_MOD_MASK_1;
constexpr std::uint16_t kNumLock = XCB_MOD_MASK_2;
constexpr std::uint16_t kSuper = XCB_MOD_MASK_4;
constexpr std::uint16_t kSecondLayout = 1U << 13U;

class KeyTextTest : public WindowFixture {
protected:
    TypedKey press(xcb_keysym_t key, std::uint16_t state = 0) {
        xcb_key_press_event_t event{};
        event.response_type = XCB_KEY_PRESS;
        event.detail = keycodeOf(mPerson, key);
        event.state = state;
        return mText.press(event);
    }
    std::string text(xcb_keysym_t key, std::uint16_t state = 0) { return press(key, state).text; }

    // Puts symbols on a key, for each layout without and with Shift.
    void putOn(xcb_keycode_t code, const std::vector<xcb_keysym_t>& symbols) {
        xcb_change_keyboard_mapping(mPerson.connection(), 1, code, static_cast<std::uint8_t>(symbols.size()),
                                    symbols.data());
        settle();
    }

    KeyText mText{mConnection};
};

TEST_F(KeyTextTest, LettersFollowShiftAndLocks) {
    EXPECT_EQ(press(XK_a).symbol, xcb_keysym_t{XK_a});
    EXPECT_EQ(text(XK_a), "a");
    EXPECT_EQ(press(XK_a, XCB_MOD_MASK_SHIFT).symbol, xcb_keysym_t{XK_A});
    EXPECT_EQ(text(XK_a, XCB_MOD_MASK_SHIFT), "A");
    EXPECT_EQ(text(XK_a, XCB_MOD_MASK_LOCK), "A");
    EXPECT_EQ(text(XK_a, XCB_MOD_MASK_LOCK | XCB_MOD_MASK_SHIFT), "a");
    EXPECT_EQ(text(XK_minus), "-");
    EXPECT_EQ(text(XK_space), " ");
    EXPECT_EQ(text(XK_5, XCB_MOD_MASK_SHIFT), "%");
    EXPECT_EQ(text(XK_5, kNumLock), "5");
}

TEST_F(KeyTextTest, TheKeypadFollowsNumLock) {
    EXPECT_EQ(text(XK_KP_1, kNumLock), "1");
    EXPECT_EQ(press(XK_KP_1, kNumLock).symbol, xcb_keysym_t{XK_KP_1});
    EXPECT_EQ(text(XK_KP_1), "");
    EXPECT_EQ(press(XK_KP_1).symbol, xcb_keysym_t{XK_KP_End});
    EXPECT_EQ(text(XK_KP_Decimal, kNumLock), ".");
    EXPECT_EQ(text(XK_KP_Subtract), "-");
    EXPECT_EQ(text(XK_KP_Enter), "");
    EXPECT_EQ(press(XK_KP_Enter).symbol, xcb_keysym_t{XK_KP_Enter});
}

TEST_F(KeyTextTest, OtherKeysAndCommandsAddNothing) {
    for (const auto key :
         std::initializer_list<xcb_keysym_t>{XK_Return, XK_Escape, XK_BackSpace, XK_Delete, XK_Tab, XK_Left,
                                             XK_F1, XK_Shift_L, XK_Control_L}) {
        EXPECT_EQ(press(key).symbol, key);
        EXPECT_EQ(text(key), "") << key;
    }
    for (const std::uint16_t command : {std::uint16_t{XCB_MOD_MASK_CONTROL}, kAlt, kSuper}) {
        const TypedKey key = press(XK_v, command);
        EXPECT_EQ(key.symbol, xcb_keysym_t{XK_v});
        EXPECT_EQ(key.text, "");
        EXPECT_EQ(key.modifiers, command);
    }
    EXPECT_EQ(press(XK_v, XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_LOCK | kNumLock).modifiers, XCB_MOD_MASK_SHIFT);
}

TEST_F(KeyTextTest, DeadKeysAreComposed) {
    for (const char* const locale : {"en_US.UTF-8", "C", "nonsense"}) {
        const EnvironmentVariable variable("LC_ALL", locale);
        KeyText text(mConnection);
        const auto typed = [&](xcb_keycode_t code) {
            xcb_key_press_event_t event{};
            event.response_type = XCB_KEY_PRESS;
            event.detail = code;
            return text.press(event);
        };
        const auto dead = keycodeOf(mPerson, XK_F5);
        const auto e = keycodeOf(mPerson, XK_e);
        const auto x = keycodeOf(mPerson, XK_x);
        putOn(dead, {XK_dead_acute, XK_dead_diaeresis});
        EXPECT_EQ(typed(dead).symbol, xcb_keysym_t{0});
        const TypedKey composed = typed(e);
        EXPECT_EQ(composed.text, "\u00E9") << locale;
        EXPECT_EQ(composed.symbol, xcb_keysym_t{XK_eacute});
        EXPECT_EQ(typed(e).text, "e");
        EXPECT_EQ(typed(dead).text, "");
        EXPECT_EQ(typed(x).text, ""); // there is no such letter
        EXPECT_EQ(typed(x).text, "x");
        typed(dead);
        text.reset();
        EXPECT_EQ(typed(e).text, "e");
        putOn(dead, {XK_F5, XK_F5});
    }
}

TEST_F(KeyTextTest, FollowsANewLayout) {
    const auto code = keycodeOf(mPerson, XK_d);
    EXPECT_EQ(text(XK_d), "d");
    putOn(code, {XK_odiaeresis, XK_Odiaeresis});
    EXPECT_EQ(text(XK_odiaeresis), "\u00F6");
    EXPECT_EQ(text(XK_odiaeresis, XCB_MOD_MASK_SHIFT), "\u00D6");
}

TEST_F(KeyTextTest, KnowsTheLayoutThatIsOn) {
    putOn(keycodeOf(mPerson, XK_s), {XK_s, XK_S, XK_Cyrillic_yeru, XK_Cyrillic_YERU});
    EXPECT_EQ(text(XK_s), "s");
    EXPECT_EQ(text(XK_s, kSecondLayout), "\u044B");
    EXPECT_EQ(text(XK_s, kSecondLayout | XCB_MOD_MASK_SHIFT), "\u042B");
}

TEST_F(KeyTextTest, ReadsWhatAPersonTypes) {
    std::string text;
    const KeyFocus focus(mConnection, mShell, [&](const auto& event) {
        if (event.response_type == XCB_KEY_PRESS) {
            text += mText.press(event).text;
        }
    });
    focus.take();
    settle();
    mKeyboard.tap(XK_minus);
    mKeyboard.tap(XK_3);
    mKeyboard.tap(XK_space);
    mKeyboard.tap(XK_d);
    mKeyboard.tap(XK_b, {XK_Shift_L});
    settle();
    EXPECT_EQ(text, "-3 dB");
}

TEST_F(KeyTextTest, WithoutAKeyboardNoKeyHasAText) {
    KeyText late(mConnection);
    const auto code = keycodeOf(mPerson, XK_a);
    mServer.stop();
    xcb_key_press_event_t event{};
    event.detail = code;
    event.state = XCB_MOD_MASK_SHIFT;
    const TypedKey key = late.press(event);
    EXPECT_EQ(key.symbol, xcb_keysym_t{0});
    EXPECT_EQ(key.text, "");
    EXPECT_EQ(key.modifiers, XCB_MOD_MASK_SHIFT);
}

} // namespace
} // namespace varno::test
