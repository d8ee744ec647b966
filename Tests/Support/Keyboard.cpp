#include "Tests/Support/Keyboard.h"

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

Keyboard::Keyboard(const XClient& client)
    : mClient(client) {
    const XReply<xcb_test_get_version_reply_t> version(xcb_test_get_version_reply(
        client.connection(), xcb_test_get_version(client.connection(), XCB_TEST_MAJOR_VERSION, 0), nullptr));
    if (version == nullptr) {
        throw std::runtime_error("the X server takes no input from tests");
    }
}

void Keyboard::tap(xcb_keysym_t key, const std::vector<xcb_keysym_t>& held) const {
    std::for_each(held.begin(), held.end(), [this](auto other) { fake(XCB_KEY_PRESS, other); });
    fake(XCB_KEY_PRESS, key);
    fake(XCB_KEY_RELEASE, key);
    std::for_each(held.rbegin(), held.rend(), [this](auto other) { fake(XCB_KEY_RELEASE, other); });
}

void Keyboard::fake(std::uint8_t type, xcb_keysym_t key) const {
    xcb_test_fake_input(mClient.connection(), type, keycodeOf(mClient, key), XCB_CURRENT_TIME,
                        mClient.screen().root, 0, 0, 0);
    mClient.synchronise();
}

} // namespace varno::test
