/// Drawing the whole of a window with cairo.
#ifndef VARNO_WINDOW_WINDOWPAINTING_H
#define VARNO_WINDOW_WINDOWPAINTING_H

#include "Window/Geometry.h"
#include "Window/XConnection.h"

#include <cairo.h>
#include <functional>

namespace varno {

/// Whether windows of the screen's own form of pixels can be painted. [main]
bool canPaint(const XConnection& connection);

/// Draws a picture and makes it what a window shows from now on: the server repeats it wherever it becomes
/// visible, so there is nothing to do on exposure and no flicker. [main]
/// @param window of the screen's own depth @param draw called once, at once
void paintWindow(const XConnection& connection, xcb_window_t window, WindowSize size,
                 const std::function<void(cairo_t* context)>& draw);

} // namespace varno

#endif
