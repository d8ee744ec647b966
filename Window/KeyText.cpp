#include "Window/KeyText.h"

#include "Window/KeyboardChanges.h"
#include "Window/PointerEvents.h"

#include <xkbcommon/xkbcommon-x11.h>

#include <array>
#include <cstdlib>

namespace varno {
namespace {

constexpr std::uint16_t kModifierBits = 0xFF; // of an event's state
constexpr int kLayoutBit = 13;                // the first of two
constexpr unsigned kLayouts = 3;

// Whose compositions are used where the locale has none: those of most layouts with dead keys.
constexpr const char* kPlainLocale = "en_US.UTF-8";

const char* localeName() {
    for (const char* const variable : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const char* const value = std::getenv(variable);
        if (value != nullptr && *value != '\0') {
            return value;
        }
    }
    return kPlainLocale;
}

bool isControlCharacter(const std::string& text) {
    constexpr unsigned char kFirstPrintable = 0x20;
    constexpr unsigned char kDelete = 0x7F;
    const auto first = static_cast<unsigned char>(text[0]);
    return first < kFirstPrintable || first == kDelete;
}

// Longer than any character, and than what a composition yields.
using TextBuffer = std::array<char, 64>;

} // namespace

KeyText::KeyText(XConnection& connection)
    : mConnection(connection),
      mContext(xkb_context_new(XKB_CONTEXT_NO_FLAGS)),
      mKeyboardEvents(connection.events().add(XCB_WINDOW_NONE, [this](const auto& event) {
          mIsKeyboardOld = mIsKeyboardOld || isKeyboardChange(mConnection, event);
      })) {
    readCompositions();
}

void KeyText::readCompositions() {
    if (mContext) {
        xkb_context_set_log_level(mContext.get(), XKB_LOG_LEVEL_CRITICAL); // no words about a locale
    }
    for (const char* const locale : {localeName(), kPlainLocale}) {
        if (mContext && !mCompose) {
            const std::unique_ptr<xkb_compose_table, Free> table(
                xkb_compose_table_new_from_locale(mContext.get(), locale, XKB_COMPOSE_COMPILE_NO_FLAGS));
            if (table) {
                mCompose.reset(xkb_compose_state_new(table.get(), XKB_COMPOSE_STATE_NO_FLAGS));
            }
        }
    }
}

// Changes of the keyboard arrive in numbers: it is read again when it is needed.
void KeyText::readKeyboard() {
    mIsKeyboardOld = false;
    auto* const server = mConnection.get();
    if (!mContext || xkb_x11_setup_xkb_extension(
                         server, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                         XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, nullptr, nullptr) == 0) {
        return;
    }
    selectKeyboardChanges(mConnection);
    const auto keyboard = xkb_x11_get_core_keyboard_device_id(server);
    const std::unique_ptr<xkb_keymap, Free> keymap(
        xkb_x11_keymap_new_from_device(mContext.get(), server, keyboard, XKB_KEYMAP_COMPILE_NO_FLAGS));
    if (keymap) {
        mState.reset(xkb_state_new(keymap.get()));
    }
}

TypedKey KeyText::press(const xcb_key_press_event_t& event) {
    TypedKey key;
    key.modifiers = heldModifiers(event.state);
    if (mIsKeyboardOld) {
        readKeyboard();
    }
    if (!mState) {
        return key;
    }
    xkb_state_update_mask(mState.get(), event.state & kModifierBits, 0, 0, 0, 0,
                          event.state >> kLayoutBit & kLayouts);
    key.symbol = xkb_state_key_get_one_sym(mState.get(), event.detail);
    const bool isCommand = (key.modifiers & ~unsigned{XCB_MOD_MASK_SHIFT}) != 0;
    if (!isCommand && !compose(key)) {
        TextBuffer text{};
        xkb_state_key_get_utf8(mState.get(), event.detail, text.data(), text.size());
        key.text = text.data();
    }
    if (!key.text.empty() && isControlCharacter(key.text)) {
        key.text.clear();
    }
    return key;
}

// Whether the key is a part of a composed character, which then is in the place of the key.
bool KeyText::compose(TypedKey& ioKey) {
    if (!mCompose || xkb_compose_state_feed(mCompose.get(), ioKey.symbol) == XKB_COMPOSE_FEED_IGNORED) {
        return false;
    }
    const auto status = xkb_compose_state_get_status(mCompose.get());
    if (status == XKB_COMPOSE_NOTHING) {
        return false;
    }
    ioKey.symbol = XKB_KEY_NoSymbol;
    if (status == XKB_COMPOSE_COMPOSED) {
        TextBuffer text{};
        xkb_compose_state_get_utf8(mCompose.get(), text.data(), text.size());
        ioKey.text = text.data();
        ioKey.symbol = xkb_compose_state_get_one_sym(mCompose.get());
    }
    if (status != XKB_COMPOSE_COMPOSING) {
        reset();
    }
    return true;
}

void KeyText::reset() {
    if (mCompose) {
        xkb_compose_state_reset(mCompose.get());
    }
}

} // namespace varno
