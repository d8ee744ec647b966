/// The window of a plug-in: the effect's editor with the bar above it.
#ifndef VARNO_FORMATS_SHARED_WINDOW_EFFECTWINDOW_H
#define VARNO_FORMATS_SHARED_WINDOW_EFFECTWINDOW_H

#include "Host/Editor.h"
#include "Host/Instance.h"
#include "Host/ViewContainer.h"
#include "Surround/Surround.h"
#include "Window/EditorWindow.h"
#include "Window/XConnection.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace varno {

/// What a plug-in does for its window. [main]
class EffectWindowOwner : public BarOwner {
public:
    /// The window within another one has this size, never an empty one; called while it is made, too.
    virtual void resized(xcb_window_t window, PixelSize size) = 0;
    /// What the host has for the menu of a parameter.
    virtual std::vector<HostMenuItem> menuItems(const std::string& /*id*/) { return {}; }
    /// What it shows of a parameter, by the control or button that is for it; null for nothing.
    virtual const HostIndication* indication(const FocusItem& /*item*/) { return nullptr; }
};

/// The name of the display that the environment names; empty for none. [main]
std::string environmentDisplay();

/// The scale of a window: a host's factor where there is a valid one, else the desktop's. [main]
double windowScale(std::optional<double> hostScale, const XConnection& connection);

/// For an instance that holds settings and meters and processes no audio: within a window of the host's, or
/// in a window of its own. [main]
class EffectWindow : private SurroundOwner {
public:
    struct Setup {
        xcb_window_t parent = XCB_WINDOW_NONE; ///< The window to be in; none for one of its own.
        std::string title{};                   ///< Of one of its own; empty for the effect's name.
        std::filesystem::path resources{};     ///< Pictures and presets; empty for none.
    };

    /// Opens it; a window of its own is not shown yet. All but `setup` outlive this object.
    /// @throws std::runtime_error where there is no such window to be in, or nothing to show
    EffectWindow(XConnection& connection, Desktop& desktop, Instance& instance, EffectWindowOwner& owner,
                 const Setup& setup);
    EffectWindow(const EffectWindow&) = delete;
    EffectWindow& operator=(const EffectWindow&) = delete;
    ~EffectWindow() override = default;

    /// The X11 window: what is in the other window, else its own.
    xcb_window_t id() const { return mShell ? mShell->id() : mSurround->id(); }
    PixelSize size() const { return mSurround->size(); }
    Surround& surround() { return *mSurround; }
    /// Handles what has arrived since the last call. To be called about 30 times a second. Returns whether it
    /// is still open: the user may have closed a window of its own, which can be shown again, or the display
    /// may be lost.
    bool idle();
    /// Whether the display or a window of its own is lost, so that it cannot be shown again.
    bool isLost() const { return mIsLost; }
    /// Shows and hides a window of its own; false for one within another.
    bool show();
    bool hide();

private:
    void resize(PixelSize size) override;
    bool isBypassed() const override { return mOwner.isBypassed(); }
    void setBypassed(bool isBypassed) override { mOwner.setBypassed(isBypassed); }
    Quality quality() const override { return mOwner.quality(); }
    void setQuality(std::int32_t factor) override { mOwner.setQuality(factor); }
    std::vector<HostMenuItem> menuItems(const std::string& id) override { return mOwner.menuItems(id); }
    const HostIndication* indication(const FocusItem& item) override { return mOwner.indication(item); }
    void save() override {} ///< The host saves.

    xcb_window_t openShell(const Setup& setup);
    void handleEvents();

    XConnection& mConnection;
    Instance& mInstance;
    EffectWindowOwner& mOwner;
    CompareSlots mSlots;
    std::optional<EditorWindow> mShell; ///< The window of its own.
    bool mIsClosed = false;             ///< By the user.
    bool mIsLost = false;               ///< The window of its own or its display is lost.
    std::optional<Surround> mSurround;
};

} // namespace varno

#endif
