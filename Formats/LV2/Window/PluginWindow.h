/// A window of a plug-in in a host.
#ifndef VARNO_FORMATS_LV2_WINDOW_PLUGINWINDOW_H
#define VARNO_FORMATS_LV2_WINDOW_PLUGINWINDOW_H

#include "Host/Editor.h"
#include "Host/Instance.h"
#include "LV2/Window/HostOffer.h"
#include "LV2/Window/HostPorts.h"
#include "LV2/Window/IdleDesktop.h"
#include "Window/EditorWindow.h"
#include "Window/XConnection.h"

#include <filesystem>
#include <memory>
#include <optional>

namespace varno {

/// What a window is of.
struct WindowSource {
    std::int32_t channels;           ///< Of the plug-in.
    std::filesystem::path resources; ///< The folder of the pictures, for the icon of a window of its own.
};

/// The module's own editor, around an instance that holds settings and meters and hears nothing: in the
/// host's window, or in one of its own where the host offers none. [main]
class PluginWindow {
public:
    /// Opens it; a window of its own is not shown yet. Asks the host, where it can be asked, for the size.
    /// @throws std::runtime_error where there is no display or no such window of the host's, or nothing to
    /// show
    PluginWindow(std::shared_ptr<Module> module, const WindowSource& source, const HostOffer& offer,
                 const HostCalls& calls);
    PluginWindow(const PluginWindow&) = delete;
    PluginWindow& operator=(const PluginWindow&) = delete;

    /// The X11 window that the host has to do with: the editor's in the host's, else its own.
    xcb_window_t id() const { return mID; }
    /// See HostPorts::arrived.
    void portChanged(std::uint32_t index, float value) { mPorts.arrived(index, value); }
    /// Does all that there is to do now. Returns whether it is still open: somebody may have closed a window
    /// of its own, which can be shown again, or the display may be lost.
    bool idle();
    /// Shows and hides a window of its own; false for one in the host's window.
    bool show();
    bool hide();

private:
    void openIn(xcb_window_t parent);
    void openInShell(const HostOffer& offer, const std::filesystem::path& resources);
    void openEditor(xcb_window_t parent);
    void resize(const AAX_Point& size);

    std::optional<XConnection> mConnection; ///< Held on for a shell only.
    Instance mInstance;
    HostPorts mPorts;
    const LV2UI_Resize* mResize;
    std::optional<EditorWindow> mShell; ///< The window of its own.
    bool mIsClosed = false;             ///< By somebody at the desktop.
    bool mIsLost = false;               ///< The shell or its display has gone.
    IdleDesktop mDesktop;
    ACFPtr<ViewContainer> mContainer;
    std::unique_ptr<Editor> mEditor;
    xcb_window_t mID = XCB_WINDOW_NONE;
};

} // namespace varno

#endif
