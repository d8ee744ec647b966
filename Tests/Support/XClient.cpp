#include "XClient.h"

#include <stdexcept>

namespace varno::test {

bool Area::holds(const Area& other) const {
    return other.x >= x && other.y >= y && other.x + other.width <= x + width &&
           other.y + other.height <= y + height;
}

XClient::XClient(const std::string& display)
    : mConnection(xcb_connect(display.c_str(), nullptr)) {
    if (xcb_connection_has_error(mConnection) != 0) {
        xcb_disconnect(mConnection);
        throw std::runtime_error("no X server at " + display);
    }
    mScreen = xcb_setup_roots_iterator(xcb_get_setup(mConnection)).data;
}

void XClient::synchronise() const {
    // The server writes to its clients when it is done with a request: only the second answer shows that what
    // the first request found waiting has been written to all of them.
    constexpr int kRoundTrips = 2;
    for (int i = 0; i < kRoundTrips; ++i) {
        const XReply<xcb_get_input_focus_reply_t> reply(
            xcb_get_input_focus_reply(mConnection, xcb_get_input_focus(mConnection), nullptr));
        if (reply == nullptr) {
            throw std::runtime_error("the X server is gone");
        }
    }
}

xcb_window_t XClient::makeWindow(const Area& area) const {
    const xcb_window_t window = xcb_generate_id(mConnection);
    const uint32_t values[] = {mScreen->black_pixel, 1};
    xcb_create_window(mConnection, XCB_COPY_FROM_PARENT, window, mScreen->root, static_cast<int16_t>(area.x),
                      static_cast<int16_t>(area.y), static_cast<uint16_t>(area.width),
                      static_cast<uint16_t>(area.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      mScreen->root_visual, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values);
    xcb_map_window(mConnection, window);
    synchronise();
    return window;
}

void XClient::destroyWindow(xcb_window_t window) const {
    xcb_destroy_window(mConnection, window);
    synchronise();
}

std::size_t XClient::countChildren(xcb_window_t window) const {
    const XReply<xcb_query_tree_reply_t> reply(
        xcb_query_tree_reply(mConnection, xcb_query_tree(mConnection, window), nullptr));
    return reply != nullptr ? reply->children_len : 0;
}

} // namespace varno::test
