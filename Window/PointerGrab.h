#ifndef VARNO_WINDOW_POINTERGRAB_H
#define VARNO_WINDOW_POINTERGRAB_H

#include "Window/XConnection.h"

#include <functional>

namespace varno {

/// Takes all that the pointer does anywhere on the screen, for as long as a menu is open. Asynchronous:
/// nothing waits for this program. [main]
class PointerGrab {
public:
    /// Receives presses and releases of buttons, and moves, all with their place on the screen (root_x,
    /// root_y) for the structure of a button's event.
    using Handler = std::function<void(const xcb_generic_event_t& event)>;

    /// @param connection outlives this object
    PointerGrab(XConnection& connection, Handler handler);
    PointerGrab(const PointerGrab&) = delete;
    PointerGrab& operator=(const PointerGrab&) = delete;
    ~PointerGrab();

    /// Starts. While another client has the pointer, as with a button that is still down there, this waits
    /// for tick().
    void begin();
    /// Ends as soon as no button is down: no other window receives the release of a button alone. Nothing is
    /// reported any more.
    void end();
    /// Tries again what had to wait. To be called some 30 times a second; costs nothing where nothing waits.
    void tick();

private:
    void handle(const xcb_generic_event_t& event);
    bool isAButtonDown() const;
    void tryToTake();
    void release();

    XConnection& mConnection;
    xcb_window_t mId; ///< Outside of the screen; holds the grab.
    Handler mHandler;
    bool mIsWanted = false;
    bool mIsHeld = false;
    WindowEvents::Registration mEvents;
};

} // namespace varno

#endif
