#include "Window/EditorWindow.h"

#include "Window/XConnection.h"

namespace varno {

EditorWindow::EditorWindow(XConnection& connection, Kind kind, const WindowProperties& properties)
    : mConnection(connection),
      mId(xcb_generate_id(connection.get())) {
    const auto& screen = connection.screen();
    const std::uint32_t values[] = {screen.black_pixel, kind == Kind::kUnmanaged,
                                    XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE |
                                        XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY};
    xcb_create_window(connection.get(), XCB_COPY_FROM_PARENT, mId, screen.root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
    setWindowProperties(connection, mId, properties);
    mEvents = connection.events().add(mId, [this](const auto& event) { handle(event); });
    // The child is made through another connection, which must find the window.
    connection.sync();
}

EditorWindow::~EditorWindow() {
    if (!mIsDestroyed) {
        xcb_destroy_window(mConnection.get(), mId);
        mConnection.flush();
    }
}

void EditorWindow::resize(WindowSize size) {
    setOnlySize(mConnection, mId, size);
    const std::uint32_t values[] = {static_cast<std::uint32_t>(size.width),
                                    static_cast<std::uint32_t>(size.height)};
    xcb_configure_window(mConnection.get(), mId, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, values);
    mConnection.flush();
}

void EditorWindow::show() {
    xcb_map_window(mConnection.get(), mId);
    mConnection.flush();
}

void EditorWindow::hide() {
    xcb_unmap_window(mConnection.get(), mId);
    mConnection.flush();
}

void EditorWindow::setBindings(std::vector<KeyBinding> bindings) {
    mKeys.emplace(mConnection, mId, std::move(bindings));
    mConnection.flush();
}

void EditorWindow::handleEvents() {
    mConnection.handleEvents();
}

void EditorWindow::handle(const xcb_generic_event_t& event) {
    switch (eventKind(event)) {
    case XCB_KEY_PRESS:
    case XCB_KEY_RELEASE:
        pressed(eventAs<xcb_key_press_event_t>(event));
        break;
    case XCB_FOCUS_IN:
        focused(eventAs<xcb_focus_in_event_t>(event));
        break;
    case XCB_CLIENT_MESSAGE:
        messageCame(eventAs<xcb_client_message_event_t>(event));
        break;
    case XCB_DESTROY_NOTIFY:
        if (eventAs<xcb_destroy_notify_event_t>(event).window == mId) {
            mIsDestroyed = true;
            throw WindowError("the window was destroyed from outside");
        }
        break;
    default:
        break;
    }
}

// Keys arrive here where they are bound, and while the window itself has the focus.
void EditorWindow::pressed(const xcb_key_press_event_t& event) {
    if (!(mKeys && mKeys->handle(event))) {
        forward(event);
    }
}

void EditorWindow::forward(xcb_key_press_event_t event) const {
    const auto to = focusWindow();
    if (to != XCB_WINDOW_NONE && to != mId && event.child == XCB_WINDOW_NONE) {
        event.event = to;
        xcb_send_event(mConnection.get(), 0, to, XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<const char*>(&event));
    }
}

// The desktop gives the focus to the window, which passes it on.
void EditorWindow::focused(const xcb_focus_in_event_t& event) const {
    const bool isOwn = event.detail == XCB_NOTIFY_DETAIL_ANCESTOR ||
                       event.detail == XCB_NOTIFY_DETAIL_INFERIOR ||
                       event.detail == XCB_NOTIFY_DETAIL_NONLINEAR;
    const bool isByGrab = event.mode == XCB_NOTIFY_MODE_GRAB || event.mode == XCB_NOTIFY_MODE_UNGRAB;
    if (const auto to = focusWindow(); to != XCB_WINDOW_NONE && isOwn && !isByGrab) {
        xcb_set_input_focus(mConnection.get(), XCB_INPUT_FOCUS_PARENT, to, XCB_CURRENT_TIME);
    }
}

void EditorWindow::messageCame(const xcb_client_message_event_t& message) {
    if (message.type != mConnection.atom("WM_PROTOCOLS")) {
        return;
    }
    if (message.data.data32[0] == mConnection.atom("WM_DELETE_WINDOW")) {
        if (mCloseHandler) {
            mCloseHandler();
        }
    } else if (message.data.data32[0] == mConnection.atom("_NET_WM_PING")) {
        auto answer = message;
        answer.window = mConnection.screen().root;
        xcb_send_event(mConnection.get(), 0, answer.window,
                       XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                       reinterpret_cast<const char*>(&answer));
    }
}

xcb_window_t EditorWindow::focusWindow() const {
    if (mFocusWindow != XCB_WINDOW_NONE) {
        return mFocusWindow;
    }
    const auto children = mConnection.children(mId);
    return children.empty() ? xcb_window_t{XCB_WINDOW_NONE} : children.front();
}

} // namespace varno
