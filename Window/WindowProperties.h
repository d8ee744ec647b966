/// Properties of a window for the desktop: title, icon, class and size.
#ifndef VARNO_WINDOW_WINDOWPROPERTIES_H
#define VARNO_WINDOW_WINDOWPROPERTIES_H

#include "Window/Geometry.h"
#include "Window/XConnection.h"

#include <cairo.h>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace varno {

struct DestroySurface {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};

/// A drawing surface of cairo's, owned.
using CairoSurface = std::unique_ptr<cairo_surface_t, DestroySurface>;

/// The pictures of the product's icon in the form of _NET_WM_ICON: for each width, height and its pixels as
/// 0xAARRGGBB, row by row. Pictures that are missing or cannot be read are left out; empty without any.
/// @param resources folder with icons/SIZExSIZE/varno-s.png; empty for none
std::vector<std::uint32_t> windowIcon(const std::filesystem::path& resources);

/// Properties of a window for the desktop.
struct WindowProperties {
    std::string title; ///< UTF-8.
    /// Pictures in the form of _NET_WM_ICON: for each width, height and its pixels as 0xAARRGGBB, row by row.
    std::vector<std::uint32_t> icon;
};

/// Sets a new window's title, icon, class and process, and the protocols by which the desktop asks it to
/// close and checks that it responds.
void setWindowProperties(XConnection& connection, xcb_window_t window, const WindowProperties& properties);

/// Changes a window's title. @param title UTF-8
void setWindowTitle(XConnection& connection, xcb_window_t window, const std::string& title);

/// Has the desktop keep a window above another one, which it belongs to.
void setTransientFor(XConnection& connection, xcb_window_t window, xcb_window_t other);

/// Sets this size as the only one of the window.
void setOnlySize(XConnection& connection, xcb_window_t window, WindowSize size);

} // namespace varno

#endif
