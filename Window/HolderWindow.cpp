#include "Window/HolderWindow.h"

namespace varno {

HolderWindow::HolderWindow(XConnection& connection, xcb_window_t parent)
    : ChildWindow(connection, parent, Use::kDrawing, XCB_EVENT_MASK_NO_EVENT) {
    show();
    connection.sync();
}

} // namespace varno
