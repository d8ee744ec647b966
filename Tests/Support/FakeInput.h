/// Keyboard and mouse, as an X server receives them from a person.
#ifndef VARNO_TESTS_SUPPORT_FAKEINPUT_H
#define VARNO_TESTS_SUPPORT_FAKEINPUT_H

#include "Tests/Support/XClient.h"

#include <set>
#include <vector>

namespace varno::test {

/// The key that has this symbol (X.Org's number). Throws std::runtime_error where the keyboard lacks it.
xcb_keycode_t keycodeOf(const XClient& client, xcb_keysym_t key);

/// Every operation returns when the server has sent its events to the clients.
class Keyboard {
public:
    /// Throws std::runtime_error where the server takes no input from tests.
    explicit Keyboard(const XClient& client);

    /// Presses and releases a key, with others held down meanwhile. Throws as keycodeOf does.
    void tap(xcb_keysym_t key, const std::vector<xcb_keysym_t>& held = {}) const;
    /// Presses a key alone, or releases it. Throws as keycodeOf does.
    void press(xcb_keysym_t key) const;
    void release(xcb_keysym_t key) const;

private:
    const XClient& mClient;
};

enum class Modifier { kShift, kControl, kAlt };

enum class Button {
    kLeft = 1,
    kMiddle = 2,
    kRight = 3,
    kWheelUp = 4,
    kWheelDown = 5,
    kWheelLeft = 6,
    kWheelRight = 7
};

/// The mouse, and the modifier keys that are held while it is used. Every operation returns when the server
/// has sent its events to the clients. What is still down at the end is released.
class Pointer {
public:
    /// Throws std::runtime_error where the server takes no input from tests.
    explicit Pointer(const XClient& client);
    Pointer(const Pointer&) = delete;
    Pointer& operator=(const Pointer&) = delete;
    ~Pointer() { releaseAll(); }

    /// To a place on the screen.
    void move(Place place);
    void press(Button button = Button::kLeft);
    void release(Button button = Button::kLeft);
    /// Holds exactly these keys down from now on.
    void hold(const std::set<Modifier>& modifiers);
    /// Releases every button and key.
    void releaseAll();

private:
    const XClient& mClient;
    std::set<Modifier> mHeld;
    std::set<Button> mPressed;
};

} // namespace varno::test

#endif
