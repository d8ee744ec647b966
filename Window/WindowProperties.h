#ifndef VARNO_WINDOW_WINDOWPROPERTIES_H
#define VARNO_WINDOW_WINDOWPROPERTIES_H

#include "Window/XConnection.h"

#include <cstdint>
#include <string>
#include <vector>

namespace varno {

/// Pixels.
struct WindowSize {
    int width = 0;
    int height = 0;
};

/// What a window tells the desktop about itself.
struct WindowProperties {
    std::string title; ///< UTF-8.
    /// Pictures in the form of _NET_WM_ICON: for each width, height and its pixels as 0xAARRGGBB, row by row.
    std::vector<std::uint32_t> icon;
};

/// Gives a new window its title, icon, class and process, and has the desktop ask before
/// it closes the window or takes it for dead.
void setWindowProperties(XConnection& connection, xcb_window_t window, const WindowProperties& properties);

/// Has the desktop offer the window at this one size.
void setOnlySize(XConnection& connection, xcb_window_t window, WindowSize size);

} // namespace varno

#endif
