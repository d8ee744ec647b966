#ifndef VARNO_WINDOW_DESKTOPSETTINGS_H
#define VARNO_WINDOW_DESKTOPSETTINGS_H

#include "Window/XConnection.h"

#include <functional>
#include <optional>
#include <string>

namespace varno {

/// What the desktop says of its scale, now and whenever that changes: the settings of its XSETTINGS manager,
/// where there is one, and the X resources. [main]
class DesktopSettings {
public:
    /// @param connection outlives this object
    /// @param gdkScale see desktopScale
    DesktopSettings(XConnection& connection, std::optional<std::string> gdkScale);
    DesktopSettings(const DesktopSettings&) = delete;
    DesktopSettings& operator=(const DesktopSettings&) = delete;

    /// See desktopScale.
    double scale() const { return mScale; }
    /// Called when the scale is another one.
    void setScaleHandler(std::function<void(double scale)> handler) { mHandler = std::move(handler); }

private:
    void handleOfRoot(const xcb_generic_event_t& event);
    void findManager();
    void read();

    XConnection& mConnection;
    std::optional<std::string> mGdkScale;
    xcb_atom_t mSelection; ///< Its owner is the manager.
    xcb_atom_t mProperty;  ///< Of the manager's window.
    xcb_window_t mManager = XCB_WINDOW_NONE;
    double mScale = 1.0;
    std::function<void(double)> mHandler;
    WindowEvents::Registration mRootEvents;
    WindowEvents::Registration mManagerEvents;
};

} // namespace varno

#endif
