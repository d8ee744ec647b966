#include "Artwork/Artwork.h"
#include "Artwork/Placement.h"
#include "Tests/Resources/Artwork/Support/BundleBitmap.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

using test::Image;

TEST(Preview, ShowsEveryControlOnThePanel) {
    const Image preview = Image::of(drawPreview(Typeface(), 1));
    const Image panel = test::bundlePictures(DemoGain_ViewLayout::Art::Background, 1)[0];
    ASSERT_EQ(panel.width(), preview.width());
    ASSERT_EQ(panel.height(), preview.height());
    for (const auto& control : DemoGain_ViewLayout::kControls) {
        const Box box = controlBox(control);
        int changed = 0;
        for (int y = control.mY; y < static_cast<int>(box.bottom()); ++y) {
            for (int x = control.mX; x < static_cast<int>(box.right()); ++x) {
                changed += preview.luminance(x, y) != panel.luminance(x, y) ? 1 : 0;
            }
        }
        EXPECT_GT(changed, box.width * box.height / 2) << control.mID;
    }
}

TEST(Preview, IsAsLargeAsItsScale) {
    EXPECT_EQ(3 * static_cast<int>(viewBox().width), Image::of(drawPreview(Typeface(), 3)).width());
}

} // namespace
} // namespace varno
