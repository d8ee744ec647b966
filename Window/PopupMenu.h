#ifndef VARNO_WINDOW_POPUPMENU_H
#define VARNO_WINDOW_POPUPMENU_H

#include "Window/MenuPanel.h"
#include "Window/PopupWindow.h"

#include <functional>
#include <optional>
#include <vector>

namespace varno {

/// A menu that pops up, for mouse and keys. It takes the pointer while it is open; the keys are the caller's
/// and are passed on to it. [main]
class PopupMenu {
public:
    /// Receives the number of the entry that was chosen, nothing where the menu closed otherwise. Called once
    /// for each open(), after the menu has closed; may open it again or destroy it.
    using Handler = std::function<void(std::optional<std::size_t> chosen)>;

    /// Makes it, closed. @param connection, owner see PopupWindow @throws as PopupWindow does
    PopupMenu(XConnection& connection, xcb_window_t owner, PanelStyle style);
    PopupMenu(const PopupMenu&) = delete;
    PopupMenu& operator=(const PopupMenu&) = delete;

    /// For the next opening.
    void setStyle(PanelStyle style) { mStyle = std::move(style); }

    /// Opens it; one that is open is dismissed before. It scrolls where the monitor has no room for it.
    /// @param anchor on the screen, below or above which it opens
    /// @param highlighted the row to start from with keys, nothing for none
    void open(std::vector<MenuItem> items, const WindowArea& anchor, Handler handler,
              std::optional<std::size_t> highlighted = {});
    /// Closes it, which is reported, unless it is closed.
    void dismiss();
    bool isOpen() const { return mWindow.isOpen(); }
    /// The row that Return would choose.
    std::optional<std::size_t> highlighted() const { return mHighlighted; }

    /// A key: arrows, Home, End and the Page keys move, Return and Space choose, Escape dismisses, a letter
    /// goes to the next row that begins with it. @param symbol in X.Org's numbers, see KeyText
    /// @return whether it is open and so has used the key
    bool key(xcb_keysym_t symbol);
    /// See PopupWindow::tick.
    void tick();

private:
    void draw(cairo_t* context, WindowSize size) const;
    void drawArrow(cairo_t* context, bool isTop, bool isMore) const;
    void button(const ButtonEvent& event);
    void point(std::optional<WindowPlace> place);
    void highlight(std::optional<std::size_t> row);
    void move(xcb_keysym_t symbol);
    std::optional<std::size_t> pageFrom(std::optional<std::size_t> from, bool isForward) const;
    void finish(std::optional<std::size_t> chosen);
    void scrollTo(int scrolled);
    void show(std::size_t row);
    bool scrolls() const;
    int endHeight() const;
    int viewHeight() const;
    std::optional<std::size_t> rowAt(WindowPlace place) const;

    XConnection& mConnection;
    PanelStyle mStyle;
    std::optional<MenuPanel> mPanel; ///< While it is open.
    Handler mHandler;
    std::optional<std::size_t> mHighlighted;
    WindowSize mSize;                       ///< Of the window.
    int mScrolled = 0;                      ///< Pixels of the entries above the first that is seen.
    std::optional<WindowPlace> mPointer;    ///< In the window.
    std::optional<WindowPlace> mFirstPlace; ///< Of the pointer, since the menu opened.
    bool mMayChoose = false; ///< A release chooses: it belongs to a press in the menu or a drag.
    PopupWindow mWindow;
};

} // namespace varno

#endif
