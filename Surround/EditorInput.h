/// The editor's controls, used as with a mouse.
#ifndef VARNO_SURROUND_EDITORINPUT_H
#define VARNO_SURROUND_EDITORINPUT_H

#include "Window/XConnection.h"

#include <cstdint>

namespace varno {

/// Sends the events of clicks, the wheel and keys to the editor's view, which reacts as to a user's own: its
/// status line, its Auto Gain and its undo step are the same. [main]
class EditorInput {
public:
    /// @param connection outlives this object @param holder the window that the view is in
    EditorInput(XConnection& connection, xcb_window_t holder)
        : mConnection(connection),
          mHolder(holder) {}

    /// Pixels for a pixel of the layout.
    void setScale(double scale) { mScale = scale; }
    /// A click of the left button at a place of the layout. @param modifiers XCB_MOD_MASK_... bits
    void click(int x, int y, std::uint16_t modifiers = 0) const;
    /// Steps of the wheel, upwards where positive. @param isFine a tenth of the usual step
    void wheel(int x, int y, int steps, bool isFine) const;
    /// A key that the surround does not use.
    void key(xcb_key_press_event_t event) const;

private:
    xcb_window_t view() const;
    void send(std::uint8_t type, int x, int y, std::uint8_t button, std::uint16_t state) const;

    XConnection& mConnection;
    xcb_window_t mHolder;
    double mScale = 1.0;
};

} // namespace varno

#endif
