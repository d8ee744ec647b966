#include "Artwork/TextLine.h"

#include <cmath>
#include <stdexcept>

namespace varno {
namespace {

struct OptionsDestroyer {
    void operator()(cairo_font_options_t* options) const { cairo_font_options_destroy(options); }
};

cairo_scaled_font_t* scaledFont(cairo_t* cairo, const Typeface& typeface, const TextStyle& style) {
    const std::unique_ptr<cairo_font_options_t, OptionsDestroyer> options(cairo_font_options_create());
    cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
    cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_SLIGHT);
    cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
    cairo_matrix_t size;
    cairo_matrix_init_scale(&size, style.mSize * typeface.scale(), style.mSize * typeface.scale());
    cairo_matrix_t toImage;
    cairo_get_matrix(cairo, &toImage);
    return cairo_scaled_font_create(typeface.face(style.mWeight), &size, &toImage, options.get());
}

} // namespace

TextLine::TextLine(cairo_t* cairo, const Typeface& typeface, const TextStyle& style, const std::string& text)
    : mCairo(cairo),
      mFont(scaledFont(cairo, typeface, style)) {
    cairo_glyph_t* glyphs = nullptr;
    int count = 0;
    if (cairo_scaled_font_text_to_glyphs(mFont.get(), 0, 0, text.data(), static_cast<int>(text.size()),
                                         &glyphs, &count, nullptr, nullptr,
                                         nullptr) != CAIRO_STATUS_SUCCESS) {
        throw std::runtime_error("cannot set the text \"" + text + "\"");
    }
    mGlyphs.assign(glyphs, glyphs + count);
    cairo_glyph_free(glyphs);
    double tracking = 0.0;
    for (cairo_glyph_t& glyph : mGlyphs) {
        glyph.x += tracking;
        tracking += style.mTracking;
    }
}

void TextLine::place(Point anchor, Align align) {
    const Box box = ink();
    const double toAnchor = align == Align::Left    ? box.x
                            : align == Align::Right ? box.right()
                                                    : box.center().x;
    double x = anchor.x;
    double y = anchor.y;
    cairo_user_to_device(mCairo, &x, &y);
    y = std::round(y);
    cairo_device_to_user(mCairo, &x, &y);
    for (cairo_glyph_t& glyph : mGlyphs) {
        glyph.x += anchor.x - toAnchor;
        glyph.y = y;
    }
}

Box TextLine::ink() const {
    cairo_text_extents_t extents;
    cairo_scaled_font_glyph_extents(mFont.get(), mGlyphs.data(), static_cast<int>(mGlyphs.size()), &extents);
    const double x = mGlyphs.empty() ? 0.0 : mGlyphs.front().x;
    const double y = mGlyphs.empty() ? 0.0 : mGlyphs.front().y;
    return {x + extents.x_bearing, y + extents.y_bearing, extents.width, extents.height};
}

void TextLine::addPath() const {
    cairo_new_path(mCairo);
    cairo_set_scaled_font(mCairo, mFont.get());
    cairo_glyph_path(mCairo, mGlyphs.data(), static_cast<int>(mGlyphs.size()));
}

} // namespace varno
