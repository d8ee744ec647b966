/// A test's own connection to an X server.
#ifndef VARNO_TESTS_SUPPORT_XCLIENT_H
#define VARNO_TESTS_SUPPORT_XCLIENT_H

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>
#include <xcb/xcb.h>

namespace varno::test {

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); }
};
/// What the X library returns to be freed: replies, events and errors.
template<typename Reply>
using XReply = std::unique_ptr<Reply, FreeReply>;

/// A place on the screen or in a window, in pixels from its top left corner.
struct Place {
    int x = 0;
    int y = 0;

    Place operator+(const Place& other) const { return {x + other.x, y + other.y}; }
};

/// A rectangle on the screen or in a window, in pixels.
struct Area {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    bool operator==(const Area&) const = default;
    Place middle() const { return {x + width / 2, y + height / 2}; }
    bool holds(const Area& other) const;
};

class XClient {
public:
    /// Throws std::runtime_error where the server does not answer.
    explicit XClient(const std::string& display);
    XClient(const XClient&) = delete;
    XClient& operator=(const XClient&) = delete;
    ~XClient() { xcb_disconnect(mConnection); }

    xcb_connection_t* connection() const { return mConnection; }
    const xcb_screen_t& screen() const { return *mScreen; }

    /// Returns when the server has carried out every request so far and has sent the events of them to all
    /// clients.
    void synchronise() const;

    /// A mapped window at this area of the screen, without a window manager's frame.
    xcb_window_t makeWindow(const Area& area) const;
    void destroyWindow(xcb_window_t window) const;
    /// Whether a window is there, and it and all around it are mapped.
    bool isShown(xcb_window_t window) const;
    /// The windows right inside of this one.
    std::vector<xcb_window_t> children(xcb_window_t window) const;
    std::size_t countChildren(xcb_window_t window) const { return children(window).size(); }
    /// Paints over a part of any client's window.
    void fill(xcb_window_t window, const Area& area, std::uint32_t colour) const;

    /// The window that has the input focus.
    xcb_window_t focus() const;
    /// Gives it to a window.
    void giveFocus(xcb_window_t window) const;
    /// Whether a window is another one or lies within it, at any depth.
    bool isWithin(xcb_window_t inner, xcb_window_t outer) const;

    /// The window that owns the clipboard; none where there is no owner.
    xcb_window_t clipboardOwner() const;
    /// Makes a window the clipboard's owner; XCB_WINDOW_NONE: no owner.
    void setClipboardOwner(xcb_window_t window) const;

private:
    xcb_atom_t clipboard() const;

    xcb_connection_t* mConnection;
    const xcb_screen_t* mScreen = nullptr;
};

/// A mapped window on the screen, without a window manager's frame. The client outlives it.
class XWindow {
public:
    XWindow(const XClient& client, const Area& area)
        : mClient(client),
          mID(client.makeWindow(area)) {}
    XWindow(const XWindow&) = delete;
    XWindow& operator=(const XWindow&) = delete;
    ~XWindow();

    /// None once it is destroyed.
    xcb_window_t id() const { return mID; }
    /// Takes it off the screen now, with all windows in it.
    void destroy();

private:
    const XClient& mClient;
    xcb_window_t mID;
};

} // namespace varno::test

#endif
