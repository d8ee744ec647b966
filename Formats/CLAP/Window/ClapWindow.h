/// The window of a plug-in in a CLAP host.
#ifndef VARNO_FORMATS_CLAP_WINDOW_CLAPWINDOW_H
#define VARNO_FORMATS_CLAP_WINDOW_CLAPWINDOW_H

#include "CLAP/Clap/Gui.h"
#include "CLAP/ClapPlugin.h"
#include "CLAP/Window/HostDesktop.h"
#include "CLAP/Window/WindowClock.h"
#include "CLAP/Window/WindowValues.h"
#include "Shared/Window/EffectWindow.h"
#include "Window/ChildWindow.h"

#include <optional>
#include <string>
#include <vector>

namespace varno {

/// A window that is not shown, on the screen's own, until it is put into one of the host's. [main]
class ShelterWindow : public ChildWindow {
public:
    /// @param connection outlives this object
    explicit ShelterWindow(XConnection& connection)
        : ChildWindow(connection, connection.screen().root, Use::kDrawing, 0) {}
    ~ShelterWindow() = default;

    void setSize(PixelSize size) const { moveTo({0, 0, size.width, size.height}); }
    void moveInto(xcb_window_t parent);
};

/// The editor with the bar above it: in a window of the host's, which it is put into after it was made, or
/// floating. It shows and changes the plug-in's settings. [main]
class ClapWindow : public PluginWindowBase, private EffectWindowOwner {
public:
    /// Made, and not shown. @param plugin outlives this object
    /// @throws std::runtime_error where there is no display or nothing to show
    ClapWindow(ClapPlugin& plugin, bool isFloating);
    ~ClapWindow() override = default;

    bool isFloating() const { return !mShelter; }
    PixelSize size() const { return mWindow->size(); }
    /// Has this scale when it returns, for other clients of the server too. @return false where it is none
    bool setScale(double scale);
    /// The next size that fits into a room, at least the smallest.
    PixelSize adjusted(PixelSize room) { return mWindow->surround().sizeWithin(room); }
    /// Takes the next size that fits, and has it when it returns, for other clients of the server too.
    /// @return whether that is the size
    bool setSize(PixelSize size);
    /// @return false where it floats, or there is no such window
    bool setParent(xcb_window_t parent);
    /// Keeps it above another window. @return false where it does not float
    bool setTransient(xcb_window_t other);
    void setTitle(const std::string& title);
    bool show();
    bool hide();

    void turn() override;
    bool isTimer(clap_id timer) const override { return mClock->isTimer(timer); }
    void ready(int descriptor) override { mDesktop.ready(descriptor); }

private:
    void resized(xcb_window_t window, PixelSize size) override;
    bool isBypassed() const override { return mValues.isBypassed(); }
    void setBypassed(bool isBypassed) override { mValues.setBypassed(isBypassed); }
    std::vector<HostMenuItem> menuItems(const std::string& id) override;
    const HostIndication* indication(const FocusItem& item) override;
    Quality quality() const override { return mPlugin.quality(); }
    void setQuality(std::int32_t factor) override { mValues.setQuality(factor); }

    ClapPlugin& mPlugin;
    XConnection mConnection;
    WindowValues mValues;
    HostDesktop mDesktop;
    const clap_host_gui_t* mHostGui;
    std::optional<ShelterWindow> mShelter; ///< Where it does not float.
    bool mIsInHost = false;
    bool mIsResizing = false; ///< By the host.
    bool mIsOpen = true;      ///< As the host was told.
    std::optional<EffectWindow> mWindow;
    std::optional<WindowClock> mClock; ///< From its making on.
};

} // namespace varno

#endif
