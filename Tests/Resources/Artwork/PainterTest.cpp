#include "Artwork/Painter.h"

#include "Tests/Resources/Artwork/Support/Image.h"

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

TEST(Canvas, AFileThatCannotBeWrittenIsNamed) {
    const Canvas canvas(1, 1, 1);
    EXPECT_THAT([&] { canvas.write("no-such-folder/a.png"); },
                testing::ThrowsMessage<std::runtime_error>(testing::HasSubstr("no-such-folder/a.png")));
}

TEST(Painter, SnapsToThePixelsOfItsScale) {
    const Typeface typeface;
    const Canvas once(1, 1, 1);
    EXPECT_EQ(3.0, Painter(once.cairo(), typeface).snapped(3.3));
    const Canvas twice(1, 1, 2);
    EXPECT_EQ(3.5, Painter(twice.cairo(), typeface).snapped(3.3));
    EXPECT_EQ(2.0, Painter(twice.cairo(), typeface).scale());
}

TEST(Painter, RemembersTextsThatItDoesNotDraw) {
    const Typeface typeface;
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
    const Typeface typeface;
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
