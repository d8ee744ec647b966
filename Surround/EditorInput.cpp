#include "Surround/EditorInput.h"

#include <cmath>
#include <cstdlib>

namespace varno {
namespace {

constexpr std::uint8_t kLeftButton = 1;
constexpr std::uint8_t kWheelUp = 4;
constexpr std::uint8_t kWheelDown = 5;

} // namespace

// The only window in the holder.
xcb_window_t EditorInput::view() const {
    const auto children = mConnection.children(mHolder);
    return children.empty() ? xcb_window_t{XCB_WINDOW_NONE} : children.front();
}

void EditorInput::send(std::uint8_t type, int x, int y, std::uint8_t button, std::uint16_t state) const {
    const xcb_window_t to = view();
    if (to == XCB_WINDOW_NONE) {
        return;
    }
    xcb_button_press_event_t event{};
    event.response_type = type;
    event.detail = button;
    event.root = mConnection.screen().root;
    event.event = to;
    event.event_x = static_cast<std::int16_t>(std::lround(x * mScale));
    event.event_y = static_cast<std::int16_t>(std::lround(y * mScale));
    event.state = state;
    event.same_screen = 1;
    // To the one who made the window.
    xcb_send_event(mConnection.get(), 0, to, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&event));
}

void EditorInput::click(int x, int y, std::uint16_t modifiers) const {
    send(XCB_BUTTON_PRESS, x, y, kLeftButton, modifiers);
    send(XCB_BUTTON_RELEASE, x, y, kLeftButton, static_cast<std::uint16_t>(modifiers | XCB_BUTTON_MASK_1));
    mConnection.flush();
}

void EditorInput::wheel(int x, int y, int steps, bool isFine) const {
    const auto state = static_cast<std::uint16_t>(isFine ? XCB_MOD_MASK_SHIFT : 0);
    for (int i = 0; i < std::abs(steps); ++i) {
        send(XCB_BUTTON_PRESS, x, y, steps > 0 ? kWheelUp : kWheelDown, state);
    }
    mConnection.flush();
}

void EditorInput::key(xcb_key_press_event_t event) const {
    event.event = view();
    if (event.event != XCB_WINDOW_NONE) {
        xcb_send_event(mConnection.get(), 0, event.event, XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<const char*>(&event));
        mConnection.flush();
    }
}

} // namespace varno
