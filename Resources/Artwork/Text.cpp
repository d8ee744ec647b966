#include "Artwork/Text.h"

#include <algorithm>
#include <cairo-ft.h>
#include <cmath>
#include <fontconfig/fontconfig.h>
#include <iterator>
#include <stdexcept>

namespace varno {
namespace {

struct FontconfigDestroyer {
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
    void operator()(FcConfig* config) const { FcConfigDestroy(config); }
};
using FontPattern = std::unique_ptr<FcPattern, FontconfigDestroyer>;
using FontConfig = std::unique_ptr<FcConfig, FontconfigDestroyer>;

int fontconfigWeight(Weight weight) {
    switch (weight) {
    case Weight::kRegular:
        return FC_WEIGHT_REGULAR;
    case Weight::kBold:
        return FC_WEIGHT_BOLD;
    }
    throw std::logic_error("unknown weight");
}

const FcChar8* asFontconfig(const char* text) {
    return reinterpret_cast<const FcChar8*>(text);
}

// The best match for the family; null where that is another family.
FontPattern match(const FontConfig& config, const char* family, Weight weight) {
    const FontPattern wanted(FcPatternCreate());
    FcPatternAddString(wanted.get(), FC_FAMILY, asFontconfig(family));
    FcPatternAddInteger(wanted.get(), FC_WEIGHT, fontconfigWeight(weight));
    FcPatternAddInteger(wanted.get(), FC_SLANT, FC_SLANT_ROMAN);
    FcPatternAddInteger(wanted.get(), FC_WIDTH, FC_WIDTH_NORMAL);
    FcDefaultSubstitute(wanted.get());
    FcResult result = FcResultNoMatch;
    FontPattern found(FcFontMatch(config.get(), wanted.get(), &result));
    FcChar8* name = nullptr;
    const bool same = found && FcPatternGetString(found.get(), FC_FAMILY, 0, &name) == FcResultMatch &&
                      FcStrCmpIgnoreCase(name, asFontconfig(family)) == 0;
    return same ? std::move(found) : nullptr;
}

// Names file and index alone, so that nothing else of the match decides how it is drawn.
FontPattern fileOf(const FontPattern& found) {
    FcChar8* file = nullptr;
    int index = 0;
    FcPatternGetString(found.get(), FC_FILE, 0, &file);
    FcPatternGetInteger(found.get(), FC_INDEX, 0, &index);
    FontPattern pattern(FcPatternCreate());
    FcPatternAddString(pattern.get(), FC_FILE, file);
    FcPatternAddInteger(pattern.get(), FC_INDEX, index);
    return pattern;
}

struct FontOptionsDestroyer {
    void operator()(cairo_font_options_t* options) const { cairo_font_options_destroy(options); }
};

cairo_scaled_font_t* scaledFont(cairo_t* cairo, const Typeface& typeface, const TextStyle& style) {
    const std::unique_ptr<cairo_font_options_t, FontOptionsDestroyer> options(cairo_font_options_create());
    cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
    cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_SLIGHT);
    cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
    cairo_matrix_t size;
    cairo_matrix_init_scale(&size, style.size * typeface.scale(), style.size * typeface.scale());
    cairo_matrix_t toImage;
    cairo_get_matrix(cairo, &toImage);
    return cairo_scaled_font_create(typeface.face(style.weight), &size, &toImage, options.get());
}

} // namespace

// Fonts.

Typeface::Typeface() {
    if (!std::any_of(std::begin(kFamilies), std::end(kFamilies),
                     [this](const Family& family) { return load(family); })) {
        throw std::runtime_error("no known font is installed: install Liberation Sans or DejaVu Sans");
    }
}

Typeface::Typeface(const Family& family) {
    if (!load(family)) {
        throw std::runtime_error(std::string("the font ") + family.name + " is not installed");
    }
}

bool Typeface::load(const Family& family) {
    // Of its own: the one that is shared by everything in a program is never freed.
    const FontConfig config(FcInitLoadConfigAndFonts());
    for (const Weight weight : {Weight::kRegular, Weight::kBold}) {
        const FontPattern found = match(config, family.name, weight);
        if (!found) {
            return false;
        }
        mFaces[weight] = Face(cairo_ft_font_face_create_for_pattern(fileOf(found).get()));
    }
    mScale = family.scale;
    return true;
}

// Lines of text.

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
        tracking += style.tracking;
    }
}

void TextLine::place(Point anchor, Align align) {
    const Box box = ink();
    const double toAnchor = align == Align::kLeft    ? box.x
                            : align == Align::kRight ? box.right()
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
