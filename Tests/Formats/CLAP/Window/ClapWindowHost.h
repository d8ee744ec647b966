/// A host that shows the plug-ins' window, from the binary as it is installed.
#ifndef VARNO_TESTS_FORMATS_CLAP_WINDOW_CLAPWINDOWHOST_H
#define VARNO_TESTS_FORMATS_CLAP_WINDOW_CLAPWINDOWHOST_H

#include "CLAP/Clap/Gui.h"
#include "Tests/Formats/CLAP/HostedClap.h"
#include "Tests/Support/FakeInput.h"
#include "Tests/Support/Picture.h"
#include "Tests/Support/XClient.h"

#include <cstddef>
#include <optional>
#include <set>
#include <string>

namespace varno::test {

/// The loaded binary's entry, initialised. It stays loaded until the program ends.
const clap_plugin_entry_t& binaryEntry();

/// What a host has for windows.
struct WindowManners {
    bool hasTimers = true;
    bool watchesDescriptors = true;
    bool isFloating = false;
    Place onScreen{};
};

/// A host with a window, a plug-in, and the plug-in's window within the host's or floating, shown.
class ClapWindowHost {
public:
    /// @throws std::runtime_error where a call is refused that opens the window
    explicit ClapWindowHost(const XClient& client, const WindowManners& manners = {});
    ClapWindowHost(const ClapWindowHost&) = delete;
    ClapWindowHost& operator=(const ClapWindowHost&) = delete;
    ~ClapWindowHost();

    HostedClap& plugin() { return *mPlugin; }
    ClapHost& host() { return mHost; }
    const clap_plugin_gui_t& gui() const { return *mGui; }
    const clap_plugin_t* table() const { return mPlugin->plugin(); }
    xcb_window_t parent() const { return mParent.id(); }
    /// The plug-in's window: within the host's, or else the one that has come on the screen.
    xcb_window_t window() const { return mWindow; }
    Area size() const;
    /// One round of the host's event loop, after the display has carried out all requests.
    void turn();
    void closeWindow();
    /// Ends the plug-in, and leaves its window to it.
    void endPlugin() { mPlugin.reset(); }

    // What the plug-in has asked for.
    std::optional<Area> requestedSize;
    int closed = 0;
    bool wasDestroyed = false;
    std::set<clap_id> timers;
    std::multiset<int> descriptors;

private:
    void open();

    const XClient& mClient;
    WindowManners mManners;
    ClapHost mHost;
    XWindow mParent;
    std::optional<HostedClap> mPlugin;
    const clap_plugin_gui_t* mGui = nullptr;
    xcb_window_t mWindow = XCB_WINDOW_NONE;
};

} // namespace varno::test

#endif
