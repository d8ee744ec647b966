/// The base of all drawing: images in memory, shapes, lettering that is recorded, and light.
#ifndef VARNO_RESOURCES_ARTWORK_PAINTER_H
#define VARNO_RESOURCES_ARTWORK_PAINTER_H

#include "Artwork/Geometry.h"
#include "Artwork/Palette.h"
#include "Artwork/Text.h"

#include <cairo.h>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace varno {

/// An image in memory, transparent at first. Lengths are pixels at scale 1; the image has `scale` times as
/// many in each direction.
class Canvas {
public:
    /// Throws std::runtime_error where cairo cannot make it. A length that ends within a pixel has it whole.
    Canvas(double width, double height, double scale);

    /// Owned by the canvas, like the surface.
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

/// Lettering that was drawn.
struct DrawnText {
    std::string text;
    Box box; ///< Covers the ink; its place is that in the picture.
    Color color;
};

/// Draws on a cairo context, which it does not own; lengths are pixels at scale 1.
class Painter {
public:
    /// Without lettering, texts are recorded but not drawn.
    Painter(cairo_t* cairo, const Typeface& typeface, bool lettering = true)
        : mCairo(cairo),
          mTypeface(typeface),
          mLettering(lettering) {}

    cairo_t* cairo() const { return mCairo; }
    /// Pixels of the image to a unit.
    double scale() const;
    /// The edge between pixels that is nearest to a length, measured from an origin on such an edge.
    double snapped(double length) const;
    /// A box moved to where its corner lies between pixels; its size stays.
    Box placed(const Box& box) const;

    /// All of the pixels that a box touches, where its corner lies between pixels.
    Box covered(const Box& box) const;

    // Paths. Each replaces the one before.
    void box(const Box& box);
    void roundedBox(const Box& box, double radius);
    void circle(Point center, double radius);
    /// Between two of a dial's degrees.
    void dialArc(Point center, double radius, double fromDegrees, double toDegrees);
    /// From `inner` to `outer` at one of a dial's degrees.
    void dialRay(Point center, double inner, double outer, double degrees);
    void line(const std::vector<Point>& points);
    /// A line of straight parts along the pixels, about `width` wide, that no pixel holds in part.
    void crispLine(const std::vector<Point>& points, double width, Color color);

    // Each paints the current path and ends it.
    void fill(Color color, double alpha = 1.0);
    void stroke(Color color, double width, double alpha = 1.0);
    /// The gradient runs straight down.
    void fillDown(double fromY, double toY, Color top, Color bottom);
    /// Even within `inner` of the center, fading to nothing at `outer`; needs no path.
    void fillSoftly(Point center, double inner, double outer, Color color, double alpha);

    /// Draws a line of text on the baseline at `anchor`, whose x is the middle or an edge of the ink.
    void text(const std::string& text, const TextStyle& style, Point anchor, Align align, Color color);

    /// Everything that text() was called for.
    const std::vector<DrawnText>& texts() const { return mTexts; }

private:
    cairo_t* mCairo;
    const Typeface& mTypeface;
    bool mLettering;
    std::vector<DrawnText> mTexts;
};

/// Keeps what is set on the context within a scope.
class SavedState {
public:
    explicit SavedState(const Painter& painter)
        : mCairo(painter.cairo()) {
        cairo_save(mCairo);
    }
    SavedState(const SavedState&) = delete;
    SavedState& operator=(const SavedState&) = delete;
    ~SavedState() { cairo_restore(mCairo); }

private:
    cairo_t* mCairo;
};

// Light. There is one light: it falls straight down from above the top edge, so that upper edges are bright
// and shadows lie below.

/// The soft shadow of a round body that is `height` pixels high.
void castShadow(Painter& painter, Point center, double radius, double height);

/// The soft shadow of a body with rounded corners.
void castShadow(Painter& painter, const Box& body, double cornerRadius, double height);

/// A hollow in the panel: dark below its upper edge, bright on its lower one.
void recess(Painter& painter, const Box& hollow, double cornerRadius, Color floor);

/// A body with rounded corners that stands out of the panel.
void raised(Painter& painter, const Box& body, double cornerRadius, Color top, Color bottom);

} // namespace varno

#endif
