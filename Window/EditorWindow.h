#ifndef VARNO_WINDOW_EDITORWINDOW_H
#define VARNO_WINDOW_EDITORWINDOW_H

#include "Window/KeyGrabs.h"
#include "Window/WindowProperties.h"

#include <functional>
#include <optional>

namespace varno {

/// A window on the desktop around one child, an editor's view: as large as the view is, with the keyboard
/// handed on to it. [main]
class EditorWindow {
public:
    enum class Kind {
        kManaged,  ///< On the desktop, with frame and place as its window manager likes.
        kUnmanaged ///< In the screen's corner, and no window manager touches it.
    };

    /// Makes the window, not yet shown. @param connection outlives this object @throws WindowError
    EditorWindow(XConnection& connection, Kind kind, const WindowProperties& properties);
    EditorWindow(const EditorWindow&) = delete;
    EditorWindow& operator=(const EditorWindow&) = delete;
    /// Its child must be gone.
    ~EditorWindow();

    xcb_window_t id() const { return mId; }
    /// The size from here on, which nobody at the desktop can change. @param size at least 1 x 1
    void resize(WindowSize size);
    void show();
    /// Takes it off the desktop until it is shown again.
    void hide();

    /// Called when someone at the desktop wants the window closed; it stays until it is destroyed.
    void setCloseHandler(std::function<void()> handler) { mCloseHandler = std::move(handler); }
    /// Keys that the window takes for itself, whatever the child does with others.
    void setBindings(std::vector<KeyBinding> bindings);

    /// Handles what has arrived. @throws WindowError where the window or the connection has gone
    void handleEvents();

private:
    void handle(xcb_generic_event_t& event);
    void pressed(const xcb_key_press_event_t& event);
    void forward(xcb_key_press_event_t event) const;
    void focused(const xcb_focus_in_event_t& event) const;
    void messageCame(const xcb_client_message_event_t& message);
    xcb_window_t child() const;

    XConnection& mConnection;
    xcb_window_t mId;
    bool mIsDestroyed = false;
    std::function<void()> mCloseHandler;
    std::optional<KeyGrabs> mKeys;
};

} // namespace varno

#endif
