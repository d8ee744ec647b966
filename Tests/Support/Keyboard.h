/// The keyboard, as the X server gets it from a person.
#ifndef VARNO_TESTS_SUPPORT_KEYBOARD_H
#define VARNO_TESTS_SUPPORT_KEYBOARD_H

#include "Tests/Support/XClient.h"

#include <vector>

namespace varno::test {

/// The key that has this symbol (X.Org's number). Throws std::runtime_error where the keyboard lacks it.
xcb_keycode_t keycodeOf(const XClient& client, xcb_keysym_t key);

/// Every operation returns when the server has told its clients.
class Keyboard {
public:
    /// Throws std::runtime_error where the server takes no input from tests.
    explicit Keyboard(const XClient& client);

    /// Presses and releases a key, with others held down meanwhile.
    void tap(xcb_keysym_t key, const std::vector<xcb_keysym_t>& held = {}) const;

private:
    void fake(std::uint8_t type, xcb_keysym_t key) const;

    const XClient& mClient;
};

} // namespace varno::test

#endif
