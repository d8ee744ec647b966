#include "Artwork/Canvas.h"

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

} // namespace
} // namespace varno
