#include "Window/WindowProperties.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <iterator>
#include <string_view>
#include <system_error>
#include <unistd.h>
#include <xcb/xcb_icccm.h>

namespace varno {

namespace {

namespace fs = std::filesystem;

constexpr const char* kIconFolder = "icons";
constexpr const char* kIconFile = "varno-s.png";

constexpr int kByteBits = 8;
constexpr std::uint32_t kByteMask = 0xFF;
constexpr int kAlphaShift = 24;

// Cairo's pixels have their alpha multiplied in; the desktop expects them without.
std::uint32_t straightAlpha(std::uint32_t pixel) {
    const std::uint32_t alpha = pixel >> kAlphaShift;
    if (alpha == 0) {
        return 0;
    }
    std::uint32_t result = alpha << kAlphaShift;
    for (int shift = 0; shift < kAlphaShift; shift += kByteBits) {
        const std::uint32_t colour = (pixel >> shift) & kByteMask;
        result |= std::min((colour * kByteMask + alpha / 2) / alpha, kByteMask) << shift;
    }
    return result;
}

void append(std::vector<std::uint32_t>& icon, cairo_surface_t* picture) {
    const int width = cairo_image_surface_get_width(picture);
    const int height = cairo_image_surface_get_height(picture);
    const bool isOpaque = cairo_image_surface_get_format(picture) == CAIRO_FORMAT_RGB24;
    icon.push_back(static_cast<std::uint32_t>(width));
    icon.push_back(static_cast<std::uint32_t>(height));
    std::vector<std::uint32_t> row(static_cast<std::size_t>(width));
    for (int y = 0; y < height; ++y) {
        std::memcpy(row.data(),
                    cairo_image_surface_get_data(picture) + y * cairo_image_surface_get_stride(picture),
                    row.size() * sizeof row[0]);
        for (const auto pixel : row) {
            icon.push_back(isOpaque ? pixel | kByteMask << kAlphaShift : straightAlpha(pixel));
        }
    }
}

bool hasWordPixels(cairo_surface_t* picture) {
    const auto format = cairo_image_surface_get_format(picture);
    return cairo_surface_status(picture) == CAIRO_STATUS_SUCCESS &&
           (format == CAIRO_FORMAT_ARGB32 || format == CAIRO_FORMAT_RGB24);
}

constexpr std::uint8_t kTextBits = 8; // of one unit of a property
constexpr std::uint8_t kWordBits = 32;

// Instance and class, each with its terminating zero: desktops identify all windows of the product by them.
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

// The process is identified by its number together with its machine.
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

std::vector<std::uint32_t> windowIcon(const fs::path& resources) {
    std::vector<std::uint32_t> icon;
    if (resources.empty()) {
        return icon;
    }
    std::error_code error;
    for (const auto& size : fs::directory_iterator(resources / kIconFolder, error)) {
        const CairoSurface picture(cairo_image_surface_create_from_png((size.path() / kIconFile).c_str()));
        if (hasWordPixels(picture.get())) {
            append(icon, picture.get());
        }
    }
    return icon;
}

void setWindowProperties(XConnection& connection, xcb_window_t window, const WindowProperties& properties) {
    setWindowTitle(connection, window, properties.title);
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

void setWindowTitle(XConnection& connection, xcb_window_t window, const std::string& title) {
    const auto utf8 = connection.atom("UTF8_STRING");
    setText(connection, window, connection.atom("_NET_WM_NAME"), utf8, title);
    setText(connection, window, XCB_ATOM_WM_NAME, utf8, title);
}

void setTransientFor(XConnection& connection, xcb_window_t window, xcb_window_t other) {
    setWords(connection, window, XCB_ATOM_WM_TRANSIENT_FOR, XCB_ATOM_WINDOW, {other});
}

void setOnlySize(XConnection& connection, xcb_window_t window, WindowSize size) {
    xcb_size_hints_t hints{};
    xcb_icccm_size_hints_set_min_size(&hints, size.width, size.height);
    xcb_icccm_size_hints_set_max_size(&hints, size.width, size.height);
    xcb_icccm_set_wm_normal_hints(connection.get(), window, &hints);
}

} // namespace varno
