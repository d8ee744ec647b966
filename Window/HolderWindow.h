#ifndef VARNO_WINDOW_HOLDERWINDOW_H
#define VARNO_WINDOW_HOLDERWINDOW_H

#include "Window/ChildWindow.h"

namespace varno {

/// A child window in which others make children, through connections of their own. [main]
class HolderWindow : public ChildWindow {
public:
    /// Makes and shows it. Others find it at once. @param connection outlives this object
    /// @throws WindowError where the connection is lost
    HolderWindow(XConnection& connection, xcb_window_t parent);
    /// Its children must be destroyed before.
    ~HolderWindow() = default;

    /// @param area in the parent
    void setArea(const WindowArea& area) const { moveTo(area); }
};

} // namespace varno

#endif
