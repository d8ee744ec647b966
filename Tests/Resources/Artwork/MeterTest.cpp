#include "Artwork/Controls.h"
#include "Tests/Resources/Artwork/Support/Bitmaps.h"

#include <cmath>
#include <gtest/gtest.h>

namespace varno {
namespace {

using DemoGain_ViewLayout::Art;
using test::Image;

constexpr int kSteps = DemoGain_ViewLayout::kMeterSteps;

class MeterTest : public testing::TestWithParam<DemoGain_ViewLayout::ArtScale> {
protected:
    MeterTest()
        : dark(test::bundlePictures(Art::kMeterOff, GetParam())[0]),
          lit(test::bundlePictures(Art::kMeterOn, GetParam())[0]) {}

    static double brightness(const Image& meter, int x) { return meter.luminance(x, meter.height() / 2); }

    const Image& dark;
    const Image& lit;
};

TEST_P(MeterTest, BothPicturesAreOfOneSizeAndCoverEverything) {
    EXPECT_EQ(dark.width(), lit.width());
    EXPECT_EQ(dark.height(), lit.height());
    for (int x = 0; x < dark.width(); ++x) {
        for (int y = 0; y < dark.height(); ++y) {
            ASSERT_EQ(1.0, dark.alpha(x, y));
            ASSERT_EQ(1.0, lit.alpha(x, y));
        }
    }
}

TEST_P(MeterTest, HasOneLampForEachStep) {
    constexpr double kBright = 0.15;
    int lamps = 0;
    for (int x = 1; x < lit.width(); ++x) {
        lamps += brightness(lit, x - 1) <= kBright && brightness(lit, x) > kBright ? 1 : 0;
    }
    EXPECT_EQ(kSteps, lamps);
}

TEST_P(MeterTest, CanBeCutBetweenAnyTwoLamps) {
    for (int step = 0; step <= kSteps; ++step) {
        const auto cut = static_cast<int>(std::lround(static_cast<double>(step) * lit.width() / kSteps));
        for (const int x : {cut - 1, cut}) {
            for (int y = 0; y < lit.height() && x >= 0 && x < lit.width(); ++y) {
                ASSERT_NEAR(dark.luminance(x, y), lit.luminance(x, y), 0.01) << "step " << step;
            }
        }
    }
}

TEST_P(MeterTest, LitLampsAreFarBrighterThanDarkOnes) {
    for (int step = 0; step < kSteps; ++step) {
        const int x = (2 * step + 1) * lit.width() / (2 * kSteps);
        EXPECT_GT(test::contrast(lit.color(x, lit.height() / 2), dark.color(x, dark.height() / 2)), 4.5)
            << step;
    }
}

INSTANTIATE_TEST_SUITE_P(Scale, MeterTest, testing::ValuesIn(test::kSomeScales),
                         [](const auto& tested) { return test::nameOf(tested.param); });

// Where the editor's meter begins to be lit: it draws whole steps of the dark picture from the left.
double litFrom(double reductionDB) {
    const Box meter = controlBox("METERGR1");
    const double value = 1.0 - litPart(reductionDB);
    return meter.x + std::floor(kSteps * value + 0.5) / kSteps * meter.width;
}

TEST(MeterScale, RunsFromTheRightEndToTheLeft) {
    const Box meter = controlBox("METERGR1");
    EXPECT_DOUBLE_EQ(meter.right(), meterScaleX(0));
    EXPECT_DOUBLE_EQ(meter.x, meterScaleX(32));
    for (int reductionDB = 1; reductionDB < 32; ++reductionDB) {
        EXPECT_LT(meterScaleX(reductionDB), meterScaleX(reductionDB - 1)) << reductionDB;
    }
}

TEST(MeterScale, NamesWhatTheMeterShows) {
    const double halfStep = controlBox("METERGR1").width / kSteps / 2;
    for (const int reductionDB : kMeterScaleDB) {
        EXPECT_NEAR(litFrom(reductionDB), meterScaleX(reductionDB), halfStep + 0.001) << reductionDB;
    }
}

} // namespace
} // namespace varno
