/// The monitors that make up the screen, and the part of them that windows may cover.
#ifndef VARNO_WINDOW_MONITORS_H
#define VARNO_WINDOW_MONITORS_H

#include "Window/Geometry.h"
#include "Window/XConnection.h"

#include <optional>
#include <vector>

namespace varno {

/// The areas of the monitors on the screen, at least one: the whole screen where the server does not report
/// any. Two monitors may show the same. [main]
std::vector<WindowArea> monitors(const XConnection& connection);

/// The monitor that shows the largest part of an area of the screen, else the nearest one. [main]
WindowArea monitorOf(const XConnection& connection, const WindowArea& area);

/// The part of that monitor that the desktop's panels leave free, where the window manager reports it; else
/// the whole monitor. [main]
WindowArea workAreaOf(XConnection& connection, const WindowArea& area);

/// Where a window is on the screen, without its border; nothing where there is no such window. [main]
std::optional<WindowArea> areaOnScreen(const XConnection& connection, xcb_window_t window);

} // namespace varno

#endif
