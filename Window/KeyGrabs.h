#ifndef VARNO_WINDOW_KEYGRABS_H
#define VARNO_WINDOW_KEYGRABS_H

#include "Window/XConnection.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>
#include <xcb/xcb_keysyms.h>

namespace varno {

/// A key with an action, wherever in a window the input focus is.
struct KeyBinding {
    xcb_keysym_t key = 0;        ///< What is on the key without modifiers, in X.Org's numbers.
    std::uint16_t modifiers = 0; ///< XCB_MOD_MASK_... bits that must be down, and no others.
    std::function<void()> action;
    bool repeats = true; ///< Whether the action is performed again and again while the key is held.
};

/// Key bindings of a window, which have priority over those of its children. They work with Caps Lock and Num
/// Lock on, and with any keyboard layout that has the keys. [main]
class KeyGrabs {
public:
    /// @param connection outlives this object, as `window` does
    KeyGrabs(XConnection& connection, xcb_window_t window, std::vector<KeyBinding> bindings);

    /// Performs the action of a bound key that is pressed; a release has none. @return whether the event is
    /// used
    bool handle(const xcb_key_press_event_t& event);

private:
    struct FreeSymbols {
        void operator()(xcb_key_symbols_t* symbols) const { xcb_key_symbols_free(symbols); }
    };
    struct Grab {
        xcb_keycode_t code;
        const KeyBinding* binding;
    };

    void keyboardChanged(const xcb_generic_event_t& event);
    void grab();
    void grabKey(xcb_keycode_t code, std::uint16_t modifiers) const;
    bool isRepeated(const xcb_key_press_event_t& event);
    std::vector<xcb_keycode_t> codesOf(xcb_keysym_t key) const;
    std::vector<xcb_keycode_t> codesInColumn(xcb_keysym_t key, int column) const;
    std::uint16_t numLockMask() const;

    XConnection& mConnection;
    xcb_window_t mWindow;
    std::vector<KeyBinding> mBindings;
    std::unique_ptr<xcb_key_symbols_t, FreeSymbols> mSymbols;
    std::uint16_t mLocks = 0; ///< Modifiers that lock; bindings ignore them.
    std::vector<Grab> mGrabs;
    xcb_keycode_t mReleasedKey = 0;
    xcb_timestamp_t mReleaseTime = 0;
    WindowEvents::Registration mKeyboardEvents;
};

} // namespace varno

#endif
