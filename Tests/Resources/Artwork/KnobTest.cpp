#include "Artwork/Controls.h"
#include "Tests/Resources/Artwork/Support/Bitmaps.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <gtest/gtest.h>
#include <numbers>
#include <utility>

namespace varno {
namespace {

using DemoGain_ViewLayout::Art;
using test::Image;

constexpr int kLast = DemoGain_ViewLayout::BitmapOf(Art::kKnob).mPictures - 1;

// The strip at one of the scales; polar coordinates are in pixels at scale 1 and a dial's degrees.
class KnobTest : public testing::TestWithParam<DemoGain_ViewLayout::ArtScale> {
protected:
    KnobTest()
        : pictures(test::bundlePictures(Art::kKnob, GetParam())) {}

    static double radiusOf(int x, int y) { return std::hypot(offset(x), offset(y)); }
    static double degreesOf(double x, double y) { return std::atan2(x, -y) * 180 / std::numbers::pi; }
    // Of a pixel's middle from the knob's.
    static double offset(int pixel) {
        return (pixel + 0.5) / GetParam().mFactor - DemoGain_ViewLayout::BitmapOf(Art::kKnob).mWidth / 2.0;
    }

    // The brightness that a pixel has in most pictures: what is there without the pointer.
    double usual(int x, int y) const {
        std::vector<double> values;
        for (const Image& picture : pictures) {
            values.push_back(picture.luminance(x, y));
        }
        const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
        std::ranges::nth_element(values, middle);
        return *middle;
    }

    // Where the pointers point, measured on the cap, where nothing else differs between the pictures.
    std::vector<double> pointerDegrees() const {
        constexpr double kInner = 9.0;
        constexpr double kOuter = 16.0;
        std::vector<double> sumX(pictures.size());
        std::vector<double> sumY(pictures.size());
        for (int y = 0; y < pictures[0].height(); ++y) {
            for (int x = 0; x < pictures[0].width(); ++x) {
                if (radiusOf(x, y) < kInner || radiusOf(x, y) > kOuter) {
                    continue;
                }
                const double ground = usual(x, y);
                for (std::size_t n = 0; n < pictures.size(); ++n) {
                    const double weight = std::max(0.0, pictures[n].luminance(x, y) - ground);
                    sumX[n] += weight * offset(x);
                    sumY[n] += weight * offset(y);
                }
            }
        }
        std::vector<double> degrees;
        for (std::size_t n = 0; n < pictures.size(); ++n) {
            degrees.push_back(degreesOf(sumX[n], sumY[n]));
        }
        return degrees;
    }

    // How many degrees of the ring are lit.
    static int litDegrees(const Image& picture) {
        constexpr double kRing = 28.0;
        constexpr double kBright = 0.3;
        int lit = 0;
        for (int degrees = -180; degrees < 180; ++degrees) {
            const double angle = degrees * std::numbers::pi / 180;
            const double middle = DemoGain_ViewLayout::BitmapOf(Art::kKnob).mWidth / 2.0 * GetParam().mFactor;
            const auto x = static_cast<int>(middle + kRing * GetParam().mFactor * std::sin(angle));
            const auto y = static_cast<int>(middle - kRing * GetParam().mFactor * std::cos(angle));
            lit += picture.luminance(x, y) > kBright ? 1 : 0;
        }
        return lit;
    }

