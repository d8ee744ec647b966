/// A host of the window's binary, as the binary lies in the bundle.
#ifndef VARNO_TESTS_FORMATS_LV2_UI_WINDOWHOST_H
#define VARNO_TESTS_FORMATS_LV2_UI_WINDOWHOST_H

#include "Tests/Support/Picture.h"
#include "Tests/Support/XClient.h"

#include <lv2/options/options.h>
#include <lv2/ui/ui.h>
#include <lv2/urid/urid.h>

#include <cstdint>
#include <map>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace varno::test {

/// What the binary's one function returns. The binary stays loaded until the program ends.
const LV2UI_Descriptor* windowDescriptor(std::uint32_t index = 0);

/// Identifiers as numbers.
class UridMap {
public:
    LV2_URID operator()(const std::string& uri);
    LV2_URID_Map* feature() { return &mFeature; }

private:
    static LV2_URID map(LV2_URID_Map_Handle handle, const char* uri);

    std::map<std::string, LV2_URID> mNumbers;
    LV2_URID_Map mFeature{this, &UridMap::map};
};

/// What a host offers to a window.
struct HostManners {
    enum class Parent { Window, Null, NotOffered };

    std::string plugin = "urn:morvak:varno-s#stereo";
    Parent parent = Parent::Window;
    bool offersTouch = true;
    bool offersResize = true;
    std::optional<float> scale{};
    std::optional<float> rateHz{}; ///< Of the plug-in's sound.
    std::string title{};
    bool repeatsWrites = false; ///< Reports a port's value back while it is being written.
    Place onScreen{};
};

/// One call that the window has made.
struct HostEvent {
    enum class Kind { Write, Touch, Release };

    Kind kind = Kind::Write;
    std::uint32_t port = 0;
    float value = 0.0F; ///< Of a write.

    bool operator==(const HostEvent&) const = default;
};
void PrintTo(const HostEvent& event, std::ostream* out);

/// A host with a window of 1 x 1 pixels, which becomes as large as it is asked to. The window in it is open
/// from construction on, if it could be created.
class WindowHost {
public:
    explicit WindowHost(const XClient& client, const HostManners& manners = {});
    WindowHost(const WindowHost&) = delete;
    WindowHost& operator=(const WindowHost&) = delete;
    ~WindowHost() { close(); }

    bool isOpen() const { return mHandle != nullptr; }
    void close();
    void destroyParent() { mParent.destroy(); }

    /// One idle call, after the display has carried out all requests. Returns its result.
    int turn();
    void tell(std::uint32_t port, float value);
    /// With a size and a protocol of the caller's.
    void tell(std::uint32_t port, std::uint32_t size, std::uint32_t protocol, const void* value);
    int show() { return showInterface().show(mHandle); }
    int hide() { return showInterface().hide(mHandle); }

    /// Returns all calls so far, in their order, and removes them.
    std::vector<HostEvent> takeEvents();
    /// The size that the window has requested last; nothing before.
    std::optional<Area> askedSize() const { return mAskedSize; }
    xcb_window_t parent() const { return mParent.id(); }
    /// The window that instantiate has returned.
    xcb_window_t widget() const { return mWidget; }
    Area areaOf(xcb_window_t window) const;
    Picture picture(const Area& area) const;

private:
    void open();
    static const LV2UI_Show_Interface& showInterface();
    static void write(LV2UI_Controller host, std::uint32_t port, std::uint32_t size, std::uint32_t protocol,
                      const void* value);
    static void touch(LV2UI_Feature_Handle host, std::uint32_t port, bool isTouched);
    static int resize(LV2UI_Feature_Handle host, int width, int height);

    const XClient& mClient;
    HostManners mManners;
    XWindow mParent;
    UridMap mUrids;
    LV2UI_Touch mTouch{this, &WindowHost::touch};
    LV2UI_Resize mResize{this, &WindowHost::resize};
    LV2UI_Handle mHandle = nullptr;
    xcb_window_t mWidget = XCB_WINDOW_NONE;
    std::vector<HostEvent> mEvents;
    std::optional<Area> mAskedSize;
};

} // namespace varno::test

#endif
