#include "Artwork/Artwork.h"
#include "Tests/Resources/Artwork/Support/Bitmaps.h"
#include "Tests/Resources/Artwork/Support/Image.h"

#include <cmath>
#include <gmock/gmock.h>

namespace varno {
namespace {

using DemoGain_ViewLayout::ArtScale;
using DemoGain_ViewLayout::Bitmap;
using DemoGain_ViewLayout::kArtScales;
using test::Image;

// The files as they lie in the bundle.
class BitmapFilesTest : public testing::TestWithParam<Bitmap> {};

TEST_P(BitmapFilesTest, HasTheSizeThatTheLayoutReckonsWith) {
    const Image image = test::bundleFile(GetParam(), kArtScales[0]);
    EXPECT_EQ(GetParam().mWidth, image.width());
    EXPECT_EQ(GetParam().mHeight * GetParam().mPictures, image.height());
}

TEST_P(BitmapFilesTest, HasPicturesOfWholePixelsThatLieApart) {
    for (const ArtScale& scale : kArtScales) {
        const Image image = test::bundleFile(GetParam(), scale);
        EXPECT_EQ(std::ceil(GetParam().mWidth * scale.mFactor), image.width()) << scale.mFactor;
        const int filled = static_cast<int>(std::ceil(GetParam().mHeight * scale.mFactor));
        const int rows = image.height() / GetParam().mPictures;
        EXPECT_EQ(rows * GetParam().mPictures, image.height()) << scale.mFactor;
        const bool isAlone = scale.mFactor == 1.0 || GetParam().mPictures == 1;
        EXPECT_EQ(rows, isAlone ? filled : filled + 4) << scale.mFactor;
        for (int y = filled; y < rows; ++y) {
            for (int x = 0; x < image.width(); ++x) {
                ASSERT_EQ(0.0, image.alpha(x, y)) << scale.mFactor << ": " << x << ", " << y;
            }
        }
    }
}

// Of many pictures, the first, the middle and the last.
TEST_P(BitmapFilesTest, IsDrawnTheSameEachTime) {
    constexpr int kFew = 8;
    for (const ArtScale& scale : kArtScales) {
        const std::vector<Image>& pictures = test::bundlePictures(GetParam().mArt, scale);
        const int last = GetParam().mPictures - 1;
        for (int n = 0; n <= last; n += last < kFew ? 1 : last / 2) {
            const Canvas canvas = drawOne(GetParam(), test::typeface(), scale.mFactor, n);
            EXPECT_TRUE(pictures[static_cast<std::size_t>(n)] == Image::of(canvas))
                << scale.mFactor << ": " << n;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, BitmapFilesTest, testing::ValuesIn(DemoGain_ViewLayout::kBitmaps),
                         [](const auto& tested) {
                             std::string name = tested.param.mFile;
                             return name.substr(0, name.rfind('.'));
                         });

TEST(BitmapFileName, NamesTheScaleBeforeTheExtension) {
    const Bitmap bitmap{DemoGain_ViewLayout::Art::kKnob, "a.b.png", 1, 1, 1};
    std::string names;
    for (const ArtScale& scale : kArtScales) {
        names.append(fileName(bitmap, scale)).append(" ");
    }
    EXPECT_EQ("a.b.png a.b#0.75x.png a.b#1.25x.png a.b#1.5x.png a.b#2.0x.png a.b#3.0x.png ", names);
}

TEST(IconFiles, HaveTheirSizes) {
    for (const int size : kIconSizes) {
        const Image icon = Image::read(std::filesystem::path(VARNO_BUNDLE_RESOURCES) / iconFile(size));
        EXPECT_EQ(size, icon.width());
        EXPECT_EQ(size, icon.height());
        EXPECT_EQ(0.0, icon.alpha(0, 0)) << "the corners of the tile are round";
        EXPECT_EQ(1.0, icon.alpha(size / 2, size / 2));
    }
}

} // namespace
} // namespace varno
