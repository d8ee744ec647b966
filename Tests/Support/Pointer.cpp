#include "Tests/Support/Pointer.h"

#include "Tests/Support/Keyboard.h"

#include <X11/keysym.h>
#include <stdexcept>
#include <xcb/xtest.h>

namespace varno::test {

namespace {

xcb_keysym_t keysymOf(Modifier modifier) {
    switch (modifier) {
    case Modifier::Shift:
        return XK_Shift_L;
    case Modifier::Control:
        return XK_Control_L;
    case Modifier::Alt:
        return XK_Alt_L;
    }
    return XCB_NO_SYMBOL;
}

} // namespace

Pointer::Pointer(const XClient& client)
    : mClient(client) {
    const XReply<xcb_test_get_version_reply_t> version(xcb_test_get_version_reply(
        client.connection(), xcb_test_get_version(client.connection(), XCB_TEST_MAJOR_VERSION, 0), nullptr));
    if (version == nullptr) {
        throw std::runtime_error("the X server takes no input from tests");
    }
}

void Pointer::move(Place place) {
    fake(XCB_MOTION_NOTIFY, 0, place);
}

void Pointer::press(Button button) {
    mPressed.insert(button);
    fake(XCB_BUTTON_PRESS, static_cast<std::uint8_t>(button));
}

void Pointer::release(Button button) {
    mPressed.erase(button);
    fake(XCB_BUTTON_RELEASE, static_cast<std::uint8_t>(button));
}

void Pointer::hold(const std::set<Modifier>& modifiers) {
    for (const Modifier modifier : {Modifier::Shift, Modifier::Control, Modifier::Alt}) {
        if (modifiers.contains(modifier) != mHeld.contains(modifier)) {
            fake(modifiers.contains(modifier) ? XCB_KEY_PRESS : XCB_KEY_RELEASE,
                 keycodeOf(mClient, keysymOf(modifier)));
        }
    }
    mHeld = modifiers;
}

void Pointer::letGo() {
    while (!mPressed.empty()) {
        release(*mPressed.begin());
    }
    hold({});
}

void Pointer::fake(std::uint8_t type, std::uint8_t detail, Place place) {
    xcb_test_fake_input(mClient.connection(), type, detail, XCB_CURRENT_TIME, mClient.screen().root,
                        static_cast<std::int16_t>(place.x), static_cast<std::int16_t>(place.y), 0);
    mClient.synchronise();
}

} // namespace varno::test
