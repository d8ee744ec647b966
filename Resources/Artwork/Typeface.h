/// The letters of the editor.
#ifndef VARNO_RESOURCES_ARTWORK_TYPEFACE_H
#define VARNO_RESOURCES_ARTWORK_TYPEFACE_H

#include <cairo.h>
#include <map>
#include <memory>
#include <string>

namespace varno {

enum class Weight { Regular, Medium, SemiBold, Bold };

/// A family of fonts, and by what its letters are to be scaled to be as wide as those of the first choice.
struct Family {
    const char* mName;
    double mScale;
};

/// In the order of preference.
inline constexpr Family kFamilies[] = {{"Inter", 1.0}, {"DejaVu Sans", 0.87}};

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
    struct Destroyer {
        void operator()(cairo_font_face_t* face) const { cairo_font_face_destroy(face); }
    };
    using Face = std::unique_ptr<cairo_font_face_t, Destroyer>;

    bool load(const Family& family);

    std::map<Weight, Face> mFaces;
    double mScale = 1.0;
};

} // namespace varno

#endif
