#include "Toolkit/FrameOpening.h"

#include "AAX_Enums.h"
#include "Platform/RunLoop.h"
#include "Toolkit/DisplayBitmaps.h"
#include "Toolkit/VSTGUI_RunLoop.h"

#include "vstgui/lib/cframe.h"
#include "vstgui/lib/platform/linux/linuxfactory.h"
#include "vstgui/lib/platform/linux/x11platform.h"
#include "vstgui/lib/platform/platformfactory.h"

#include <cairo/cairo-xcb.h>
#include <xcb/xcb.h>

#include <cstdlib>
#include <limits>
#include <memory>
#include <optional>

namespace varno {

namespace {

using Connection = std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)>;
using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;
template<class T>
using Reply = std::unique_ptr<T, decltype(&std::free)>;

// The window whose identifier a container's pointer holds, if it can be one.
std::optional<xcb_window_t> windowOf(void* nativeView) {
    const auto number = reinterpret_cast<std::uintptr_t>(nativeView);
    if (number == 0 || number > std::numeric_limits<xcb_window_t>::max()) {
        return std::nullopt;
    }
    return static_cast<xcb_window_t>(number);
}

// Whether the display can be reached and has the window. Uses a connection of its own: VSTGUI crashes where
// its own connection fails.
bool windowExists(xcb_window_t window) {
    const Connection connection(xcb_connect(nullptr, nullptr), &xcb_disconnect);
    if (xcb_connection_has_error(connection.get()) != 0) {
        return false;
    }
    const auto cookie = xcb_get_geometry(connection.get(), window);
    const Reply<xcb_get_geometry_reply_t> reply(xcb_get_geometry_reply(connection.get(), cookie, nullptr),
                                                &std::free);
    return reply != nullptr;
}

// Gives VSTGUI cairo's device for its connection. When the last frame closes, VSTGUI finishes the device and
// closes the connection, but 4.13 does not set the device any more; cairo then keeps the closed connection
// in its cache and aborts as soon as another connection has the same address. A device that is already
// set stays.
void setCairoDevice() {
    auto& loop = VSTGUI::X11::RunLoop::instance();
    xcb_connection_t* connection = loop.getXcbConnection();
    xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    // Nothing is drawn: any surface of the connection leads to its device.
    const Surface surface(cairo_xcb_surface_create_for_bitmap(connection, screen, screen->root, 1, 1),
                          &cairo_surface_destroy);
    // VSTGUI adds a reference of its own and releases it after finishing the device.
    loop.setDevice(cairo_surface_get_device(surface.get()));
}

// Returns when the display has done what was requested.
void awaitDisplay(xcb_connection_t* connection) {
    const Reply<xcb_get_input_focus_reply_t> answer(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr), &std::free);
}

// Destroys a window, and returns when the display has done so: the host may destroy its own window around it
// afterwards.
void destroyWindow(xcb_connection_t* connection, xcb_window_t window) {
    xcb_destroy_window(connection, window);
    awaitDisplay(connection);
}

// VSTGUI's factory keeps one of cairo's devices, some 25 KB, for every connection since it was made:
// when no frame is open, the factory is replaced.
void forgetCairoDevices() {
    const auto resources = VSTGUI::getPlatformFactory().asLinuxFactory()->getResourcePath();
    VSTGUI::exitPlatform();
    VSTGUI::initPlatform(nullptr);
    VSTGUI::getPlatformFactory().asLinuxFactory()->setResourcePath(resources);
}

// Takes a window from the one that it is in, invisibly, and returns when the display has done so.
void moveToRoot(xcb_connection_t* connection, xcb_window_t window) {
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    xcb_unmap_window(connection, window);
    xcb_reparent_window(connection, window, root, 0, 0);
    awaitDisplay(connection);
}

// VSTGUI leaves the windows of its frames to the end of its connection, which comes when the last frame is
// closed: until then a closed editor would stay visible in a host's window that still exists.
OpenedFrame openedFrame(const VSTGUI::CFrame& frame) {
    const auto& native = dynamic_cast<const VSTGUI::X11::IX11Frame&>(*frame.getPlatformFrame());
    const xcb_window_t window = native.getX11WindowID();
    return {[window] { moveToRoot(VSTGUI::X11::RunLoop::instance().getXcbConnection(), window); },
            Registration([window] {
                // VSTGUI keeps the pointer to a closed connection, but not the loop.
                if (VSTGUI::X11::RunLoop::get() != nullptr) {
                    destroyWindow(VSTGUI::X11::RunLoop::instance().getXcbConnection(), window);
                } else {
                    forgetDisplayBitmaps();
                    forgetCairoDevices();
                }
            })};
}

} // namespace

std::optional<OpenedFrame> openFrame(VSTGUI::CFrame& frame, void* nativeView, int32_t containerType) {
    const auto window = windowOf(nativeView);
    if (containerType != AAX_eViewContainerType_X11 || !window || !windowExists(*window)) {
        return std::nullopt;
    }
    VSTGUI::X11::FrameConfig config;
    config.runLoop = VSTGUI::makeOwned<VSTGUI_RunLoop>(RunLoop::shared());
    if (!frame.open(nativeView, VSTGUI::PlatformType::kX11EmbedWindowID, &config)) {
        return std::nullopt;
    }
    setCairoDevice();
    // From here on, other connections know the frame's window: keys may be sent to it.
    awaitDisplay(VSTGUI::X11::RunLoop::instance().getXcbConnection());
    return openedFrame(frame);
}

} // namespace varno
