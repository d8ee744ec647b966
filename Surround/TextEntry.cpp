#include "Surround/TextEntry.h"

#include "Platform/RunLoop.h"

#include "vstgui/lib/cframe.h"
#include "vstgui/lib/controls/ctextedit.h"

#include <X11/keysym.h>

#include <cmath>
#include <utility>

namespace varno {
namespace {

constexpr double kPoints = 12.0;
constexpr VSTGUI::CColor kInk(0xEF, 0xEB, 0xE4);
constexpr VSTGUI::CColor kGround(0x0E, 0x0F, 0x10);
constexpr VSTGUI::CColor kEdgeOfField(0xFF, 0x9D, 0x33);

int unscaled(int length, double scale) {
    return static_cast<int>(std::lround(length / scale));
}

} // namespace

void TextEntry::open(const WindowArea& area, double scale, const std::string& text, Handler handler) {
    cancel();
    const int width = unscaled(area.width, scale);
    const int height = unscaled(area.height, scale);
    auto field = std::make_unique<Field>(mConnection, mParent, width, height);
    field->holder.setArea(area);
    mConnection.sync();
    field->edit = new VSTGUI::CTextEdit(VSTGUI::CRect(0, 0, width, height), nullptr, -1, text.c_str());
    field->edit->setFont(VSTGUI::makeOwned<VSTGUI::CFontDesc>(VSTGUI::kNormalFont->getName(), kPoints));
    field->edit->setFontColor(kInk);
    field->edit->setBackColor(kGround);
    field->edit->setFrameColor(kEdgeOfField);
    field->edit->setHoriAlign(VSTGUI::kLeftText);
    field->edit->setTextInset(VSTGUI::CPoint(4, 0));
    field->edit->setImmediateTextChange(true);
    field->frame.get().addView(field->edit);
    if (!field->frame.open(field->holder.id(), scale)) {
        handler(std::nullopt);
        return;
    }
    field->edit->takeFocus();
    mField = std::move(field);
    mArea = area;
    mHandler = std::move(handler);
    releaseModifiers();
}

// The library follows the modifiers by their presses and releases. Others may have received a release.
void TextEntry::releaseModifiers() const {
    constexpr int kModifiers = 8;
    const auto cookie = xcb_get_modifier_mapping(mConnection.get());
    const XReply<xcb_get_modifier_mapping_reply_t> reply(
        xcb_get_modifier_mapping_reply(mConnection.get(), cookie, nullptr));
    if (!reply) {
        return;
    }
    const xcb_keycode_t* const codes = xcb_get_modifier_mapping_keycodes(reply.get());
    for (int i = 0; i < kModifiers * reply->keycodes_per_modifier; ++i) {
        // Those of the second modifier lock.
        if (codes[i] != 0 && i / reply->keycodes_per_modifier != XCB_MAP_INDEX_LOCK) {
            xcb_key_press_event_t release{};
            release.response_type = XCB_KEY_RELEASE;
            release.detail = codes[i];
            release.root = mConnection.screen().root;
            release.same_screen = 1;
            pass(release);
        }
    }
}

void TextEntry::pass(xcb_key_press_event_t event) const {
    event.event = mField->frame.window();
    xcb_send_event(mConnection.get(), 0, event.event, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&event));
    mConnection.flush();
}

void TextEntry::key(const xcb_key_press_event_t& event, xcb_keysym_t symbol) {
    if (!mField) {
        return;
    }
    const bool isPress = eventKind(reinterpret_cast<const xcb_generic_event_t&>(event)) == XCB_KEY_PRESS;
    if (isPress && (symbol == XK_Return || symbol == XK_KP_Enter)) {
        awaitKeys();
        finish(mField->edit->getText().getString());
    } else if (isPress && (symbol == XK_Escape || symbol == XK_Tab || symbol == XK_ISO_Left_Tab)) {
        finish(std::nullopt);
    } else {
        pass(event);
    }
}

// The keys before Return are on their way to the library's connection.
void TextEntry::awaitKeys() const {
    mConnection.sync();
    RunLoop::shared()->tick();
}

void TextEntry::finish(std::optional<std::string> text) {
    if (!mField) {
        return;
    }
    mField.reset();
    const Handler handler = std::exchange(mHandler, nullptr);
    handler(std::move(text));
}

} // namespace varno
