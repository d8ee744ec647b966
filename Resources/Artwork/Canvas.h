/// An image in memory.
#ifndef VARNO_RESOURCES_ARTWORK_CANVAS_H
#define VARNO_RESOURCES_ARTWORK_CANVAS_H

#include <cairo.h>
#include <filesystem>
#include <memory>

namespace varno {

/// Transparent at first. Lengths are pixels at scale 1; the image has `scale` times as many in each
/// direction.
class Canvas {
public:
    /// Throws std::runtime_error where cairo cannot make it.
    Canvas(int width, int height, int scale);

    cairo_t* cairo() const { return mCairo.get(); }
    cairo_surface_t* surface() const { return mSurface.get(); }

    /// Writes a PNG; throws std::runtime_error, naming the file, where that fails.
    void write(const std::filesystem::path& file) const;

private:
    struct Destroyer {
        void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
        void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    };
    std::unique_ptr<cairo_surface_t, Destroyer> mSurface;
    std::unique_ptr<cairo_t, Destroyer> mCairo;
};

} // namespace varno

#endif
