/// A window of a plug-in in a host.
#ifndef VARNO_FORMATS_LV2_UI_PLUGINWINDOW_H
#define VARNO_FORMATS_LV2_UI_PLUGINWINDOW_H

#include "Host/Instance.h"
#include "Host/ViewContainer.h"
#include "LV2/UI/HostOffer.h"
#include "LV2/UI/HostPorts.h"
#include "Shared/Window/EffectWindow.h"
#include "Window/XConnection.h"

#include <filesystem>
#include <memory>
#include <optional>

namespace varno {

/// Has the scale, but no event loop to offer: the host's idle calls are the only clock. Each of them calls
/// the editor's timer, which serves all descriptors and timers of the editor. So watches and timers of this
/// desktop never fire. [main]
class IdleDesktop : public Desktop {
public:
    /// @param scale 1 is the plain size
    explicit IdleDesktop(double scale)
        : mScale(scale) {}

    double scale() const override { return mScale; }
    void watch(int, const void*, Wake) override {}
    void unwatch(int, const void*) override {}
    void startTimer(std::chrono::milliseconds, const void*, Wake) override {}
    void stopTimer(const void*) override {}

private:
    double mScale;
};

/// What a window is of.
struct WindowSource {
    std::int32_t channels;           ///< Of the plug-in.
    std::filesystem::path resources; ///< The folder of the pictures, for the icon of a window of its own.
};

/// The module's own editor with the bar above it, for an instance that holds settings and meters and
/// processes no audio: in the host's window, or in a window of its own where the host offers none. [main]
class PluginWindow : private EffectWindowOwner {
public:
    /// Opens it; a window of its own is not shown yet. Requests the size from a host that can resize its
    /// window.
    /// @throws std::runtime_error where there is no display or no such window of the host's, or nothing to
    /// show
    PluginWindow(const std::shared_ptr<Module>& module, const WindowSource& source, const HostOffer& offer,
                 const HostCalls& calls);
    PluginWindow(const PluginWindow&) = delete;
    PluginWindow& operator=(const PluginWindow&) = delete;
    ~PluginWindow() override = default;

    /// The X11 window for the host: what it shows in the host's window, else its own.
    xcb_window_t id() const { return mWindow->id(); }
    /// See HostPorts::arrived.
    void portChanged(std::uint32_t index, float value) { mPorts.arrived(index, value); }
    /// See EffectWindow::idle.
    bool idle();
    /// Shows and hides a window of its own; false for one in the host's window.
    bool show() { return mWindow->show(); }
    bool hide() { return mWindow->hide(); }

private:
    void resized(xcb_window_t window, PixelSize size) override;
    bool isBypassed() const override { return mPorts.isBypassed(); }
    void setBypassed(bool isBypassed) override { mPorts.setBypassed(isBypassed); }
    Quality quality() const override;
    void setQuality(std::int32_t factor) override { mPorts.setQuality(factor); }

    XConnection mConnection;
    Instance mInstance;
    HostPorts mPorts;
    const LV2UI_Resize* mResize;
    IdleDesktop mDesktop;
    std::optional<EffectWindow> mWindow;
};

} // namespace varno

#endif
