#include "Window/HolderWindow.h"

namespace varno {

HolderWindow::HolderWindow(XConnection& connection, xcb_window_t parent)
    : ChildWindow(connection, parent, Use::kDrawing, XCB_EVENT_MASK_NO_EVENT) {
    // What its children do not cover, as while they change their sizes.
    xcb_change_window_attributes(connection.get(), id(), XCB_CW_BACK_PIXEL, &connection.screen().black_pixel);
    show();
    connection.sync();
}

} // namespace varno
