/// Windows of their own over all others, for menus and tips.
#ifndef VARNO_WINDOW_POPUPWINDOW_H
#define VARNO_WINDOW_POPUPWINDOW_H

#include "Window/Geometry.h"
#include "Window/PointerEvents.h"
#include "Window/PointerGrab.h"
#include "Window/XConnection.h"

#include <cairo.h>
#include <functional>
#include <memory>
#include <optional>

namespace varno {

/// Where a popup goes: below the anchor, or above it where there is more room and below too little, from the
/// anchor's left side; always within the monitor, smaller where it is larger than that. [any]
WindowArea placePopup(const WindowArea& anchor, WindowSize size, const WindowArea& monitor);

/// A window on top of the desktop, without a window manager's frame. [main]
class PopupWindow {
public:
    enum class Kind {
        kMenu, ///< Takes the pointer while it is open: a press beside it closes it and reaches nobody else.
        kTip   ///< Is only seen: the pointer reaches what is below.
    };

    /// What it reports; each may be empty, and may close and destroy the window.
    struct Handlers {
        /// Draws all of it, the top left corner at (0, 0), in pixels.
        std::function<void(cairo_t* context, WindowSize size)> draw;
        /// A button of the pointer, with the place in this window, also outside of it. Not for tips.
        std::function<void(const ButtonEvent& event)> button;
        /// The pointer has moved to a place in this window; nothing: it is outside. Not for tips.
        std::function<void(std::optional<WindowPlace> place)> pointer;
        /// It has closed by itself: somebody pressed beside it, or its owner is not shown any more or has
        /// lost the input focus to another program.
        std::function<void()> dismissed;
    };

    /// Makes it, closed. @param connection outlives this object
    /// @param owner the window of the front end that it belongs to, of any client
    /// @throws WindowError where the screen has a form of pixels that cannot be drawn
    PopupWindow(XConnection& connection, xcb_window_t owner, Kind kind, Handlers handlers);
    PopupWindow(const PopupWindow&) = delete;
    PopupWindow& operator=(const PopupWindow&) = delete;
    ~PopupWindow();

    /// Opens it at an anchor, see placePopup, or moves and redraws it where it is open.
    /// @param anchor on the screen @param size at least 1 x 1 @return where it is on the screen
    WindowArea open(const WindowArea& anchor, WindowSize size);
    /// Draws it again, without flicker, while it is open.
    void redraw();
    /// Nothing is reported.
    void close();
    bool isOpen() const { return mIsOpen; }
    /// To be called some 30 times a second: closes it when the time has come, and takes the pointer where
    /// another client had it. One round trip while it is open.
    void tick();

private:
    void handle(const xcb_generic_event_t& event);
    void pressed(ButtonEvent event);
    void dismiss();
    bool isOwnerLeft();

    XConnection& mConnection;
    xcb_window_t mOwner;
    Kind mKind;
    std::shared_ptr<const Handlers> mHandlers; ///< Held while one runs, which may destroy this object.
    xcb_window_t mId;
    WindowArea mArea;
    bool mIsOpen = false;
    xcb_window_t mFocus = XCB_WINDOW_NONE; ///< Who had the input focus at the last tick.
    PointerGrab mGrab;
    WindowEvents::Registration mEvents;
};

} // namespace varno

#endif
