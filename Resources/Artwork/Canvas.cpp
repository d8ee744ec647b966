#include "Artwork/Canvas.h"

#include <stdexcept>

namespace varno {
namespace {

void check(cairo_status_t status, const std::string& what) {
    if (status != CAIRO_STATUS_SUCCESS) {
        throw std::runtime_error(what + ": " + cairo_status_to_string(status));
    }
}

} // namespace

Canvas::Canvas(int width, int height, int scale)
    : mSurface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width * scale, height * scale)),
      mCairo(cairo_create(mSurface.get())) {
    check(cairo_status(mCairo.get()), "cannot make an image");
    cairo_scale(mCairo.get(), scale, scale);
}

void Canvas::write(const std::filesystem::path& file) const {
    check(cairo_status(mCairo.get()), "cannot draw " + file.string());
    check(cairo_surface_write_to_png(mSurface.get(), file.c_str()), "cannot write " + file.string());
}

} // namespace varno
