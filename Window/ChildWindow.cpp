#include "Window/ChildWindow.h"

#include <algorithm>

namespace varno {

ChildWindow::ChildWindow(XConnection& connection, xcb_window_t parent, Use use, std::uint32_t events)
    : mConnection(connection),
      mId(xcb_generate_id(connection.get())) {
    const auto windowClass =
        use == Use::kDrawing ? XCB_WINDOW_CLASS_INPUT_OUTPUT : XCB_WINDOW_CLASS_INPUT_ONLY;
    xcb_create_window(connection.get(), XCB_COPY_FROM_PARENT, mId, parent, 0, 0, 1, 1, 0,
                      static_cast<std::uint16_t>(windowClass), XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &events);
}

ChildWindow::~ChildWindow() {
    xcb_destroy_window(mConnection.get(), mId);
}

void ChildWindow::show() {
    raise();
    xcb_map_window(mConnection.get(), mId);
    mIsShown = true;
}

void ChildWindow::hide() {
    xcb_unmap_window(mConnection.get(), mId);
    mIsShown = false;
}

void ChildWindow::raise() const {
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(mConnection.get(), mId, XCB_CONFIG_WINDOW_STACK_MODE, &above);
}

void ChildWindow::moveTo(const WindowArea& area) const {
    const std::uint32_t values[] = {static_cast<std::uint32_t>(area.x), static_cast<std::uint32_t>(area.y),
                                    static_cast<std::uint32_t>(std::max(area.width, 1)),
                                    static_cast<std::uint32_t>(std::max(area.height, 1))};
    xcb_configure_window(mConnection.get(), mId,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                             XCB_CONFIG_WINDOW_HEIGHT,
                         values);
}

} // namespace varno
