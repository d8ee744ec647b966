#ifndef VARNO_WINDOW_WHEELGRABS_H
#define VARNO_WINDOW_WHEELGRABS_H

#include "Window/PointerEvents.h"
#include "Window/XConnection.h"

#include <functional>

namespace varno {

/// One step of the wheel.
struct WheelStep {
    enum class Direction { kUp, kDown, kLeft, kRight };

    Direction direction = Direction::kUp;
    std::uint16_t modifiers = 0; ///< See heldModifiers.
    WindowPlace place;           ///< In the window whose wheel is grabbed.
    xcb_timestamp_t timeMs = 0;  ///< The server's time.
};

/// Takes the wheel's steps over a window and over all windows in it, of any client, with any modifiers and
/// locks. The grabs are asynchronous: nothing waits for this program. While a button is held down, the client
/// that received it receives the wheel too. [main]
class WheelGrabs {
public:
    using Handler = std::function<void(const WheelStep& step)>;

    /// @param connection outlives this object @param window made by any client
    WheelGrabs(XConnection& connection, xcb_window_t window, Handler handler);
    WheelGrabs(const WheelGrabs&) = delete;
    WheelGrabs& operator=(const WheelGrabs&) = delete;
    ~WheelGrabs();

private:
    void handle(const xcb_generic_event_t& event) const;

    XConnection& mConnection;
    xcb_window_t mWindow;
    Handler mHandler;
    WindowEvents::Registration mEvents;
};

} // namespace varno

#endif
