/// A test's own connection to an X server.
#ifndef VARNO_TEST_XCLIENT_H
#define VARNO_TEST_XCLIENT_H

#include <cstdlib>
#include <memory>
#include <string>
#include <xcb/xcb.h>

namespace varno::test {

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); }
};
/// What the X library hands over to be freed: replies, events and errors.
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

    /// Returns once the server has carried out everything asked of it, and has sent to all clients what they
    /// are to hear of it.
    void synchronise() const;

    /// A mapped window at this area of the screen, without a window manager's frame.
    xcb_window_t makeWindow(const Area& area) const;
    void destroyWindow(xcb_window_t window) const;
    /// The windows right inside of this one.
    std::size_t countChildren(xcb_window_t window) const;

private:
    xcb_connection_t* mConnection;
    const xcb_screen_t* mScreen = nullptr;
};

} // namespace varno::test

#endif
