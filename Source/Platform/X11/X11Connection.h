/// The module's connection to an X server, and the atoms with which its clients exchange a selection.
#ifndef VARNO_SOURCE_PLATFORM_X11_X11CONNECTION_H
#define VARNO_SOURCE_PLATFORM_X11_X11CONNECTION_H

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <xcb/xcb.h>

namespace varno {

struct XcbFree {
    void operator()(void* answer) const { std::free(answer); }
};

/// A reply, error or event of the server.
template<typename Type>
using XcbOwned = std::unique_ptr<Type, XcbFree>;

/// Has a window that is never shown, through which other clients can address it. All of it is [main].
class X11Connection {
public:
    using Event = xcb_generic_event_t;
    using Deadline = std::chrono::steady_clock::time_point;

    /// @param display its name; empty takes that of the environment. Where it cannot be reached, the
    /// connection is lost from the start.
    explicit X11Connection(const std::string& display);

    /// Whether the connection to the server is lost; no events arrive then.
    bool lost() const { return xcb_connection_has_error(mConnection.get()) != 0; }

    xcb_connection_t* xcb() const { return mConnection.get(); }
    int descriptor() const { return xcb_get_file_descriptor(mConnection.get()); }
    xcb_window_t window() const { return mWindow; }

    /// Receives every event that no call waits for, errors included.
    void setHandler(std::function<void(const Event&)> handler) { mHandler = std::move(handler); }

    /// Handles pending events, without waiting, and flushes requests.
    void pump();

    /// Waits for an event; others are handled meanwhile. Null at the deadline and where the connection is
    /// lost.
    XcbOwned<Event> waitFor(const std::function<bool(const Event&)>& wanted, Deadline deadline);

    /// The server's time, by which it orders requests. Empty as above.
    /// @param property one of our window's that is not used otherwise
    std::optional<xcb_timestamp_t> serverTime(xcb_atom_t property, Deadline deadline);

private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };

    std::unique_ptr<xcb_connection_t, Disconnect> mConnection;
    xcb_window_t mWindow = XCB_NONE;
    std::function<void(const Event&)> mHandler = [](const Event&) {};
};

/// The event's type, whether the server or a client sent it; 0 is an error.
uint8_t typeOf(const xcb_generic_event_t& event);

/// The event as the structure of its type.
template<typename Type>
const Type& eventAs(const xcb_generic_event_t& event) {
    return reinterpret_cast<const Type&>(event);
}

/// As the server numbers them; XCB_ATOM_NONE where the connection is lost.
struct X11Atoms {
    xcb_atom_t clipboard; ///< The selection that copy and paste use.
    xcb_atom_t manager;   ///< The selection that a clipboard manager owns.

    xcb_atom_t targets; ///< Targets: the forms in which a selection is offered.
    xcb_atom_t timestamp;
    xcb_atom_t multiple;
    xcb_atom_t utf8String;
    xcb_atom_t text;
    xcb_atom_t utf8Plain;
    xcb_atom_t saveTargets; ///< The request to the manager.

    xcb_atom_t atomPair; ///< Types.
    xcb_atom_t incremental;

    xcb_atom_t toSave;  ///< Property of our window: what the manager is to save.
    xcb_atom_t ownTime; ///< Properties of our window: for the server's time, and for texts that come in.
    /// Used in turn, so that a late reply to an abandoned request is not taken for the reply to the next.
    static constexpr std::size_t kTransfers = 8;
    std::array<xcb_atom_t, kTransfers> transfers;
};

/// One round trip for all of them. [main]
X11Atoms internAtoms(xcb_connection_t* connection);

} // namespace varno

#endif
