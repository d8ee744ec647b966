/// The screen on which a check opens editors: its server, windows of the host's, and what is used of both.
#ifndef VARNO_APPS_VARNO_VALIDATE_EDITORS_SCREEN_H
#define VARNO_APPS_VARNO_VALIDATE_EDITORS_SCREEN_H

#include "Validate/Editors/OwnServer.h"
#include "Validate/Plugin.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <xcb/xcb.h>

namespace varno::validate {

/// What a server holds, by its name of the kind: "WINDOW" -> 3.
using ServerResources = std::map<std::string, std::uint32_t>;

/// From its making on, DISPLAY names a server of its own, and there is no home folder in which an editor
/// could write. [main]
class Screen {
public:
    /// @throws PluginError where no server starts, with the reason
    Screen();
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    /// A window on the screen for an editor to be in.
    /// @param place which one: each is at another place, counted from 0
    std::uint32_t makeWindow(int place) const;
    void resize(std::uint32_t window, EditorSize size) const;
    void destroy(std::uint32_t window) const;
    /// The size of the visible window within a host's one; nothing where there is none.
    std::optional<EditorSize> sizeWithin(std::uint32_t window) const;
    /// Returns when the server has carried out all requests and has sent the events of them.
    void sync() const;

    /// Everything that the server holds for its clients but for this object.
    ServerResources resources() const;

    // The mouse and the keyboard, as from a person. Each returns when the events have been sent.

    /// To a place in a window.
    void move(std::uint32_t window, int x, int y) const;
    /// @param button 1 is the left one, 4 and 5 are the wheel
    void press(int button) const;
    void release(int button) const;
    /// Presses and releases a key. @param code its number on a PC keyboard under X11
    void tap(int code) const;

    /// Ends the server. No server answers at DISPLAY from then on.
    void lose();

private:
    struct Disconnects {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };

    xcb_connection_t* connection() const { return mConnection.get(); }
    const xcb_screen_t& screen() const;
    void fake(std::uint8_t type, int detail, int x = 0, int y = 0) const;

    OwnServer mServer;
    std::unique_ptr<xcb_connection_t, Disconnects> mConnection; ///< Does nothing once the server has ended.
};

} // namespace varno::validate

#endif
