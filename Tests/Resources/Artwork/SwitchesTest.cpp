#include "Tests/Resources/Artwork/Support/Bitmaps.h"

#include <cmath>
#include <gtest/gtest.h>
#include <string>
#include <tuple>
#include <vector>

namespace varno {
namespace {

using DemoGain_ViewLayout::Art;
using test::Image;

// The two pictures at one of the scales, seen without colour.
class SwitchTest : public testing::TestWithParam<int> {
protected:
    SwitchTest()
        : pictures(test::bundlePictures(Art::kSwitch, GetParam())) {}

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

constexpr int kPositions = DemoGain_ViewLayout::BitmapOf(Art::kRatio).mPictures;

class RatioSwitchTest : public testing::TestWithParam<int> {
protected:
    RatioSwitchTest()
        : pictures(test::bundlePictures(Art::kRatio, GetParam())) {}

    // The mean brightness of the area in which a click chooses a position.
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
    drawPicture(painter, Art::kRatio, 0);
    ASSERT_EQ(static_cast<std::size_t>(kPositions), painter.texts().size());
    const double width = DemoGain_ViewLayout::BitmapOf(Art::kRatio).mWidth / static_cast<double>(kPositions);
    for (int position = 0; position < kPositions; ++position) {
        const DrawnText& number = painter.texts()[static_cast<std::size_t>(position)];
        EXPECT_EQ(std::to_string(position + 1), number.text);
        EXPECT_NEAR((position + 0.5) * width, number.box.center().x, 0.5);
    }
}

INSTANTIATE_TEST_SUITE_P(Scale, RatioSwitchTest, testing::Values(1, 2));

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
    EXPECT_EQ(art() == Art::kCopy ? "Copy Preset" : "Paste Preset", text(0).text);
    EXPECT_EQ(text(0).text, text(1).text);
}

TEST_P(PresetButtonTest, SinksAndDarkensWhenPressed) {
    const std::vector<Image> pictures = test::bundlePictures(art(), scale());
    EXPECT_EQ(text(0).box.y + 1, text(1).box.y);
    EXPECT_LT(brightness(pictures[1]), 0.8 * brightness(pictures[0]));
}

INSTANTIATE_TEST_SUITE_P(All, PresetButtonTest,
                         testing::Combine(testing::Values(Art::kCopy, Art::kPaste), testing::Values(1, 2)),
                         [](const auto& tested) {
                             return std::string(std::get<0>(tested.param) == Art::kCopy ? "Copy" : "Paste") +
                                    "AtScale" + std::to_string(std::get<1>(tested.param));
                         });

} // namespace
} // namespace varno
