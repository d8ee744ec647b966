#ifndef VARNO_WINDOW_XCONNECTION_H
#define VARNO_WINDOW_XCONNECTION_H

#include "Window/WindowEvents.h"

#include <cstdint>
#include <cstdlib>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>
#include <xcb/xcb.h>
#include <xcb/xcbext.h>

namespace varno {

/// Frees what the X library has allocated.
struct FreeXReply {
    void operator()(void* reply) const { std::free(reply); }
};

/// A reply or an event of the X server, owned; null where there is none.
template<class T>
using XReply = std::unique_ptr<T, FreeXReply>;

/// A window or its display cannot be opened, or is lost. what() is one line without a line end that names
/// what was found and what was expected.
class WindowError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A connection to an X server and to the screen in its name. Requests are sent by flush() at the latest.
/// [main]
class XConnection {
public:
    /// @param display as DISPLAY has it (":0"); empty for none
    /// @throws WindowError where nothing answers under that name
    explicit XConnection(const std::string& display);
    XConnection(const XConnection&) = delete;
    XConnection& operator=(const XConnection&) = delete;

    xcb_connection_t* get() const { return mConnection.get(); }
    const xcb_screen_t& screen() const { return *mScreen; }
    /// The number of the screen on its server.
    int screenNumber() const { return mScreenNumber; }
    /// Readable when something has arrived.
    int descriptor() const { return xcb_get_file_descriptor(get()); }
    /// The number of a name, the same on every call.
    xcb_atom_t atom(std::string_view name);
    /// A text property of a window; empty where there is none.
    std::string text(xcb_window_t window, xcb_atom_t property) const;
    /// The 32-bit numbers of a property of a window; none where there is none, or one of another format.
    std::vector<std::uint32_t> words(xcb_window_t window, xcb_atom_t property) const;
    /// Whether the server has an extension; requests of one that it lacks end the connection.
    bool hasExtension(xcb_extension_t& extension) const;
    /// Whether there is such a window.
    bool has(xcb_window_t window) const;
    /// The children of a window, the lowest first; none where there is no such window.
    std::vector<xcb_window_t> children(xcb_window_t window) const;
    /// The window that a window is in; XCB_WINDOW_NONE for the root, and where there is no such window.
    xcb_window_t parent(xcb_window_t window) const;
    /// Whether a window is another one or is in it, at any depth. A round trip for each step of the way.
    bool isWithin(xcb_window_t window, xcb_window_t outer) const;
    /// The window of the screen that a window is in, as with a window manager's frame around it; itself where
    /// it is right on the screen; XCB_WINDOW_NONE where there is no such window.
    xcb_window_t topLevel(xcb_window_t window) const;
    /// Has the server report more kinds of events of a window, besides those selected before.
    /// @param events XCB_EVENT_MASK_... bits
    void select(xcb_window_t window, std::uint32_t events) const;

    /// Where events are registered for.
    WindowEvents& events() { return mEvents; }
    /// Calls the handlers of all events that have arrived, without waiting, and sends requests. Errors are
    /// answers to requests about windows that no longer exist, and are ignored. An exception of a handler
    /// passes through; the events after it remain for the next call.
    /// @throws WindowError once the server has ended or has closed the connection
    void handleEvents();

    /// The reply to a request, without waiting. @param sequence the cookie's number
    /// @return whether the answer is there; `reply` is null where the request failed
    template<class T>
    bool pollReply(unsigned sequence, XReply<T>& reply) const {
        void* answer = nullptr;
        xcb_generic_error_t* error = nullptr;
        const bool isThere = xcb_poll_for_reply(get(), sequence, &answer, &error) != 0;
        const XReply<xcb_generic_error_t> ignored(error);
        reply.reset(static_cast<T*>(answer));
        return isThere;
    }

    void flush() const { xcb_flush(get()); }
    /// Returns when the server has processed all requests.
    void sync() const;
    /// The next event that has arrived, without waiting; null where there is none.
    XReply<xcb_generic_event_t> poll() const;
    /// @throws WindowError once the server has ended or has closed the connection
    void throwIfLost() const;

private:
    // Ends a connection when the server has carried out its requests, so that other clients find its windows
    // gone. XCB drops what has not been sent yet.
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const;
    };

    std::string mDisplay;
    std::unique_ptr<xcb_connection_t, Disconnect> mConnection;
    const xcb_screen_t* mScreen = nullptr;
    int mScreenNumber = 0;
    std::map<std::string, xcb_atom_t, std::less<>> mAtoms;
    WindowEvents mEvents;
};

} // namespace varno

#endif
