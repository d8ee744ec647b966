#include "Artwork/Painter.h"

#include "Tests/Resources/Artwork/Support/Bitmaps.h"
#include "Tests/Resources/Artwork/Support/Image.h"

#include <algorithm>
#include <cmath>
#include <gmock/gmock.h>
#include <stdexcept>

namespace varno {
namespace {

TEST(Canvas, StartsTransparentAtItsScale) {
    const test::Image image = test::Image::of(Canvas(3, 2, 4));
    EXPECT_EQ(12, image.width());
    EXPECT_EQ(8, image.height());
    EXPECT_EQ(0.0, image.alpha(11, 7));
}

TEST(Canvas, HasAPixelForEachPartOfOne) {
    const test::Image image = test::Image::of(Canvas(690, 62, 1.25));
    EXPECT_EQ(863, image.width());
    EXPECT_EQ(78, image.height());
    EXPECT_EQ(23, test::Image::of(Canvas(1, 2.3, 10)).height()) << "a product of 23.0000000000001 or so";
}

TEST(Canvas, AFileThatCannotBeWrittenIsNamed) {
    const Canvas canvas(1, 1, 1);
    EXPECT_THAT([&] { canvas.write("no-such-folder/a.png"); },
                testing::ThrowsMessage<std::runtime_error>(testing::HasSubstr("no-such-folder/a.png")));
}

TEST(Painter, SnapsToThePixelsOfItsScale) {
    const Typeface& typeface = test::typeface();
    const Canvas once(1, 1, 1);
    EXPECT_EQ(3.0, Painter(once.cairo(), typeface).snapped(3.3));
    const Canvas twice(1, 1, 2);
    EXPECT_EQ(3.5, Painter(twice.cairo(), typeface).snapped(3.3));
    EXPECT_EQ(2.0, Painter(twice.cairo(), typeface).scale());
}

TEST(Painter, PutsABoxOnWholePixels) {
    const Canvas canvas(1, 1, 1.25);
    const Box box = Painter(canvas.cairo(), test::typeface()).placed({161, 77, 36, 24});
    EXPECT_DOUBLE_EQ(201, box.x * 1.25);
    EXPECT_DOUBLE_EQ(96, box.y * 1.25);
    EXPECT_EQ(36, box.width);
    EXPECT_EQ(24, box.height);
}

// Each pixel is the line's or not, at every scale.
TEST(Painter, DrawsCrispLines) {
    for (const DemoGain_ViewLayout::ArtScale& scale : DemoGain_ViewLayout::kArtScales) {
        const Canvas canvas(40, 30, scale.mFactor);
        Painter painter(canvas.cairo(), test::typeface());
        painter.crispLine({{5.2, 4.9}, {30.4, 4.9}, {30.4, 25}}, 1, palette::kWhite);
        const test::Image image = test::Image::of(canvas);
        int whole = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                ASSERT_TRUE(image.alpha(x, y) == 0.0 || image.alpha(x, y) == 1.0) << scale.mFactor;
                whole += image.alpha(x, y) == 1.0 ? 1 : 0;
            }
        }
        const double length = (25.2 + 20.1) * scale.mFactor;
        EXPECT_NEAR(std::max(1.0, std::round(scale.mFactor)) * length, whole, 15) << scale.mFactor;
    }
}

TEST(Painter, RemembersTextsThatItDoesNotDraw) {
    const Typeface& typeface = test::typeface();
    const Canvas canvas(40, 20, 1);
    Painter mute(canvas.cairo(), typeface, false);
    mute.text("Mix", {Weight::kBold, 12.0, 0.0}, {20, 15}, Align::kCenter, palette::kWhite);
    ASSERT_EQ(1U, mute.texts().size());
    EXPECT_EQ("Mix", mute.texts()[0].text);
    EXPECT_NEAR(20.0, mute.texts()[0].box.center().x, 1e-6);
    EXPECT_EQ(test::Image::of(Canvas(40, 20, 1)), test::Image::of(canvas));
}

TEST(Painter, PutsTheInkAtTheAnchor) {
    constexpr TextStyle kStyle = {Weight::kBold, 12.0, 0.5};
    const Typeface& typeface = test::typeface();
    const Canvas canvas(40, 20, 2);
    Painter painter(canvas.cairo(), typeface);
    painter.text("H", kStyle, {10, 15.2}, Align::kLeft, palette::kWhite);
    painter.text("H", kStyle, {30, 15.2}, Align::kRight, palette::kWhite);
    EXPECT_NEAR(10.0, painter.texts()[0].box.x, 1e-6);
    EXPECT_NEAR(30.0, painter.texts()[1].box.right(), 1e-6);
    EXPECT_EQ(15.0, painter.texts()[0].box.bottom()) << "the baseline lies between pixels";
}

} // namespace
} // namespace varno
