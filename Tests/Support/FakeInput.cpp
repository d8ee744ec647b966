#include "Tests/Support/FakeInput.h"

#include <X11/keysym.h>
#include <algorithm>
#include <stdexcept>
#include <xcb/xcb_keysyms.h>
#include <xcb/xtest.h>

namespace varno::test {

namespace {

struct FreeSymbols {
    void operator()(xcb_key_symbols_t* symbols) const { xcb_key_symbols_free(symbols); }
};

} // namespace

xcb_keycode_t keycodeOf(const XClient& client, xcb_keysym_t key) {
    const std::unique_ptr<xcb_key_symbols_t, FreeSymbols> symbols(xcb_key_symbols_alloc(client.connection()));
    const XReply<xcb_keycode_t> codes(xcb_key_symbols_get_keycode(symbols.get(), key));
    if (codes == nullptr || codes.get()[0] == XCB_NO_SYMBOL) {
        throw std::runtime_error("the X server's keyboard lacks a key");
    }
    return codes.get()[0];
}

namespace {

// One event of keyboard or mouse; returns when the server has sent it to its clients.
void fakeInput(const XClient& client, std::uint8_t type, std::uint8_t detail, Place place = {}) {
    xcb_test_fake_input(client.connection(), type, detail, XCB_CURRENT_TIME, client.screen().root,
                        static_cast<std::int16_t>(place.x), static_cast<std::int16_t>(place.y), 0);
    client.synchronise();
}

void fakeKey(const XClient& client, std::uint8_t type, xcb_keysym_t key) {
    fakeInput(client, type, keycodeOf(client, key));
}

// The client, after a check that its server takes such events.
const XClient& withFakeInput(const XClient& client) {
    const XReply<xcb_test_get_version_reply_t> version(xcb_test_get_version_reply(
        client.connection(), xcb_test_get_version(client.connection(), XCB_TEST_MAJOR_VERSION, 0), nullptr));
    if (version == nullptr) {
        throw std::runtime_error("the X server takes no input from tests");
    }
    return client;
}

xcb_keysym_t keysymOf(Modifier modifier) {
    switch (modifier) {
    case Modifier::kShift:
        return XK_Shift_L;
    case Modifier::kControl:
        return XK_Control_L;
    case Modifier::kAlt:
        return XK_Alt_L;
    }
    return XCB_NO_SYMBOL;
}

} // namespace

Keyboard::Keyboard(const XClient& client)
    : mClient(withFakeInput(client)) {
}

void Keyboard::tap(xcb_keysym_t key, const std::vector<xcb_keysym_t>& held) const {
    std::for_each(held.begin(), held.end(), [this](auto other) { fakeKey(mClient, XCB_KEY_PRESS, other); });
    fakeKey(mClient, XCB_KEY_PRESS, key);
    fakeKey(mClient, XCB_KEY_RELEASE, key);
    std::for_each(held.rbegin(), held.rend(),
                  [this](auto other) { fakeKey(mClient, XCB_KEY_RELEASE, other); });
}

void Keyboard::press(xcb_keysym_t key) const {
    fakeKey(mClient, XCB_KEY_PRESS, key);
}

void Keyboard::release(xcb_keysym_t key) const {
    fakeKey(mClient, XCB_KEY_RELEASE, key);
}

Pointer::Pointer(const XClient& client)
    : mClient(withFakeInput(client)) {
}

void Pointer::move(Place place) {
    fakeInput(mClient, XCB_MOTION_NOTIFY, 0, place);
}

void Pointer::press(Button button) {
    mPressed.insert(button);
    fakeInput(mClient, XCB_BUTTON_PRESS, static_cast<std::uint8_t>(button));
}

void Pointer::release(Button button) {
    mPressed.erase(button);
    fakeInput(mClient, XCB_BUTTON_RELEASE, static_cast<std::uint8_t>(button));
}

void Pointer::hold(const std::set<Modifier>& modifiers) {
    for (const Modifier modifier : {Modifier::kShift, Modifier::kControl, Modifier::kAlt}) {
        if (modifiers.contains(modifier) != mHeld.contains(modifier)) {
            fakeKey(mClient, modifiers.contains(modifier) ? XCB_KEY_PRESS : XCB_KEY_RELEASE,
                    keysymOf(modifier));
        }
    }
    mHeld = modifiers;
}

void Pointer::releaseAll() {
    while (!mPressed.empty()) {
        release(*mPressed.begin());
    }
    hold({});
}

} // namespace varno::test
