#include "Tests/Resources/Artwork/Support/BundleBitmap.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace varno {
namespace {

using DemoGain_ViewLayout::Art;
using test::Image;

constexpr int kPositions = DemoGain_ViewLayout::BitmapOf(Art::Ratio).mPictures;

class RatioSwitchTest : public testing::TestWithParam<int> {
protected:
    RatioSwitchTest()
        : pictures(test::bundlePictures(Art::Ratio, GetParam())) {}

    // The mean brightness of what the mouse takes for a position.
    static double brightness(const Image& picture, int position) {
        const int width = picture.width() / kPositions;
        double sum = 0.0;
        for (int x = position * width; x < (position + 1) * width; ++x) {
            for (int y = 0; y < picture.height(); ++y) {
                sum += picture.luminance(x, y);
            }
        }
        return sum / (width * picture.height());
    }

    std::vector<Image> pictures;
};

TEST_P(RatioSwitchTest, LightsTheKeyThatIsChosen) {
    for (int chosen = 0; chosen < kPositions; ++chosen) {
        for (int position = 0; position < kPositions; ++position) {
            const double bright = brightness(pictures[static_cast<std::size_t>(chosen)], position);
            if (position == chosen) {
                EXPECT_GT(bright, 0.25) << chosen;
            } else {
                EXPECT_LT(bright, 0.1) << chosen << ", key " << position;
            }
        }
    }
}

TEST_P(RatioSwitchTest, LeavesTheOtherKeysAsTheyAre) {
    const int width = pictures[0].width() / kPositions;
    for (int x = 2 * width; x < kPositions * width; ++x) {
        for (int y = 0; y < pictures[0].height(); ++y) {
            ASSERT_EQ(pictures[0].luminance(x, y), pictures[1].luminance(x, y)) << x << ", " << y;
        }
    }
}

TEST_P(RatioSwitchTest, NumbersItsKeys) {
    const Typeface typeface;
    const Canvas canvas(1, 1, GetParam());
    Painter painter(canvas.cairo(), typeface);
    drawPicture(painter, Art::Ratio, 0);
    ASSERT_EQ(static_cast<std::size_t>(kPositions), painter.texts().size());
    const double width = DemoGain_ViewLayout::BitmapOf(Art::Ratio).mWidth / static_cast<double>(kPositions);
    for (int position = 0; position < kPositions; ++position) {
        const DrawnText& number = painter.texts()[static_cast<std::size_t>(position)];
        EXPECT_EQ(std::to_string(position + 1), number.mText);
        EXPECT_NEAR((position + 0.5) * width, number.mBox.center().x, 0.5);
    }
}

INSTANTIATE_TEST_SUITE_P(Scale, RatioSwitchTest, testing::Values(1, 2));

} // namespace
} // namespace varno
