#include "Tests/Resources/Artwork/Support/BundleBitmap.h"
#include "Tests/Resources/Artwork/Support/PrintTo.h"

#include <cmath>
#include <gtest/gtest.h>
#include <tuple>

namespace varno {
namespace {

using DemoGain_ViewLayout::Art;
using test::Image;

class PresetButtonTest : public testing::TestWithParam<std::tuple<Art, int>> {
protected:
    static Art art() { return std::get<0>(GetParam()); }
    static int scale() { return std::get<1>(GetParam()); }

    static DrawnText text(int picture) {
        const Typeface typeface;
        const Canvas canvas(1, 1, scale());
        Painter painter(canvas.cairo(), typeface);
        drawPicture(painter, art(), picture);
        return painter.texts().at(0);
    }

    static double brightness(const Image& picture) {
        double sum = 0.0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                sum += picture.luminance(x, y);
            }
        }
        return sum;
    }
};

TEST_P(PresetButtonTest, SaysWhatItDoes) {
    EXPECT_EQ(art() == Art::Copy ? "Copy Preset" : "Paste Preset", text(0).mText);
    EXPECT_EQ(text(0).mText, text(1).mText);
}

TEST_P(PresetButtonTest, SinksAndDarkensWhenPressed) {
    const std::vector<Image> pictures = test::bundlePictures(art(), scale());
    EXPECT_EQ(text(0).mBox.y + 1, text(1).mBox.y);
    EXPECT_LT(brightness(pictures[1]), 0.8 * brightness(pictures[0]));
}

INSTANTIATE_TEST_SUITE_P(All, PresetButtonTest,
                         testing::Combine(testing::Values(Art::Copy, Art::Paste), testing::Values(1, 2)),
                         [](const auto& tested) {
                             return std::string(std::get<0>(tested.param) == Art::Copy ? "Copy" : "Paste") +
                                    "AtScale" + std::to_string(std::get<1>(tested.param));
                         });

} // namespace
} // namespace varno
