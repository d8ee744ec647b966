/// A window's worth of VSTGUI's widgets, outside of the editor.
#ifndef VARNO_TOOLKIT_WIDGETFRAME_H
#define VARNO_TOOLKIT_WIDGETFRAME_H

#include "Toolkit/OpenedFrame.h"

#include <cstdint>
#include <memory>

namespace VSTGUI {
class CFrame;
} // namespace VSTGUI

namespace varno {

/// Owns a frame: widgets are added to it before or after it is opened, and end with it. May be destroyed from
/// within a call of its widgets; those exist until the tick of the run loop that is under way has ended.
/// [main]
class WidgetFrame {
public:
    /// Nothing is open. Makes VSTGUI ready. @param width, height in pixels at scale 1
    WidgetFrame(int width, int height);
    WidgetFrame(const WidgetFrame&) = delete;
    WidgetFrame& operator=(const WidgetFrame&) = delete;
    ~WidgetFrame();

    /// The frame: borrowed, the same for this object's life.
    VSTGUI::CFrame& get() const { return *mFrame; }
    /// Opens the frame in the upper left corner of a window. @param window number of an X11 window
    /// @param scale by which everything is enlarged
    /// @return false where there is no such window, or the display cannot be reached
    bool open(std::uint32_t window, double scale);
    /// Changes the scale, and the size of the frame's window with it.
    void setScale(double scale);
    /// The number of the frame's own window, for key events that others receive in its place; 0 unless open.
    std::uint32_t window() const;

private:
    struct Opened;

    std::shared_ptr<Opened> mOpened; ///< Holds the frame until the end of a tick.
    VSTGUI::CFrame* mFrame;
};

} // namespace varno

#endif
