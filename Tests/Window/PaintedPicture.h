/// What is drawn with cairo, as a picture.
#ifndef VARNO_TESTS_WINDOW_PAINTEDPICTURE_H
#define VARNO_TESTS_WINDOW_PAINTEDPICTURE_H

#include "Tests/Support/Picture.h"
#include "Window/Geometry.h"
#include "Window/WindowProperties.h"

#include <cstring>
#include <vector>

namespace varno::test {

/// What `draw` draws, with a context on black pixels of that size.
template<typename Draw>
Picture painted(WindowSize size, Draw draw) {
    const CairoSurface surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, size.width, size.height));
    cairo_t* const context = cairo_create(surface.get());
    draw(context);
    cairo_destroy(context);
    cairo_surface_flush(surface.get());
    std::vector<std::uint32_t> pixels;
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x) {
            std::uint32_t pixel = 0;
            std::memcpy(&pixel,
                        cairo_image_surface_get_data(surface.get()) +
                            y * cairo_image_surface_get_stride(surface.get()) + x * 4,
                        sizeof pixel);
            pixels.push_back(pixel & 0xFFFFFF);
        }
    }
    return {size.width, size.height, std::move(pixels)};
}

/// Whether a part of a picture has a pixel of a colour.
inline bool hasColour(const Picture& picture, const WindowArea& area, std::uint32_t colour) {
    for (int y = area.y; y < area.bottom(); ++y) {
        for (int x = area.x; x < area.right(); ++x) {
            if (picture.at({x, y}) == colour) {
                return true;
            }
        }
    }
    return false;
}

} // namespace varno::test

#endif
