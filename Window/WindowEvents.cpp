#include "Window/WindowEvents.h"

#include <utility>
#include <vector>

namespace varno {

xcb_window_t windowOf(const xcb_generic_event_t& event) {
    switch (eventKind(event)) {
    case XCB_KEY_PRESS:
    case XCB_KEY_RELEASE:
    case XCB_BUTTON_PRESS:
    case XCB_BUTTON_RELEASE:
    case XCB_MOTION_NOTIFY:
    case XCB_ENTER_NOTIFY:
    case XCB_LEAVE_NOTIFY: // all of one structure here
        return eventAs<xcb_key_press_event_t>(event).event;
    case XCB_FOCUS_IN:
    case XCB_FOCUS_OUT:
        return eventAs<xcb_focus_in_event_t>(event).event;
    case XCB_EXPOSE:
        return eventAs<xcb_expose_event_t>(event).window;
    case XCB_VISIBILITY_NOTIFY:
        return eventAs<xcb_visibility_notify_event_t>(event).window;
    case XCB_CREATE_NOTIFY:
        return eventAs<xcb_create_notify_event_t>(event).parent;
    case XCB_DESTROY_NOTIFY:
    case XCB_UNMAP_NOTIFY:
    case XCB_MAP_NOTIFY:
    case XCB_REPARENT_NOTIFY:
    case XCB_CONFIGURE_NOTIFY:
    case XCB_GRAVITY_NOTIFY:
    case XCB_CIRCULATE_NOTIFY: // as these
        return eventAs<xcb_destroy_notify_event_t>(event).event;
    case XCB_MAP_REQUEST:
        return eventAs<xcb_map_request_event_t>(event).parent;
    case XCB_CONFIGURE_REQUEST:
        return eventAs<xcb_configure_request_event_t>(event).parent;
    case XCB_PROPERTY_NOTIFY:
        return eventAs<xcb_property_notify_event_t>(event).window;
    case XCB_SELECTION_CLEAR:
        return eventAs<xcb_selection_clear_event_t>(event).owner;
    case XCB_SELECTION_REQUEST:
        return eventAs<xcb_selection_request_event_t>(event).owner;
    case XCB_SELECTION_NOTIFY:
        return eventAs<xcb_selection_notify_event_t>(event).requestor;
    case XCB_CLIENT_MESSAGE:
        return eventAs<xcb_client_message_event_t>(event).window;
    default:
        return XCB_WINDOW_NONE;
    }
}

WindowEvents::Registration WindowEvents::add(xcb_window_t window, Handler handler) {
    std::erase_if(mHandlers, [](const auto& entry) { return entry.second.expired(); });
    auto registration = std::make_shared<const Handler>(std::move(handler));
    mHandlers.emplace(window, registration);
    return registration;
}

void WindowEvents::dispatch(const xcb_generic_event_t& event) const {
    std::vector<std::weak_ptr<const Handler>> handlers;
    const auto [first, last] = mHandlers.equal_range(windowOf(event));
    for (auto entry = first; entry != last; ++entry) {
        handlers.push_back(entry->second);
    }
    for (const auto& weak : handlers) {
        if (const Registration handler = weak.lock()) {
            (*handler)(event);
        }
    }
}

} // namespace varno
