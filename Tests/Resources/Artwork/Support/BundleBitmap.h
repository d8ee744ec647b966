/// The editor's bitmaps as they lie in the bundle.
#ifndef VARNO_TESTS_RESOURCES_ARTWORK_SUPPORT_BUNDLEBITMAP_H
#define VARNO_TESTS_RESOURCES_ARTWORK_SUPPORT_BUNDLEBITMAP_H

#include "Artwork/Artwork.h"
#include "Tests/Resources/Artwork/Support/Image.h"

#include <vector>

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
