#include "Window/KeyboardChanges.h"

// The header has a member that is a keyword of C++.
#ifdef __clang__
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wkeyword-macro"
#endif
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit
#ifdef __clang__
#pragma clang diagnostic pop
#endif

namespace varno {

void selectKeyboardChanges(const XConnection& connection) {
    constexpr std::uint16_t kEvents = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    constexpr std::uint16_t kParts = XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS |
                                     XCB_XKB_MAP_PART_MODIFIER_MAP | XCB_XKB_MAP_PART_VIRTUAL_MODS |
                                     XCB_XKB_MAP_PART_VIRTUAL_MOD_MAP;
    xcb_xkb_select_events(connection.get(), XCB_XKB_ID_USE_CORE_KBD, kEvents, 0, kEvents, kParts, kParts,
                          nullptr);
}

bool isKeyboardChange(const XConnection& connection, const xcb_generic_event_t& event) {
    if (eventKind(event) == XCB_MAPPING_NOTIFY) {
        return eventAs<xcb_mapping_notify_event_t>(event).request != XCB_MAPPING_POINTER;
    }
    const auto* extension = xcb_get_extension_data(connection.get(), &xcb_xkb_id);
    if (extension == nullptr || extension->present == 0 || eventKind(event) != extension->first_event) {
        return false;
    }
    // All events of this extension have one number, and their kind in the next byte.
    const int kind = event.pad0;
    return kind == XCB_XKB_NEW_KEYBOARD_NOTIFY || kind == XCB_XKB_MAP_NOTIFY;
}

} // namespace varno
