#ifndef VARNO_WINDOW_KEYTEXT_H
#define VARNO_WINDOW_KEYTEXT_H

#include "Window/XConnection.h"

#include <cstdint>
#include <memory>
#include <string>
#include <xkbcommon/xkbcommon-compose.h>
#include <xkbcommon/xkbcommon.h>

namespace varno {

/// What a person means by a key that is pressed.
struct TypedKey {
    /// In X.Org's numbers, with the layout, the level (as with Shift) and the locks applied; 0 (no symbol)
    /// while a composed character is begun.
    xcb_keysym_t symbol = 0;
    /// UTF-8: what the key adds to a text. Empty for keys that add nothing, such as Return, and with Control,
    /// Alt or Super held.
    std::string text;
    std::uint16_t modifiers = 0; ///< See heldModifiers.
};

/// Reads symbols and text from key events: any layout and several of them, keypad, dead keys and the compose
/// key. [main]
class KeyText {
public:
    /// Reads the server's keyboard, and again whenever that changes. Characters are composed as the locale in
    /// LC_ALL, LC_CTYPE or LANG has it. Without a keyboard that the server describes, no key has a text.
    /// @param connection outlives this object
    explicit KeyText(XConnection& connection);
    KeyText(const KeyText&) = delete;
    KeyText& operator=(const KeyText&) = delete;

    /// @param event a press, in the order of their arrival
    TypedKey press(const xcb_key_press_event_t& event);
    /// Drops a composed character that is begun, as where a text is left.
    void reset();

private:
    struct Free {
        void operator()(xkb_context* context) const { xkb_context_unref(context); }
        void operator()(xkb_keymap* keymap) const { xkb_keymap_unref(keymap); }
        void operator()(xkb_state* state) const { xkb_state_unref(state); }
        void operator()(xkb_compose_table* table) const { xkb_compose_table_unref(table); }
        void operator()(xkb_compose_state* state) const { xkb_compose_state_unref(state); }
    };

    void readKeyboard();
    void readCompositions();
    bool compose(TypedKey& ioKey);

    XConnection& mConnection;
    std::unique_ptr<xkb_context, Free> mContext;
    std::unique_ptr<xkb_state, Free> mState;           ///< Null without a keyboard.
    std::unique_ptr<xkb_compose_state, Free> mCompose; ///< Null without compositions.
    bool mIsKeyboardOld = true;
    WindowEvents::Registration mKeyboardEvents;
};

} // namespace varno

#endif
