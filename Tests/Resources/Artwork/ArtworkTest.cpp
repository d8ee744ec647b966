#include "Artwork/Artwork.h"
#include "Tests/Resources/Artwork/Support/Bitmaps.h"
#include "Tests/Resources/Artwork/Support/Image.h"

#include <gmock/gmock.h>

namespace varno {
namespace {

using DemoGain_ViewLayout::Bitmap;
using test::Image;

// The files as they lie in the bundle.
class BitmapFilesTest : public testing::TestWithParam<Bitmap> {
protected:
    static Image file(int scale) {
        return Image::read(std::filesystem::path(VARNO_BUNDLE_RESOURCES) / fileName(GetParam(), scale));
    }
};

TEST_P(BitmapFilesTest, HasTheSizeThatTheLayoutReckonsWith) {
    const Image image = file(1);
    EXPECT_EQ(GetParam().mWidth, image.width());
    EXPECT_EQ(0, image.height() % GetParam().mPictures);
    EXPECT_EQ(GetParam().mHeight, image.height() / GetParam().mPictures);
}

TEST_P(BitmapFilesTest, IsExactlyTwiceTheSizeAtScaleTwo) {
    EXPECT_EQ(2 * file(1).width(), file(2).width());
    EXPECT_EQ(2 * file(1).height(), file(2).height());
}

TEST_P(BitmapFilesTest, IsDrawnTheSameEachTime) {
    const Typeface typeface;
    for (const int scale : kScales) {
        EXPECT_EQ(file(scale), Image::of(drawBitmap(GetParam(), typeface, scale))) << scale;
    }
}

INSTANTIATE_TEST_SUITE_P(All, BitmapFilesTest, testing::ValuesIn(DemoGain_ViewLayout::kBitmaps),
                         [](const auto& tested) {
                             std::string name = tested.param.mFile;
                             return name.substr(0, name.rfind('.'));
                         });

TEST(BitmapFileName, NamesTheScaleBeforeTheExtension) {
    const Bitmap bitmap{DemoGain_ViewLayout::Art::kKnob, "a.b.png", 1, 1, 1};
    EXPECT_EQ("a.b.png", fileName(bitmap, 1));
    EXPECT_EQ("a.b#2.0x.png", fileName(bitmap, 2));
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
