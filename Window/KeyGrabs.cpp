#include "Window/KeyGrabs.h"

#include "Window/KeyboardChanges.h"

#include <X11/keysym.h>

#include <algorithm>

namespace varno {
namespace {

constexpr std::uint16_t kModifierKeys = 0xFF; // of an event's state; the rest are buttons and the layout
constexpr int kModifiers = 8;

// A layout's plain symbols stand in the first column, those of a second layout in the third.
constexpr int kPlainColumns[] = {0, 2};

} // namespace

KeyGrabs::KeyGrabs(XConnection& connection, xcb_window_t window, std::vector<KeyBinding> bindings)
    : mConnection(connection),
      mWindow(window),
      mBindings(std::move(bindings)),
      mSymbols(xcb_key_symbols_alloc(connection.get())),
      mKeyboardEvents(
          connection.events().add(XCB_WINDOW_NONE, [this](const auto& event) { keyboardChanged(event); })) {
    grab();
}

bool KeyGrabs::handle(const xcb_key_press_event_t& event) {
    const bool isRepeat = isRepeated(event);
    if (eventKind(reinterpret_cast<const xcb_generic_event_t&>(event)) != XCB_KEY_PRESS) {
        return false;
    }
    const auto modifiers = event.state & kModifierKeys & ~mLocks;
    for (const auto& grab : mGrabs) {
        if (grab.code == event.detail && grab.binding->modifiers == modifiers) {
            if (grab.binding->repeats || !isRepeat) {
                grab.binding->action();
            }
            return true;
        }
    }
    return false;
}

// A key that is held is reported as released and pressed again at the same time.
bool KeyGrabs::isRepeated(const xcb_key_press_event_t& event) {
    if (eventKind(reinterpret_cast<const xcb_generic_event_t&>(event)) == XCB_KEY_RELEASE) {
        mReleasedKey = event.detail;
        mReleaseTime = event.time;
        return false;
    }
    return event.detail == mReleasedKey && event.time == mReleaseTime;
}

void KeyGrabs::keyboardChanged(const xcb_generic_event_t& event) {
    if (isKeyboardChange(mConnection, event)) {
        mSymbols.reset(xcb_key_symbols_alloc(mConnection.get()));
        grab();
    }
}

// Everything is known before the old grabs are released: a key that is pressed meanwhile would be lost, for
// as long as the server takes to answer.
void KeyGrabs::grab() {
    const std::uint16_t numLock = numLockMask();
    mLocks = static_cast<std::uint16_t>(XCB_MOD_MASK_LOCK | numLock);
    mGrabs.clear();
    for (const auto& binding : mBindings) {
        for (const auto code : codesOf(binding.key)) {
            mGrabs.push_back({code, &binding});
        }
    }
    xcb_ungrab_key(mConnection.get(), XCB_GRAB_ANY, mWindow, XCB_MOD_MASK_ANY);
    for (const auto& grab : mGrabs) {
        // A grab is for one state of the locks.
        for (const int locks : {0, int{XCB_MOD_MASK_LOCK}, int{numLock}, int{mLocks}}) {
            grabKey(grab.code, static_cast<std::uint16_t>(grab.binding->modifiers | locks));
        }
    }
}

void KeyGrabs::grabKey(xcb_keycode_t code, std::uint16_t modifiers) const {
    xcb_grab_key(mConnection.get(), 0, mWindow, modifiers, code, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
}

std::vector<xcb_keycode_t> KeyGrabs::codesOf(xcb_keysym_t key) const {
    for (const int column : kPlainColumns) {
        auto codes = codesInColumn(key, column);
        if (!codes.empty()) {
            return codes;
        }
    }
    return {};
}

std::vector<xcb_keycode_t> KeyGrabs::codesInColumn(xcb_keysym_t key, int column) const {
    const auto* setup = xcb_get_setup(mConnection.get());
    std::vector<xcb_keycode_t> codes;
    for (int code = setup->min_keycode; code <= setup->max_keycode; ++code) {
        const auto keycode = static_cast<xcb_keycode_t>(code);
        if (xcb_key_symbols_get_keysym(mSymbols.get(), keycode, column) == key) {
            codes.push_back(keycode);
        }
    }
    return codes;
}

std::uint16_t KeyGrabs::numLockMask() const {
    const auto cookie = xcb_get_modifier_mapping(mConnection.get());
    const XReply<xcb_get_modifier_mapping_reply_t> reply(
        xcb_get_modifier_mapping_reply(mConnection.get(), cookie, nullptr));
    const auto numLocks = codesInColumn(XK_Num_Lock, 0);
    std::uint16_t mask = 0;
    if (reply) {
        const xcb_keycode_t* codes = xcb_get_modifier_mapping_keycodes(reply.get());
        for (int modifier = 0; modifier < kModifiers; ++modifier) {
            const auto* first = codes + modifier * reply->keycodes_per_modifier;
            if (std::find_first_of(first, first + reply->keycodes_per_modifier, numLocks.begin(),
                                   numLocks.end()) != first + reply->keycodes_per_modifier) {
                mask = static_cast<std::uint16_t>(mask | 1U << modifier);
            }
        }
    }
    return mask;
}

} // namespace varno
