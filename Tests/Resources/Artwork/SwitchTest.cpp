#include "Tests/Resources/Artwork/Support/BundleBitmap.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

namespace varno {
namespace {

using DemoGain_ViewLayout::Art;
using test::Image;

// The two pictures at one of the scales, seen without colour.
class SwitchTest : public testing::TestWithParam<int> {
protected:
    SwitchTest()
        : pictures(test::bundlePictures(Art::Switch, GetParam())) {}

    const Image& off() const { return pictures[0]; }
    const Image& on() const { return pictures[1]; }

    // The mean brightness between two shares of the width.
    static double brightness(const Image& picture, double from, double to) {
        double sum = 0.0;
        int count = 0;
        for (int x = static_cast<int>(from * picture.width()); x < static_cast<int>(to * picture.width());
             ++x) {
            for (int y = 0; y < picture.height(); ++y) {
                sum += picture.luminance(x, y);
                ++count;
            }
        }
        return sum / count;
    }

    std::vector<Image> pictures;
};

TEST_P(SwitchTest, TheSliderLiesLeftWhenOffAndRightWhenOn) {
    EXPECT_GT(brightness(off(), 0.1, 0.5), 3 * brightness(off(), 0.6, 0.95)) << "the dark free side is right";
    EXPECT_LT(brightness(on(), 0.6, 0.95), brightness(on(), 0.05, 0.4)) << "the lit free side is left";
}

TEST_P(SwitchTest, OnIsBrighterAtAGlance) {
    EXPECT_GT(brightness(on(), 0, 1), 1.5 * brightness(off(), 0, 1));
}

TEST_P(SwitchTest, TheStatesDifferInMuchOfThePictureWithoutColour) {
    constexpr double kVisible = 0.1;
    int changed = 0;
    for (int y = 0; y < off().height(); ++y) {
        for (int x = 0; x < off().width(); ++x) {
            changed += std::fabs(off().luminance(x, y) - on().luminance(x, y)) > kVisible ? 1 : 0;
        }
    }
    EXPECT_GT(changed, off().width() * off().height() / 3);
}

INSTANTIATE_TEST_SUITE_P(Scale, SwitchTest, testing::Values(1, 2));

} // namespace
} // namespace varno
