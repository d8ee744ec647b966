#ifndef VARNO_WINDOW_KEYFOCUS_H
#define VARNO_WINDOW_KEYFOCUS_H

#include "Window/XConnection.h"

#include <functional>
#include <optional>

namespace varno {

/// A window that has the input focus in the place of another one that it is in, and is not seen: it receives
/// every key, wherever the pointer is, and other clients' windows beside it receive none. [main]
class KeyFocus {
public:
    /// Receives presses and releases.
    using KeyHandler = std::function<void(const xcb_key_press_event_t& event)>;

    /// Makes it and shows it, without the focus. @param connection outlives this object
    /// @param parent of any client
    KeyFocus(XConnection& connection, xcb_window_t parent, KeyHandler handler);
    KeyFocus(const KeyFocus&) = delete;
    KeyFocus& operator=(const KeyFocus&) = delete;
    ~KeyFocus();

    xcb_window_t id() const { return mId; }
    /// Takes the focus, which the server refuses while the parent is not shown.
    /// @param timeMs of the event that is the reason; focus that was given later stays
    void take(xcb_timestamp_t timeMs = XCB_CURRENT_TIME) const;
    /// Takes the focus where another window within the parent had it at the last call, as after a click on
    /// one that takes it for itself. To be called often: without waiting, it asks for the next call. Waits
    /// for some answers only when a window has got the focus that did not have it before.
    void takeBack();
    /// As the last events have it.
    bool hasFocus() const { return mHasFocus; }
    /// Called when it has got or lost the focus.
    void setFocusHandler(std::function<void(bool hasFocus)> handler) { mFocusHandler = std::move(handler); }

private:
    void handle(const xcb_generic_event_t& event);
    xcb_window_t focusNow() const;
    bool isStolen(xcb_window_t focus);
    void setFocus(bool hasFocus);

    XConnection& mConnection;
    xcb_window_t mParent;
    xcb_window_t mId;
    bool mHasFocus = false;
    std::optional<unsigned> mQuestion;         ///< Number of the request for who has the focus.
    xcb_window_t mElsewhere = XCB_WINDOW_NONE; ///< A window that is not within the parent.
    KeyHandler mKeyHandler;
    std::function<void(bool)> mFocusHandler;
    WindowEvents::Registration mEvents;
};

} // namespace varno

#endif
