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
    mConnection.reset(xcb_connect(display.c_str(), &mScreenNumber));
    if (xcb_connection_has_error(get()) == 0) {
        mScreen = xcb_aux_get_screen(get(), mScreenNumber);
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

std::vector<std::uint32_t> XConnection::words(xcb_window_t window, xcb_atom_t property) const {
    constexpr int kFormat = 32; // bits
    const auto cookie =
        xcb_get_property(get(), 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, kLongestTextWords);
    const XReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(get(), cookie, nullptr));
    if (!reply || reply->format != kFormat) {
        return {};
    }
    const auto* const first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {first, first + reply->value_len};
}

bool XConnection::hasExtension(xcb_extension_t& extension) const {
    const auto* data = xcb_get_extension_data(get(), &extension);
    return data != nullptr && data->present != 0;
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

xcb_window_t XConnection::parent(xcb_window_t window) const {
    const XReply<xcb_query_tree_reply_t> reply(
        xcb_query_tree_reply(get(), xcb_query_tree(get(), window), nullptr));
    return reply ? reply->parent : xcb_window_t{XCB_WINDOW_NONE};
}

bool XConnection::isWithin(xcb_window_t window, xcb_window_t outer) const {
    while (window != XCB_WINDOW_NONE && window != outer) {
        window = parent(window);
    }
    return window != XCB_WINDOW_NONE;
}

xcb_window_t XConnection::topLevel(xcb_window_t window) const {
    for (auto outer = parent(window); outer != screen().root; outer = parent(window)) {
        if (outer == XCB_WINDOW_NONE) {
            return XCB_WINDOW_NONE;
        }
        window = outer;
    }
    return window;
}

void XConnection::select(xcb_window_t window, std::uint32_t events) const {
    const XReply<xcb_get_window_attributes_reply_t> before(
        xcb_get_window_attributes_reply(get(), xcb_get_window_attributes(get(), window), nullptr));
    if (before) {
        const std::uint32_t all = before->your_event_mask | events;
        xcb_change_window_attributes(get(), window, XCB_CW_EVENT_MASK, &all);
    }
}

void XConnection::handleEvents() {
    while (const auto event = poll()) {
        if (eventKind(*event) != 0) {
            mEvents.dispatch(*event);
        }
    }
    throwIfLost();
    flush();
}

void XConnection::Disconnect::operator()(xcb_connection_t* connection) const {
    xcb_aux_sync(connection);
    xcb_disconnect(connection);
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
