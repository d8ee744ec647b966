#include "Tests/Support/XClient.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>

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
    const std::uint32_t values[] = {mScreen->black_pixel, 1};
    xcb_create_window(mConnection, XCB_COPY_FROM_PARENT, window, mScreen->root,
                      static_cast<std::int16_t>(area.x), static_cast<std::int16_t>(area.y),
                      static_cast<std::uint16_t>(area.width), static_cast<std::uint16_t>(area.height), 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, mScreen->root_visual,
                      XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values);
    xcb_map_window(mConnection, window);
    synchronise();
    return window;
}

void XClient::destroyWindow(xcb_window_t window) const {
    xcb_destroy_window(mConnection, window);
    synchronise();
}

bool XClient::isShown(xcb_window_t window) const {
    const XReply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
        mConnection, xcb_get_window_attributes(mConnection, window), nullptr));
    return attributes != nullptr && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

std::vector<xcb_window_t> XClient::children(xcb_window_t window) const {
    const XReply<xcb_query_tree_reply_t> reply(
        xcb_query_tree_reply(mConnection, xcb_query_tree(mConnection, window), nullptr));
    if (reply == nullptr) {
        return {};
    }
    const xcb_window_t* const first = xcb_query_tree_children(reply.get());
    return {first, first + xcb_query_tree_children_length(reply.get())};
}

void XClient::fill(xcb_window_t window, const Area& area, std::uint32_t colour) const {
    const xcb_gcontext_t context = xcb_generate_id(mConnection);
    xcb_create_gc(mConnection, context, window, XCB_GC_FOREGROUND, &colour);
    const xcb_rectangle_t rectangle{static_cast<std::int16_t>(area.x), static_cast<std::int16_t>(area.y),
                                    static_cast<std::uint16_t>(area.width),
                                    static_cast<std::uint16_t>(area.height)};
    xcb_poly_fill_rectangle(mConnection, window, context, 1, &rectangle);
    xcb_free_gc(mConnection, context);
    synchronise();
}

xcb_window_t XClient::focus() const {
    const XReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(mConnection, xcb_get_input_focus(mConnection), nullptr));
    return reply != nullptr ? reply->focus : xcb_window_t{XCB_WINDOW_NONE};
}

void XClient::giveFocus(xcb_window_t window) const {
    xcb_set_input_focus(mConnection, XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
    synchronise();
}

bool XClient::isWithin(xcb_window_t inner, xcb_window_t outer) const {
    const auto inside = children(outer);
    return inner == outer ||
           std::ranges::any_of(inside, [&](xcb_window_t child) { return isWithin(inner, child); });
}

xcb_atom_t XClient::clipboard() const {
    constexpr std::string_view kName = "CLIPBOARD";
    const XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        mConnection, xcb_intern_atom(mConnection, 0, kName.size(), kName.data()), nullptr));
    return reply != nullptr ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

xcb_window_t XClient::clipboardOwner() const {
    const XReply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        mConnection, xcb_get_selection_owner(mConnection, clipboard()), nullptr));
    return reply != nullptr ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
}

void XClient::setClipboardOwner(xcb_window_t window) const {
    xcb_set_selection_owner(mConnection, window, clipboard(), XCB_CURRENT_TIME);
    synchronise();
}

XWindow::~XWindow() {
    try {
        destroy();
    } catch (
        const std::exception&) { // NOLINT(bugprone-empty-catch): a server that is lost has no window either
    }
}

void XWindow::destroy() {
    if (mID != XCB_WINDOW_NONE) {
        mClient.destroyWindow(mID);
        mID = XCB_WINDOW_NONE;
    }
}

} // namespace varno::test
