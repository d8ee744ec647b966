/// The editor's lettering: fonts, the sizes in which they are used, and lines of text.
#ifndef VARNO_RESOURCES_ARTWORK_TEXT_H
#define VARNO_RESOURCES_ARTWORK_TEXT_H

#include "Artwork/Geometry.h"

#include <cairo.h>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace varno {

enum class Weight { kRegular, kBold };

/// A family of fonts, and the factor that makes its letters about as wide as those of the first family.
struct Family {
    const char* name;
    double scale;
};

/// In the order of preference. The first is what "Arial", the face of the editor's line of text, resolves to
/// where its package is installed, and the second where it is not: lettering and line are of one hand.
inline constexpr Family kFamilies[] = {{"Liberation Sans", 1.0}, {"DejaVu Sans", 0.9}};

/// The fonts of one family, found by name: no setting of the user's desktop changes which, or how they look.
class Typeface {
public:
    /// The first of kFamilies that is installed; throws std::runtime_error where none is.
    Typeface();
    /// Throws std::runtime_error where the family is not installed.
    explicit Typeface(const Family& family);

    /// Owned by the typeface.
    cairo_font_face_t* face(Weight weight) const { return mFaces.at(weight).get(); }
    double scale() const { return mScale; }

private:
    struct FaceDestroyer {
        void operator()(cairo_font_face_t* face) const { cairo_font_face_destroy(face); }
    };
    using Face = std::unique_ptr<cairo_font_face_t, FaceDestroyer>;

    bool load(const Family& family);

    std::map<Weight, Face> mFaces;
    double mScale = 1.0;
};

struct TextStyle {
    Weight weight;
    double size;     ///< Pixels at scale 1.
    double tracking; ///< Space added between letters, in the same.
};

/// The styles that the editor's texts have.
namespace lettering {

/// The product's name.
inline constexpr TextStyle kProduct = {Weight::kBold, 19.0, 0.4};
/// What the product is, in one line.
inline constexpr TextStyle kMotto = {Weight::kRegular, 10.0, 0.3};
/// Titles of sections.
inline constexpr TextStyle kTitle = {Weight::kBold, 10.0, 0.9};
/// Names of controls.
inline constexpr TextStyle kName = {Weight::kRegular, 12.0, 0.0};
/// Values on scales.
inline constexpr TextStyle kValue = {Weight::kRegular, 10.0, 0.0};
/// Numbers and words on keys.
inline constexpr TextStyle kKeyNumber = {Weight::kBold, 11.0, 0.0};
inline constexpr TextStyle kKeyText = {Weight::kRegular, 12.0, 0.0};

/// From the middle of capitals down to their baseline, in pixels: half of their height. [any]
constexpr double halfCapitals(const TextStyle& style) {
    constexpr double kCapitalHeight = 0.716; // of the size
    return style.size * kCapitalHeight / 2;
}

} // namespace lettering

/// The part of a text that lies at its anchor.
enum class Align { kLeft, kCenter, kRight };

/// One line of text. Heights are hinted to the pixel grid, so that small letters stand on whole pixels;
/// widths are those of the font.
class TextLine {
public:
    /// Throws std::runtime_error where the text is not valid UTF-8.
    TextLine(cairo_t* cairo, const Typeface& typeface, const TextStyle& style, const std::string& text);

    /// Moves the text; the baseline comes to lie on a whole pixel of the image.
    void place(Point anchor, Align align);
    /// What is covered by ink.
    Box ink() const;
    /// Makes the letters the current path.
    void addPath() const;

private:
    struct FontDestroyer {
        void operator()(cairo_scaled_font_t* font) const { cairo_scaled_font_destroy(font); }
    };

    cairo_t* mCairo;
    std::unique_ptr<cairo_scaled_font_t, FontDestroyer> mFont;
    std::vector<cairo_glyph_t> mGlyphs;
};

} // namespace varno

#endif