    const std::vector<Image>& pictures;
};

// WCAG's demand on what is no text.
constexpr double kMarkContrast = 3.0;

// The brightest pixel within one of a place in a picture, and the darkest.
std::pair<double, double> rangeAround(const Image& picture, double x, double y, int reach) {
    double darkest = 1.0;
    double brightest = 0.0;
    for (int dy = -reach; dy <= reach; ++dy) {
        for (int dx = -reach; dx <= reach; ++dx) {
            const double luminance =
                picture.luminance(static_cast<int>(std::floor(x)) + dx, static_cast<int>(std::floor(y)) + dy);
            darkest = std::min(darkest, luminance);
            brightest = std::max(brightest, luminance);
        }
    }
    return {darkest, brightest};
}

double contrastOf(std::pair<double, double> range) {
    constexpr double kFlare = 0.05;
    return (range.second + kFlare) / (range.first + kFlare);
}

// As it is drawn, at whatever angle, and not only as its colour is chosen.
TEST_P(KnobTest, TheTicksOfTheScalesStandOutFromThePanel) {
    constexpr double kTickRadius = 34.25;
    constexpr int kTicks = 11;
    const double scale = GetParam().mFactor;
    const Image& panel = test::bundlePictures(Art::kBackground, GetParam())[0];
    for (const auto& control : DemoGain_ViewLayout::kControls) {
        if (control.mKind != DemoGain_ViewLayout::Kind::kKnob) {
            continue;
        }
        const double x = std::round(control.mX * scale) + 31 * scale;
        const double y = std::round(control.mY * scale) + 31 * scale;
        for (int tick = 0; tick < kTicks; ++tick) {
            const double angle = (-135.0 + 27.0 * tick) * std::numbers::pi / 180;
            const auto range = rangeAround(panel, x + kTickRadius * scale * std::sin(angle),
                                           y - kTickRadius * scale * std::cos(angle),
                                           static_cast<int>(std::lround(2 * scale)));
            EXPECT_GE(contrastOf(range), kMarkContrast) << control.mID << ", tick " << tick;
        }
    }
}

TEST_P(KnobTest, ThePointerStandsOutFromTheCap) {
    constexpr double kPointerRadius = 14.0;
    const double scale = GetParam().mFactor;
    for (int n = 0; n <= kLast; ++n) {
        const double angle = knobDegrees(n) * std::numbers::pi / 180;
        const auto range = rangeAround(
            pictures[static_cast<std::size_t>(n)], (31 + kPointerRadius * std::sin(angle)) * scale,
            (31 - kPointerRadius * std::cos(angle)) * scale, static_cast<int>(std::lround(2 * scale)));
        EXPECT_GE(contrastOf(range), kMarkContrast) << n;
    }
}

TEST_P(KnobTest, PointsToItsEndsAndStraightUp) {
    constexpr double kExact = 0.25;
    const std::vector<double> degrees = pointerDegrees();
    EXPECT_NEAR(-135.0, degrees.front(), kExact);
    EXPECT_NEAR(0.0, degrees[kLast / 2], kExact);
    EXPECT_NEAR(135.0, degrees.back(), kExact);
}

TEST_P(KnobTest, TurnsBySameSteps) {
    constexpr double kClose = 0.75;
    const std::vector<double> degrees = pointerDegrees();
    for (int n = 0; n <= kLast; ++n) {
        EXPECT_NEAR(knobDegrees(n), degrees[static_cast<std::size_t>(n)], kClose) << n;
    }
    EXPECT_EQ(-135.0, knobDegrees(0));
    EXPECT_EQ(0.0, knobDegrees(65));
    EXPECT_EQ(135.0, knobDegrees(130));
}

TEST_P(KnobTest, LightsTheRingUpToThePointer) {
    constexpr double kClose = 4.0;
    for (int n = 0; n <= kLast; ++n) {
        EXPECT_NEAR(knobDegrees(n) + kKnobTravelDegrees, litDegrees(pictures[static_cast<std::size_t>(n)]),
                    kClose)
            << n;
    }
}

TEST_P(KnobTest, NeighboursCanBeDistinguished) {
    constexpr double kVisible = 0.02;
    constexpr int kEnough = 5;
    for (std::size_t n = 1; n < pictures.size(); ++n) {
        int changed = 0;
        for (int y = 0; y < pictures[n].height(); ++y) {
            for (int x = 0; x < pictures[n].width(); ++x) {
                const double change = pictures[n].luminance(x, y) - pictures[n - 1].luminance(x, y);
                changed += std::fabs(change) > kVisible ? 1 : 0;
            }
        }
        EXPECT_GE(changed, kEnough) << n;
    }
}

TEST_P(KnobTest, LeavesThePanelToBeSeenInItsCorners) {
    for (const Image& picture : pictures) {
        EXPECT_EQ(0.0, picture.alpha(0, 0));
        EXPECT_EQ(0.0, picture.alpha(picture.width() - 1, picture.height() - 1));
        EXPECT_EQ(1.0, picture.alpha(picture.width() / 2, picture.height() / 2));
    }
}

INSTANTIATE_TEST_SUITE_P(Scale, KnobTest, testing::ValuesIn(test::kSomeScales),
                         [](const auto& tested) { return test::nameOf(tested.param); });

} // namespace
} // namespace varno
