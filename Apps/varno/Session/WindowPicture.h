#ifndef VARNO_APPS_VARNO_SESSION_WINDOWPICTURE_H
#define VARNO_APPS_VARNO_SESSION_WINDOWPICTURE_H

#include "Files/AtomicFile.h"
#include "Window/XConnection.h"

namespace varno {

/// What a window and its children show, as a PNG file. From construction on the server draws the window
/// off screen, so that the picture is complete even where the window is covered or outside the screen. [main]
class WindowPicture {
public:
    /// @param window not shown yet; it and the connection outlive this object
    /// @throws WorkError where the display cannot keep pictures of windows
    WindowPicture(XConnection& connection, xcb_window_t window);

    /// Whether the windows within this one, one above the other, have been drawn to the first and the last
    /// pixel at the right edge: until then these are black. With no window within there is nothing to wait
    /// for.
    bool isDrawn() const;

    /// Appends the picture to the file.
    /// @throws WorkError where the window is not shown; FileError where the file cannot be written
    void write(AtomicFile& file) const;

private:
    /// Calls `use` with the window's picture and its geometry, unless the window is not shown. Returns
    /// whether it is.
    template<typename Use>
    bool withPicture(Use use) const;

    XConnection& mConnection;
    xcb_window_t mWindow;
};

} // namespace varno

#endif
