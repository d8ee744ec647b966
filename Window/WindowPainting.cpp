#include "Window/WindowPainting.h"

#include "Window/WindowProperties.h"

#include <xcb/xcb_aux.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <optional>

namespace varno {
namespace {

struct PixelForm {
    std::uint8_t depth;
    std::uint32_t red;
    std::uint32_t green;
    std::uint32_t blue;
    cairo_format_t format;
};
// Those of cairo that screens have, in the machine's order of bytes.
constexpr PixelForm kForms[] = {{24, 0xFF0000, 0xFF00, 0xFF, CAIRO_FORMAT_RGB24},
                                {30, 0x3FF00000, 0xFFC00, 0x3FF, CAIRO_FORMAT_RGB30},
                                {16, 0xF800, 0x7E0, 0x1F, CAIRO_FORMAT_RGB16_565}};

constexpr std::uint32_t kWordBytes = 4; // that the length of a request is counted in

struct DestroyContext {
    void operator()(cairo_t* context) const { cairo_destroy(context); }
};

std::optional<cairo_format_t> pixelFormat(const XConnection& connection) {
    const auto* setup = xcb_get_setup(connection.get());
    const auto& root = connection.screen();
    const auto* visual = xcb_aux_find_visual_by_id(
        xcb_aux_get_screen(connection.get(), connection.screenNumber()), root.root_visual);
    const bool isOwnOrder = (setup->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST) ==
                            (std::endian::native == std::endian::little);
    for (const PixelForm& form : kForms) {
        if (visual != nullptr && isOwnOrder && root.root_depth == form.depth &&
            visual->red_mask == form.red && visual->green_mask == form.green &&
            visual->blue_mask == form.blue) {
            return form.format;
        }
    }
    return {};
}

// In as many requests as their greatest length demands.
void sendPicture(const XConnection& connection, xcb_pixmap_t pixmap, xcb_gcontext_t context,
                 cairo_surface_t* picture) {
    const int stride = cairo_image_surface_get_stride(picture);
    const int width = cairo_image_surface_get_width(picture);
    const int height = cairo_image_surface_get_height(picture);
    const std::uint32_t most = xcb_get_maximum_request_length(connection.get()) * kWordBytes -
                               std::uint32_t{sizeof(xcb_put_image_request_t)} - kWordBytes;
    const int rowsAtOnce = std::max(static_cast<int>(most / static_cast<std::uint32_t>(stride)), 1);
    for (int y = 0; y < height; y += rowsAtOnce) {
        const int rows = std::min(rowsAtOnce, height - y);
        xcb_put_image(connection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, context,
                      static_cast<std::uint16_t>(width), static_cast<std::uint16_t>(rows), 0,
                      static_cast<std::int16_t>(y), 0, connection.screen().root_depth,
                      static_cast<std::uint32_t>(rows * stride),
                      cairo_image_surface_get_data(picture) + y * stride);
    }
}

} // namespace

bool canPaint(const XConnection& connection) {
    return pixelFormat(connection).has_value();
}

void paintWindow(const XConnection& connection, xcb_window_t window, WindowSize size,
                 const std::function<void(cairo_t* context)>& draw) {
    const auto format = pixelFormat(connection);
    if (!format) {
        return;
    }
    const CairoSurface picture(cairo_image_surface_create(*format, size.width, size.height));
    {
        const std::unique_ptr<cairo_t, DestroyContext> context(cairo_create(picture.get()));
        draw(context.get());
    }
    cairo_surface_flush(picture.get());

    auto* const server = connection.get();
    const xcb_pixmap_t pixmap = xcb_generate_id(server);
    const xcb_gcontext_t context = xcb_generate_id(server);
    xcb_create_pixmap(server, connection.screen().root_depth, pixmap, connection.screen().root,
                      static_cast<std::uint16_t>(size.width), static_cast<std::uint16_t>(size.height));
    xcb_create_gc(server, context, pixmap, 0, nullptr);
    sendPicture(connection, pixmap, context, picture.get());
    xcb_change_window_attributes(server, window, XCB_CW_BACK_PIXMAP, &pixmap);
    xcb_clear_area(server, 0, window, 0, 0, 0, 0);
    xcb_free_gc(server, context);
    xcb_free_pixmap(server, pixmap); // the window keeps it
}

} // namespace varno
