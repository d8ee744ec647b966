/// One line of text.
#ifndef VARNO_RESOURCES_ARTWORK_TEXTLINE_H
#define VARNO_RESOURCES_ARTWORK_TEXTLINE_H

#include "Artwork/Geometry.h"
#include "Artwork/Typeface.h"

#include <cairo.h>
#include <memory>
#include <string>
#include <vector>

namespace varno {

/// Size in pixels at scale 1, tracking in the same between letters.
struct TextStyle {
    Weight mWeight;
    double mSize;
    double mTracking;
};

enum class Align { Left, Center, Right };

/// Heights are hinted to the pixel grid, so that small letters stand on whole pixels; widths are the font's
/// own, so that words keep their rhythm.
class TextLine {
public:
    TextLine(cairo_t* cairo, const Typeface& typeface, const TextStyle& style, const std::string& text);

    /// Moves the text; the baseline comes to lie on a whole pixel of the image.
    void place(Point anchor, Align align);
    /// What is covered by ink.
    Box ink() const;
    /// Makes the letters the current path.
    void addPath() const;

private:
    struct Destroyer {
        void operator()(cairo_scaled_font_t* font) const { cairo_scaled_font_destroy(font); }
    };

    cairo_t* mCairo;
    std::unique_ptr<cairo_scaled_font_t, Destroyer> mFont;
    std::vector<cairo_glyph_t> mGlyphs;
};

} // namespace varno

#endif
