#include "Window/InputArea.h"

#include <utility>

namespace varno {

InputArea::InputArea(XConnection& connection, xcb_window_t parent, Handler handler)
    : ChildWindow(connection, parent, Use::kInputOnly,
                  XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE) {
    mEvents = connection.events().add(id(), [handler = std::move(handler)](const auto& event) {
        if (eventKind(event) == XCB_BUTTON_PRESS || eventKind(event) == XCB_BUTTON_RELEASE) {
            handler(buttonEvent(eventAs<xcb_button_press_event_t>(event)));
        }
    });
}

} // namespace varno
