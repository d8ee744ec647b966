#ifndef VARNO_WINDOW_TIPWINDOW_H
#define VARNO_WINDOW_TIPWINDOW_H

#include "Window/PanelStyle.h"
#include "Window/PopupWindow.h"

#include <string>

namespace varno {

/// A tip beside a control: its value, and in smaller letters a sentence of help. The pointer does not notice
/// it. [main]
class TipWindow {
public:
    /// Makes it, hidden. @param connection, owner see PopupWindow @throws as PopupWindow does
    TipWindow(XConnection& connection, xcb_window_t owner, PanelStyle style);
    TipWindow(const TipWindow&) = delete;
    TipWindow& operator=(const TipWindow&) = delete;

    /// For the next time that it is shown.
    void setStyle(PanelStyle style);
    /// Shows it, or another text at another place, without flicker; a text that is shown already costs
    /// nothing. @param anchor on the screen, below or above which it is
    /// @param value UTF-8, one line @param help UTF-8, wrapped into several lines; empty for none
    void show(const WindowArea& anchor, const std::string& value, const std::string& help);
    void hide() { mWindow.close(); }
    bool isShown() const { return mWindow.isOpen(); }
    /// See PopupWindow::tick.
    void tick() { mWindow.tick(); }

private:
    WindowSize size() const;
    void draw(cairo_t* context, WindowSize size) const;

    PanelStyle mStyle;
    WindowArea mAnchor;
    std::string mValue;
    std::string mHelp;
    bool mIsStyleNew = false;
    PopupWindow mWindow;
};

} // namespace varno

#endif
