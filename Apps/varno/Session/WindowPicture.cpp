#include "Session/WindowPicture.h"

#include "CommandLine/CommandError.h"
#include "Window/WindowProperties.h"

#include <xcb/composite.h>
#include <xcb/xcb_aux.h>

#include <algorithm>
#include <cairo-xcb.h>
#include <cstdint>
#include <exception>

namespace varno {
namespace {

// From this version on xcb_composite_name_window_pixmap is available.
constexpr std::uint32_t kCompositeMajor = 0;
constexpr std::uint32_t kCompositeMinor = 2;

// All bits of a pixel are read. Its first three bytes are its colour; a fourth is undefined.
constexpr std::uint32_t kAllPlanes = ~0U;
constexpr int kColourBytes = 3;

bool isSet(std::uint8_t byte) {
    return byte != 0;
}

bool canNamePictures(xcb_connection_t* connection) {
    const auto* extension = xcb_get_extension_data(connection, &xcb_composite_id);
    if (extension == nullptr || extension->present == 0) {
        return false;
    }
    const auto cookie = xcb_composite_query_version(connection, kCompositeMajor, kCompositeMinor);
    const XReply<xcb_composite_query_version_reply_t> version(
        xcb_composite_query_version_reply(connection, cookie, nullptr));
    return version && (version->major_version > kCompositeMajor || version->minor_version >= kCompositeMinor);
}

// Cairo keeps data about a connection until its device is finished.
class Drawing {
public:
    Drawing(XConnection& connection, xcb_pixmap_t picture, const xcb_get_geometry_reply_t& geometry)
        : mSurface(cairo_xcb_surface_create(connection.get(), picture,
                                            xcb_aux_find_visual_by_id(xcb_aux_get_screen(connection.get(), 0),
                                                                      connection.screen().root_visual),
                                            geometry.width, geometry.height)) {}
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;
    ~Drawing() {
        cairo_surface_finish(mSurface.get());
        cairo_device_finish(cairo_surface_get_device(mSurface.get()));
    }

    cairo_surface_t* surface() const { return mSurface.get(); }

private:
    CairoSurface mSurface;
};

struct Destination {
    AtomicFile& file;
    std::exception_ptr failure;
};

// Called by the C library, through which no exception may pass.
cairo_status_t writeTo(void* destination, const unsigned char* bytes, unsigned length) {
    auto& to = *static_cast<Destination*>(destination);
    try {
        to.file.write({reinterpret_cast<const char*>(bytes), length});
        return CAIRO_STATUS_SUCCESS;
    } catch (...) {
        to.failure = std::current_exception();
        return CAIRO_STATUS_WRITE_ERROR;
    }
}

void writePng(cairo_surface_t* surface, AtomicFile& file) {
    Destination destination{file, nullptr};
    const auto status = cairo_surface_write_to_png_stream(surface, writeTo, &destination);
    if (destination.failure) {
        std::rethrow_exception(destination.failure);
    }
    if (status != CAIRO_STATUS_SUCCESS) {
        throw WorkError(file.name() +
                        ": the window's picture cannot be had: " + cairo_status_to_string(status));
    }
}

} // namespace

WindowPicture::WindowPicture(XConnection& connection, xcb_window_t window)
    : mConnection(connection),
      mWindow(window) {
    if (!canNamePictures(connection.get())) {
        throw WorkError("no picture can be made of a window: the X server lacks the Composite extension");
    }
    xcb_composite_redirect_window(connection.get(), window, XCB_COMPOSITE_REDIRECT_AUTOMATIC);
}

template<typename Use>
bool WindowPicture::withPicture(Use use) const {
    auto* connection = mConnection.get();
    const auto picture = xcb_generate_id(connection);
    xcb_composite_name_window_pixmap(connection, mWindow, picture);
    const XReply<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(connection, xcb_get_geometry(connection, picture), nullptr));
    mConnection.throwIfLost();
    if (!geometry) {
        return false;
    }
    use(picture, *geometry);
    xcb_free_pixmap(connection, picture);
    mConnection.flush();
    return true;
}

bool WindowPicture::isDrawn() const {
    auto* connection = mConnection.get();
    const XReply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection, xcb_query_tree(connection, mWindow), nullptr));
    bool drawn = tree && tree->children_len == 0;
    withPicture([&](xcb_pixmap_t picture, const xcb_get_geometry_reply_t& geometry) {
        const auto isLit = [&](int y) {
            const auto cookie = xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, picture,
                                              static_cast<std::int16_t>(geometry.width - 1),
                                              static_cast<std::int16_t>(y), 1, 1, kAllPlanes);
            const XReply<xcb_get_image_reply_t> pixel(xcb_get_image_reply(connection, cookie, nullptr));
            const auto* bytes = pixel ? xcb_get_image_data(pixel.get()) : nullptr;
            return bytes != nullptr && std::any_of(bytes, bytes + kColourBytes, isSet);
        };
        drawn = drawn || (isLit(0) && isLit(geometry.height - 1));
    });
    return drawn;
}

void WindowPicture::write(AtomicFile& file) const {
    const bool isShown = withPicture([&](xcb_pixmap_t picture, const xcb_get_geometry_reply_t& geometry) {
        const Drawing drawing(mConnection, picture, geometry);
        writePng(drawing.surface(), file);
    });
    if (!isShown) {
        throw WorkError(file.name() + ": the window's picture cannot be had: the window is not shown");
    }
}

} // namespace varno
