#include "Artwork/Typeface.h"

#include <algorithm>
#include <cairo-ft.h>
#include <fontconfig/fontconfig.h>
#include <iterator>
#include <stdexcept>

namespace varno {
namespace {

struct Destroyer {
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
    void operator()(FcConfig* config) const { FcConfigDestroy(config); }
};
using Pattern = std::unique_ptr<FcPattern, Destroyer>;
using Config = std::unique_ptr<FcConfig, Destroyer>;

int fontconfigWeight(Weight weight) {
    switch (weight) {
    case Weight::Regular:
        return FC_WEIGHT_REGULAR;
    case Weight::Medium:
        return FC_WEIGHT_MEDIUM;
    case Weight::SemiBold:
        return FC_WEIGHT_DEMIBOLD;
    case Weight::Bold:
        return FC_WEIGHT_BOLD;
    }
    throw std::logic_error("unknown weight");
}

const FcChar8* asFontconfig(const char* text) {
    return reinterpret_cast<const FcChar8*>(text);
}

// The best match for the family; null where that is another family.
Pattern match(const Config& config, const char* family, Weight weight) {
    const Pattern wanted(FcPatternCreate());
    FcPatternAddString(wanted.get(), FC_FAMILY, asFontconfig(family));
    FcPatternAddInteger(wanted.get(), FC_WEIGHT, fontconfigWeight(weight));
    FcPatternAddInteger(wanted.get(), FC_SLANT, FC_SLANT_ROMAN);
    FcPatternAddInteger(wanted.get(), FC_WIDTH, FC_WIDTH_NORMAL);
    FcDefaultSubstitute(wanted.get());
    FcResult result = FcResultNoMatch;
    Pattern found(FcFontMatch(config.get(), wanted.get(), &result));
    FcChar8* name = nullptr;
    const bool same = found && FcPatternGetString(found.get(), FC_FAMILY, 0, &name) == FcResultMatch &&
                      FcStrCmpIgnoreCase(name, asFontconfig(family)) == 0;
    return same ? std::move(found) : nullptr;
}

// Names file and index alone, so that nothing else of the match decides how it is drawn.
Pattern fileOf(const Pattern& found) {
    FcChar8* file = nullptr;
    int index = 0;
    FcPatternGetString(found.get(), FC_FILE, 0, &file);
    FcPatternGetInteger(found.get(), FC_INDEX, 0, &index);
    Pattern pattern(FcPatternCreate());
    FcPatternAddString(pattern.get(), FC_FILE, file);
    FcPatternAddInteger(pattern.get(), FC_INDEX, index);
    return pattern;
}

} // namespace

Typeface::Typeface() {
    if (!std::any_of(std::begin(kFamilies), std::end(kFamilies),
                     [this](const Family& family) { return load(family); })) {
        throw std::runtime_error("no known font is installed: install Inter or DejaVu Sans");
    }
}

Typeface::Typeface(const Family& family) {
    if (!load(family)) {
        throw std::runtime_error(std::string("the font ") + family.mName + " is not installed");
    }
}

bool Typeface::load(const Family& family) {
    // Of its own: the one that is shared by everything in a program is never freed.
    const Config config(FcInitLoadConfigAndFonts());
    for (const Weight weight : {Weight::Regular, Weight::Medium, Weight::SemiBold, Weight::Bold}) {
        const Pattern found = match(config, family.mName, weight);
        if (!found) {
            return false;
        }
        mFaces[weight] = Face(cairo_ft_font_face_create_for_pattern(fileOf(found).get()));
    }
    mScale = family.mScale;
    return true;
}

} // namespace varno
