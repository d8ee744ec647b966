/// The editor's bitmaps as parameters of tests, and as they lie in the bundle.
#ifndef VARNO_TESTS_RESOURCES_ARTWORK_SUPPORT_BITMAPS_H
#define VARNO_TESTS_RESOURCES_ARTWORK_SUPPORT_BITMAPS_H

#include "Artwork/Artwork.h"
#include "Tests/Resources/Artwork/Support/Image.h"

#include <cmath>
#include <iterator>
#include <map>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

// How test parameters are printed: the same on every run.

namespace DemoGain_ViewLayout {

inline void PrintTo(const Bitmap& bitmap, std::ostream* stream) {
    *stream << bitmap.mFile;
}

inline void PrintTo(Art art, std::ostream* stream) {
    PrintTo(BitmapOf(art), stream);
}

inline void PrintTo(const ArtScale& scale, std::ostream* stream) {
    *stream << scale.mFactor;
}

} // namespace DemoGain_ViewLayout

namespace varno {

inline void PrintTo(const Family& family, std::ostream* stream) {
    *stream << family.name;
}

} // namespace varno

namespace varno::test {

/// The fonts of a family; loaded once.
inline const Typeface& typeface(const Family& family = kFamilies[0]) {
    static std::map<std::string, Typeface> loaded;
    return loaded.try_emplace(family.name, family).first->second;
}

/// The scales of the artwork that a test looks at where all of them would take long: the first, one that no
/// whole number of pixels fits, and the largest.
inline constexpr DemoGain_ViewLayout::ArtScale kSomeScales[] = {
    DemoGain_ViewLayout::kArtScales[0], DemoGain_ViewLayout::kArtScales[2],
    DemoGain_ViewLayout::kArtScales[std::size(DemoGain_ViewLayout::kArtScales) - 1]};

/// The name of a test at a scale.
inline std::string nameOf(const DemoGain_ViewLayout::ArtScale& scale) {
    constexpr double kPercent = 100.0;
    return "At" + std::to_string(std::lround(kPercent * scale.mFactor));
}

/// The file of a bitmap at one of the scales, as it lies in the bundle.
inline Image bundleFile(const DemoGain_ViewLayout::Bitmap& bitmap,
                        const DemoGain_ViewLayout::ArtScale& scale) {
    return Image::read(std::filesystem::path(VARNO_BUNDLE_RESOURCES) / fileName(bitmap, scale));
}

/// All pictures of a bitmap at one of the scales; read once.
inline const std::vector<Image>& bundlePictures(DemoGain_ViewLayout::Art art,
                                                const DemoGain_ViewLayout::ArtScale& scale) {
    static std::map<std::pair<DemoGain_ViewLayout::Art, double>, std::vector<Image>> read;
    std::vector<Image>& pictures = read[{art, scale.mFactor}];
    if (pictures.empty()) {
        const auto& bitmap = DemoGain_ViewLayout::BitmapOf(art);
        const Image strip = bundleFile(bitmap, scale);
        const int rows = DemoGain_ViewLayout::PictureRowsAt(scale.mFactor, bitmap);
        for (int n = 0; n < bitmap.mPictures; ++n) {
            pictures.push_back(
                strip.rows(n * rows, DemoGain_ViewLayout::PixelsAt(scale.mFactor, bitmap.mHeight)));
        }
    }
    return pictures;
}

} // namespace varno::test

#endif
