#ifndef VARNO_WINDOW_EDITORWINDOW_H
#define VARNO_WINDOW_EDITORWINDOW_H

#include "Window/KeyGrabs.h"
#include "Window/WindowProperties.h"

#include <functional>
#include <optional>

namespace varno {

/// A window on the desktop around one child, an editor's view: as large as the view, and forwarding keys to
/// it or to a window that takes them in its place. [main]
class EditorWindow {
public:
    enum class Kind {
        kManaged,  ///< On the desktop, framed and placed by its window manager.
        kUnmanaged ///< In the screen's corner, without a window manager.
    };

    /// Makes the window, not yet shown. @param connection outlives this object @throws WindowError
    EditorWindow(XConnection& connection, Kind kind, const WindowProperties& properties);
    EditorWindow(const EditorWindow&) = delete;
    EditorWindow& operator=(const EditorWindow&) = delete;
    /// Its child must be destroyed before.
    ~EditorWindow();

    xcb_window_t id() const { return mId; }
    /// Sets the size, which the user cannot change, also while the window is shown. @param size at least 1 x
    /// 1
    void resize(WindowSize size);
    void show();
    /// Hides the window until it is shown again.
    void hide();

    /// Called when the user closes the window; it stays until it is destroyed.
    void setCloseHandler(std::function<void()> handler) { mCloseHandler = std::move(handler); }
    /// Keys that the window handles before the child.
    void setBindings(std::vector<KeyBinding> bindings);

    /// Gives the input focus to one window whenever the desktop gives it to this one: to the child, unless
    /// another is set here, and has the keys that arrive here sent to it.
    /// @param window of this connection, shown, in this window or the window itself; XCB_WINDOW_NONE: the
    /// child
    void setFocusWindow(xcb_window_t window) { mFocusWindow = window; }

    /// Handles what has arrived on the connection, for all its windows. @throws WindowError where the window
    /// or the connection is lost
    void handleEvents();

private:
    void handle(const xcb_generic_event_t& event);
    void pressed(const xcb_key_press_event_t& event);
    void forward(xcb_key_press_event_t event) const;
    void focused(const xcb_focus_in_event_t& event) const;
    void messageCame(const xcb_client_message_event_t& message);
    xcb_window_t focusWindow() const;

    XConnection& mConnection;
    xcb_window_t mId;
    xcb_window_t mFocusWindow = XCB_WINDOW_NONE;
    bool mIsDestroyed = false;
    std::function<void()> mCloseHandler;
    std::optional<KeyGrabs> mKeys;
    WindowEvents::Registration mEvents;
};

} // namespace varno

#endif
