/// Where the parts of a surround are.
#ifndef VARNO_SURROUND_SURROUNDPLACE_H
#define VARNO_SURROUND_SURROUNDPLACE_H

#include "Surround/BarLayout.h"
#include "Surround/FaceLayout.h"
#include "Window/Geometry.h"
#include "Window/Monitors.h"
#include "Window/PanelStyle.h"
#include "Window/XConnection.h"

#include <cmath>

namespace varno {

/// The window of a surround with bar and face, and its scale. [main]
struct SurroundPlace {
    XConnection& connection;
    xcb_window_t frame = XCB_WINDOW_NONE; ///< Holds everything.
    double scale = 1.0;                   ///< Pixels for a pixel of the layout.
    int barHeight = 0;                    ///< Pixels; 0 without a bar.
    PanelStyle style = {.font = "Arial"}; ///< Of menus and tips.

    /// A rectangle of the layout of the bar or of the face, in pixels of the frame.
    WindowArea ofBar(const Box& box) const { return scaled(box, 0); }
    WindowArea ofFace(const Box& box) const { return scaled(box, barHeight); }
    /// A rectangle of the frame on the screen. One round trip.
    WindowArea onScreen(const WindowArea& area) const {
        const auto whole = areaOnScreen(connection, frame).value_or(WindowArea{});
        return {whole.x + area.x, whole.y + area.y, area.width, area.height};
    }
    /// The face's point below a place in the frame.
    int faceX(WindowPlace place) const { return static_cast<int>(std::floor(place.x / scale)); }
    int faceY(WindowPlace place) const { return static_cast<int>(std::floor((place.y - barHeight) / scale)); }

private:
    WindowArea scaled(const Box& box, int top) const {
        const auto pixels = [this](int length) { return static_cast<int>(std::lround(length * scale)); };
        return {pixels(box.x), top + pixels(box.y), pixels(box.width), pixels(box.height)};
    }
};

} // namespace varno

#endif
