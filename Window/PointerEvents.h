/// What a person does with the pointer.
#ifndef VARNO_WINDOW_POINTEREVENTS_H
#define VARNO_WINDOW_POINTEREVENTS_H

#include "Window/Geometry.h"
#include "Window/WindowEvents.h"

#include <cstdint>

namespace varno {

/// The modifiers that a gesture may depend on: Shift, Control, Alt and Super, not what locks, such as Caps
/// Lock. As bits of XCB_MOD_MASK_...: Alt is ..._1 and Super ..._4. [any]
/// @param state of an event or of a pointer query
constexpr std::uint16_t heldModifiers(std::uint16_t state) {
    constexpr unsigned kHeld = XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_4;
    return static_cast<std::uint16_t>(state & kHeld);
}

/// A button of the pointer that went down or up.
struct ButtonEvent {
    bool isDown = false;
    int button = 0;              ///< 1 left, 2 middle, 3 right, from 4 on the wheel.
    std::uint16_t modifiers = 0; ///< See heldModifiers.
    WindowPlace place;           ///< In the window that it is reported for.
    WindowPlace rootPlace;       ///< On the screen.
    xcb_timestamp_t timeMs = 0;  ///< The server's time.
};

/// What an event of a button reports. [any]
inline ButtonEvent buttonEvent(const xcb_button_press_event_t& event) {
    return {eventKind(reinterpret_cast<const xcb_generic_event_t&>(event)) == XCB_BUTTON_PRESS,
            event.detail,
            heldModifiers(event.state),
            {event.event_x, event.event_y},
            {event.root_x, event.root_y},
            event.time};
}

} // namespace varno

#endif
