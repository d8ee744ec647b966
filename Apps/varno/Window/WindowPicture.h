#pragma once

#include "AtomicFile.h"
#include "XConnection.h"

namespace varno {

/// What a window and its children show, as a PNG file. The window is drawn aside from when this is made, so
/// that the picture is whole wherever the window lies and whatever covers it. [main]
class WindowPicture {
public:
    /// @param window not shown yet; it and the connection outlive this object
    /// @throws WorkError where the display cannot keep windows' pictures
    WindowPicture(XConnection& connection, xcb_window_t window);

    /// Appends the picture to the file. @throws WorkError where the window is not shown or the file cannot
    /// be written
    void write(AtomicFile& file) const;

private:
    XConnection& mConnection;
    xcb_window_t mWindow;
};

} // namespace varno
