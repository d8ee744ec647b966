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
};

/// Key bindings of a window, which have priority over those of its children. They work with Caps Lock and Num
/// Lock on, and with any keyboard layout that has the keys. [main]
class KeyGrabs {
public:
    /// @param connection outlives this object, as `window` does
    KeyGrabs(XConnection& connection, xcb_window_t window, std::vector<KeyBinding> bindings);

    /// Performs the action of a bound key. @return whether the key is bound
    bool press(const xcb_key_press_event_t& event) const;
    /// The keyboard's layout has changed.
    void keyboardChanged(xcb_mapping_notify_event_t& event);

private:
    struct FreeSymbols {
        void operator()(xcb_key_symbols_t* symbols) const { xcb_key_symbols_free(symbols); }
    };
    struct Grab {
        xcb_keycode_t code;
        const KeyBinding* binding;
    };

    void grab();
    std::vector<xcb_keycode_t> codesOf(xcb_keysym_t key) const;
    std::vector<xcb_keycode_t> codesInColumn(xcb_keysym_t key, int column) const;
    std::uint16_t numLockMask() const;

    XConnection& mConnection;
    xcb_window_t mWindow;
    std::vector<KeyBinding> mBindings;
    std::unique_ptr<xcb_key_symbols_t, FreeSymbols> mSymbols;
    std::uint16_t mLocks = 0; ///< Modifiers that lock; bindings ignore them.
    std::vector<Grab> mGrabs;
};

} // namespace varno

#endif
