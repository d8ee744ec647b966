#include "Window/XConnection.h"

#include <algorithm>
#include <charconv>
#include <system_error>
#include <xcb/xcb_aux.h>

namespace varno {

namespace {

constexpr double kPlainDotsPerInch = 96.0;
constexpr std::string_view kDotsPerInch = "Xft.dpi:";
constexpr std::string_view kBlanks = " \t\r";

std::string_view trimmed(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

std::optional<double> scaleFrom(std::string_view text, double plain) {
    text = trimmed(text);
    double number = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isNumber = error == std::errc() && end == text.data() + text.size();
    return isNumber && isScale(number / plain) ? std::optional(number / plain) : std::nullopt;
}

// The value of a resource; of several with the same name the last counts.
std::optional<std::string_view> resource(std::string_view resources, std::string_view name) {
    std::optional<std::string_view> value;
    while (!resources.empty()) {
        const auto end = std::min(resources.find('\n'), resources.size());
        const auto line = trimmed(resources.substr(0, end));
        if (line.starts_with(name)) {
            value = line.substr(name.size());
        }
        resources.remove_prefix(std::min(end + 1, resources.size()));
    }
    return value;
}

constexpr std::uint32_t kLongestTextWords = 1U << 20;

} // namespace

double desktopScale(std::optional<std::string_view> gdkScale, std::string_view resources) {
    std::optional<double> scale;
    if (gdkScale) {
        scale = scaleFrom(*gdkScale, 1.0);
    }
    if (const auto dotsPerInch = resource(resources, kDotsPerInch); !scale && dotsPerInch) {
        scale = scaleFrom(*dotsPerInch, kPlainDotsPerInch);
    }
    return scale.value_or(1.0);
}

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
