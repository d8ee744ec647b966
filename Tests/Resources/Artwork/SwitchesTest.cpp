#include "DemoGain_Coefficients.h"
#include "Tests/Resources/Artwork/Support/Bitmaps.h"

#include <algorithm>
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
class SwitchTest : public testing::TestWithParam<DemoGain_ViewLayout::ArtScale> {
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

    const std::vector<Image>& pictures;
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

// The slider and the mark that it leaves free are what a state is read from.
TEST_P(SwitchTest, TheMarksStandOutFromTheHollow) {
    constexpr double kMark = 3.0; // WCAG's demand on what is no text
    for (const Image& picture : pictures) {
        double darkest = 1.0;
        double brightest = 0.0;
        const int left = &picture == &on() ? 0 : picture.width() / 2;
        for (int x = left + picture.width() / 6; x < left + picture.width() / 3; ++x) {
            for (int y = picture.height() / 4; y < picture.height() * 3 / 4; ++y) {
                darkest = std::min(darkest, picture.luminance(x, y));
                brightest = std::max(brightest, picture.luminance(x, y));
            }
        }
        EXPECT_GE((brightest + 0.05) / (darkest + 0.05), kMark);
    }
}

// On the lit hollow the slider has a dark edge: both are bright.
TEST_P(SwitchTest, ADarkEdgeLiesBetweenTheSliderAndTheLitHollow) {
    constexpr double kEdge = 3.0;
    const int y = on().height() / 2;
    double darkest = 1.0;
    for (int x = on().width() * 2 / 5; x < on().width() * 3 / 5; ++x) {
        darkest = std::min(darkest, on().luminance(x, y));
    }
    EXPECT_GE((on().luminance(on().width() / 8, y) + 0.05) / (darkest + 0.05), kEdge);
}

INSTANTIATE_TEST_SUITE_P(Scale, SwitchTest, testing::ValuesIn(test::kSomeScales),
                         [](const auto& tested) { return test::nameOf(tested.param); });

constexpr int kPositions = DemoGain_ViewLayout::BitmapOf(Art::kRatio).mPictures;

class RatioSwitchTest : public testing::TestWithParam<DemoGain_ViewLayout::ArtScale> {
protected:
    RatioSwitchTest()
        : pictures(test::bundlePictures(Art::kRatio, GetParam())) {}

    // The mean brightness of the area in which a click chooses a position.
    static double brightness(const Image& picture, int position) {
        double sum = 0.0;
        int count = 0;
        for (int x = position * picture.width() / kPositions;
             x < (position + 1) * picture.width() / kPositions; ++x) {
            for (int y = 0; y < picture.height(); ++y) {
                sum += picture.luminance(x, y);
                ++count;
            }
        }
        return sum / count;
    }

    const std::vector<Image>& pictures;
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
    for (int x = 2 * pictures[0].width() / kPositions + 1; x < pictures[0].width(); ++x) {
        for (int y = 0; y < pictures[0].height(); ++y) {
            ASSERT_EQ(pictures[0].luminance(x, y), pictures[1].luminance(x, y)) << x << ", " << y;
        }
    }
}

// The height of the ink in a column of a key, in pixels from its upper edge; below its number.
double inkHeight(const Image& picture, int position, double share, double scale) {
    constexpr double kKeyWidth = 29.0;
    constexpr double kFirstX = 5.0;
    constexpr double kPlotWidth = 19.0;
    const auto x = static_cast<int>((position * kKeyWidth + kFirstX + share * kPlotWidth) * scale);
    double weight = 0.0;
    double sum = 0.0;
    for (int y = static_cast<int>(14 * scale); y < static_cast<int>(27 * scale); ++y) {
        const double ink = picture.luminance(x, y) > 0.3 ? picture.luminance(x, y) : 0.0;
        weight += ink;
        sum += ink * (y + 0.5) / scale;
    }
    return weight > 0.0 ? sum / weight : 0.0;
}

// What comes out of a level from -24 dB at the left end to +3 dB at the right one, from -27 dB at the lower
// end to -3 dB at the upper one.
TEST_P(RatioSwitchTest, DrawsTheCurveOfEachKey) {
    constexpr double kClose = 0.75;
    for (int position = 0; position < kPositions; ++position) {
        const DemoGain::GainCurve curve =
            DemoGain_ComputeCurve({0.5F, 0.5F, 0.0F, static_cast<float>(position) / 7.0F});
        const Image& picture = pictures[position == 0 ? 1 : 0];
        for (const double share : {0.3, 0.5, 0.7, 0.9}) {
            const double out = curve.settledLevel(static_cast<float>(-24.0 + 27.0 * share));
            const double height = 6.0 + 18.0 * (-3.0 - out) / 24.0;
            EXPECT_NEAR(height, inkHeight(picture, position, share, GetParam().mFactor), kClose)
                << "curve " << position + 1 << " at " << share;
        }
    }
}

TEST_P(RatioSwitchTest, NumbersItsKeys) {
    const Canvas canvas(1, 1, GetParam().mFactor);
    Painter painter(canvas.cairo(), test::typeface());
    drawPicture(painter, Art::kRatio, 0);
    ASSERT_EQ(static_cast<std::size_t>(kPositions), painter.texts().size());
    const double width = DemoGain_ViewLayout::BitmapOf(Art::kRatio).mWidth / static_cast<double>(kPositions);
    for (int position = 0; position < kPositions; ++position) {
        const DrawnText& number = painter.texts()[static_cast<std::size_t>(position)];
        EXPECT_EQ(std::to_string(position + 1), number.text);
        EXPECT_LT(position * width + 1, number.box.x);
        EXPECT_GT((position + 1) * width - 1, number.box.right());
    }
}

INSTANTIATE_TEST_SUITE_P(Scale, RatioSwitchTest, testing::ValuesIn(test::kSomeScales),
                         [](const auto& tested) { return test::nameOf(tested.param); });

class PresetButtonTest : public testing::TestWithParam<std::tuple<Art, DemoGain_ViewLayout::ArtScale>> {
protected:
    static Art art() { return std::get<0>(GetParam()); }
    static const DemoGain_ViewLayout::ArtScale& scale() { return std::get<1>(GetParam()); }

    static DrawnText text(int picture) {
        const Canvas canvas(1, 1, scale().mFactor);
        Painter painter(canvas.cairo(), test::typeface());
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
    EXPECT_NEAR(text(0).box.y + 1, text(1).box.y, 0.5 / scale().mFactor) << "on whole pixels";
    EXPECT_LT(brightness(pictures[1]), 0.8 * brightness(pictures[0]));
}

INSTANTIATE_TEST_SUITE_P(All, PresetButtonTest,
                         testing::Combine(testing::Values(Art::kCopy, Art::kPaste),
                                          testing::ValuesIn(test::kSomeScales)),
                         [](const auto& tested) {
                             return std::string(std::get<0>(tested.param) == Art::kCopy ? "Copy" : "Paste") +
                                    test::nameOf(std::get<1>(tested.param));
                         });

} // namespace
} // namespace varno
