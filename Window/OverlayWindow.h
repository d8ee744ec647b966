#ifndef VARNO_WINDOW_OVERLAYWINDOW_H
#define VARNO_WINDOW_OVERLAYWINDOW_H

#include "Window/ChildWindow.h"

#include <vector>

namespace varno {

/// A child window of one colour that is only seen: the pointer reaches what is below it. [main]
class OverlayWindow : public ChildWindow {
public:
    /// Makes it, hidden. @param connection outlives this object
    /// @param colour 0xRRGGBB
    OverlayWindow(XConnection& connection, xcb_window_t parent, std::uint32_t colour);
    ~OverlayWindow() = default;

    /// Gives it the shape of a frame along the inner side of a rectangle's edges.
    /// @param area in the parent @param width of the lines, at least 1 pixel; what exceeds half of the
    /// rectangle fills it
    void setFrame(const WindowArea& area, int width);
    /// Gives it the shape of rectangles. @param area in the parent @param parts in the area
    void setParts(const WindowArea& area, const std::vector<WindowArea>& parts);
    /// @param colour 0xRRGGBB
    void setColour(std::uint32_t colour);

private:
    void setShape(const WindowArea& area, const std::vector<xcb_rectangle_t>& parts);

    xcb_visualid_t mVisual;
};

} // namespace varno

#endif
