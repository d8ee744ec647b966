#ifndef VARNO_WINDOW_CHILDWINDOW_H
#define VARNO_WINDOW_CHILDWINDOW_H

#include "Window/Geometry.h"
#include "Window/XConnection.h"

#include <cstdint>

namespace varno {

/// A window in another window, which may be of any client. Requests are sent by the connection's
/// handleEvents() or flush(). [main]
class ChildWindow {
public:
    ChildWindow(const ChildWindow&) = delete;
    ChildWindow& operator=(const ChildWindow&) = delete;

    xcb_window_t id() const { return mId; }
    /// Shows it above the other windows of its parent.
    void show();
    void hide();
    /// Whether it was shown last, not hidden.
    bool isShown() const { return mIsShown; }
    /// Puts it above the other windows of its parent, as after one of them came or was raised.
    void raise() const;

protected:
    /// What a window is for.
    enum class Use {
        kDrawing,  ///< It shows something.
        kInputOnly ///< It cannot be seen.
    };

    /// Makes it, 1 x 1 and hidden. @param connection outlives this object
    /// @param events XCB_EVENT_MASK_... bits
    ChildWindow(XConnection& connection, xcb_window_t parent, Use use, std::uint32_t events);
    ~ChildWindow();

    XConnection& connection() const { return mConnection; }
    /// @param area in the parent; of less than 1 x 1 the size is 1 x 1
    void moveTo(const WindowArea& area) const;

private:
    XConnection& mConnection;
    xcb_window_t mId;
    bool mIsShown = false;
};

} // namespace varno

#endif
