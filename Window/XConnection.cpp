#include "Window/XConnection.h"

#include <algorithm>
#include <charconv>
#include <system_error>
#include <xcb/xcb_aux.h>

namespace varno {

namespace {

constexpr std::uint32_t kLongestTextWords = 1U << 20;

} // namespace

XConnection::XConnection(const std::string& display)
    : mDisplay(display) {
    if (display.empty()) {
        throw WindowError("cannot open a display: DISPLAY is not set; expected the name of an X server, such "
                          "as \":0\"");
    }
    int screen = 0;
    mConnection.reset(xcb_connect(display.c_str(), &screen));
    if (xcb_connection_has_error(get()) == 0) {
        mScreen = xcb_aux_get_screen(get(), screen);
    }
    if (mScreen == nullptr) {
        throw WindowError("cannot open a display: no X server answers at DISPLAY \"" + display + '"');
    }
}

xcb_atom_t XConnection::atom(std::string_view name) {
    if (const auto known = mAtoms.find(name); known != mAtoms.end()) {
        return known->second;
    }
    const auto cookie = xcb_intern_atom(get(), 0, static_cast<std::uint16_t>(name.size()), name.data());
    const XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(get(), cookie, nullptr));
    throwIfLost();
    return mAtoms.emplace(name, reply->atom).first->second;
}

std::string XConnection::text(xcb_window_t window, xcb_atom_t property) const {
    const auto cookie =
        xcb_get_property(get(), 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, kLongestTextWords);
    const XReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(get(), cookie, nullptr));
    if (!reply) {
        return {};
    }
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

bool XConnection::has(xcb_window_t window) const {
    const XReply<xcb_get_geometry_reply_t> reply(
        xcb_get_geometry_reply(get(), xcb_get_geometry(get(), window), nullptr));
    return reply != nullptr;
}

std::vector<xcb_window_t> XConnection::children(xcb_window_t window) const {
    const auto cookie = xcb_query_tree(get(), window);
    const XReply<xcb_query_tree_reply_t> reply(xcb_query_tree_reply(get(), cookie, nullptr));
    if (!reply) {
        return {};
    }
    const xcb_window_t* const first = xcb_query_tree_children(reply.get());
    std::vector<xcb_window_t> windows(static_cast<std::size_t>(xcb_query_tree_children_length(reply.get())));
    std::copy_n(first, windows.size(), windows.begin());
    return windows;
}

void XConnection::sync() const {
    xcb_aux_sync(get());
    throwIfLost();
}

XReply<xcb_generic_event_t> XConnection::poll() const {
    return XReply<xcb_generic_event_t>(xcb_poll_for_event(get()));
}

void XConnection::throwIfLost() const {
    if (xcb_connection_has_error(get()) != 0) {
        throw WindowError("the connection to the X server at DISPLAY \"" + mDisplay + "\" is lost");
    }
}

} // namespace varno
