#include "Window/WindowProperties.h"

#include <climits>
#include <iterator>
#include <string_view>
#include <unistd.h>
#include <xcb/xcb_icccm.h>

namespace varno {
namespace {

constexpr std::uint8_t kTextBits = 8; // of one unit of a property
constexpr std::uint8_t kWordBits = 32;

// Instance and class, each with its end: what desktops know all windows of the product by.
constexpr char kClass[] = "varno\0Varno";

void setText(XConnection& connection, xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
             std::string_view text) {
    xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, window, property, type, kTextBits,
                        static_cast<std::uint32_t>(text.size()), text.data());
}

void setWords(XConnection& connection, xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
              const std::vector<std::uint32_t>& words) {
    xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, window, property, type, kWordBits,
                        static_cast<std::uint32_t>(words.size()), words.data());
}

// The process is known by its number together with its machine.
void setProcess(XConnection& connection, xcb_window_t window) {
    char host[HOST_NAME_MAX + 1] = "";
    if (::gethostname(host, sizeof host - 1) == 0) {
        setText(connection, window, XCB_ATOM_WM_CLIENT_MACHINE, XCB_ATOM_STRING, host);
        setWords(connection, window, connection.atom("_NET_WM_PID"), XCB_ATOM_CARDINAL,
                 {static_cast<std::uint32_t>(::getpid())});
    }
}

void setTakesFocus(XConnection& connection, xcb_window_t window) {
    xcb_icccm_wm_hints_t hints{};
    xcb_icccm_wm_hints_set_input(&hints, 1);
    xcb_icccm_wm_hints_set_normal(&hints);
    xcb_icccm_set_wm_hints(connection.get(), window, &hints);
}

} // namespace

void setWindowProperties(XConnection& connection, xcb_window_t window, const WindowProperties& properties) {
    const auto utf8 = connection.atom("UTF8_STRING");
    setText(connection, window, connection.atom("_NET_WM_NAME"), utf8, properties.title);
    setText(connection, window, XCB_ATOM_WM_NAME, utf8, properties.title);
    setText(connection, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, {kClass, std::size(kClass)});
    setProcess(connection, window);
    setTakesFocus(connection, window);
    setWords(connection, window, connection.atom("WM_PROTOCOLS"), XCB_ATOM_ATOM,
             {connection.atom("WM_DELETE_WINDOW"), connection.atom("_NET_WM_PING")});
    setWords(connection, window, connection.atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM,
             {connection.atom("_NET_WM_WINDOW_TYPE_NORMAL")});
    if (!properties.icon.empty()) {
        setWords(connection, window, connection.atom("_NET_WM_ICON"), XCB_ATOM_CARDINAL, properties.icon);
    }
}

void setOnlySize(XConnection& connection, xcb_window_t window, WindowSize size) {
    xcb_size_hints_t hints{};
    xcb_icccm_size_hints_set_min_size(&hints, size.width, size.height);
    xcb_icccm_size_hints_set_max_size(&hints, size.width, size.height);
    xcb_icccm_set_wm_normal_hints(connection.get(), window, &hints);
}

} // namespace varno
