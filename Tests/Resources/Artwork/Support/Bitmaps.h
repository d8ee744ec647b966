/// The editor's bitmaps as parameters of tests, and as they lie in the bundle.
#ifndef VARNO_TESTS_RESOURCES_ARTWORK_SUPPORT_BITMAPS_H
#define VARNO_TESTS_RESOURCES_ARTWORK_SUPPORT_BITMAPS_H

#include "Artwork/Artwork.h"
#include "Tests/Resources/Artwork/Support/Image.h"

#include <ostream>
#include <vector>

// How test parameters are printed: the same on every run.

namespace DemoGain_ViewLayout {

inline void PrintTo(const Bitmap& bitmap, std::ostream* stream) {
    *stream << bitmap.mFile;
}

inline void PrintTo(Art art, std::ostream* stream) {
    PrintTo(BitmapOf(art), stream);
}

} // namespace DemoGain_ViewLayout

namespace varno {

inline void PrintTo(const Family& family, std::ostream* stream) {
    *stream << family.name;
}

} // namespace varno

namespace varno::test {

/// All pictures of a bitmap at one of the scales.
inline std::vector<Image> bundlePictures(DemoGain_ViewLayout::Art art, int scale) {
    const auto& bitmap = DemoGain_ViewLayout::BitmapOf(art);
    const Image strip = Image::read(std::filesystem::path(VARNO_BUNDLE_RESOURCES) / fileName(bitmap, scale));
    std::vector<Image> pictures;
    for (int n = 0; n < bitmap.mPictures; ++n) {
        pictures.push_back(strip.picture(n, bitmap.mPictures));
    }
    return pictures;
}

} // namespace varno::test

#endif
