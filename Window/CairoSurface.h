#ifndef VARNO_WINDOW_CAIROSURFACE_H
#define VARNO_WINDOW_CAIROSURFACE_H

#include <cairo.h>
#include <memory>

namespace varno {

struct DestroySurface {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};

/// A drawing surface of cairo's, owned.
using CairoSurface = std::unique_ptr<cairo_surface_t, DestroySurface>;

} // namespace varno

#endif
