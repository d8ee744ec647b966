#include "Artwork/Text.h"

#include "Artwork/Artwork.h"
#include "Tests/Resources/Artwork/Support/Bitmaps.h"
#include "Tests/Resources/Artwork/Support/Image.h"

#include <cmath>
#include <gmock/gmock.h>
#include <stdexcept>
#include <tuple>

namespace varno {
namespace {

TEST(Typeface, HasAFaceForEachWeight) {
    const Typeface typeface;
    for (const Weight weight : {Weight::kRegular, Weight::kMedium, Weight::kSemiBold, Weight::kBold}) {
        EXPECT_EQ(CAIRO_STATUS_SUCCESS, cairo_font_face_status(typeface.face(weight)));
    }
    EXPECT_EQ(kFamilies[0].scale, typeface.scale());
}

TEST(Typeface, AFontThatIsMissingIsNamedAndNotReplaced) {
    const auto load = [] { Typeface{Family{"No Such Family", 1.0}}; };
    EXPECT_THAT(load, testing::ThrowsMessage<std::runtime_error>(testing::HasSubstr("No Such Family")));
}

using DemoGain_ViewLayout::Art;
using DemoGain_ViewLayout::Bitmap;
using DemoGain_ViewLayout::kControls;
using test::Image;

// WCAG's demand on text.
constexpr double kLegible = 4.5;

// A picture with and without its lettering.
struct Lettered {
    Image with;
    Image bare;
    std::vector<DrawnText> texts;
};

Lettered draw(const Typeface& typeface, const Bitmap& bitmap, int picture, int scale) {
    const Canvas with(bitmap.mWidth, bitmap.mHeight, scale);
    Painter painter(with.cairo(), typeface);
    drawPicture(painter, bitmap.mArt, picture);
    const Canvas bare(bitmap.mWidth, bitmap.mHeight, scale);
    Painter mute(bare.cairo(), typeface, false);
    drawPicture(mute, bitmap.mArt, picture);
    return {Image::of(with), Image::of(bare), painter.texts()};
}

// All lettering, in each of the fonts that may be used and at both scales.
class LetteringTest : public testing::TestWithParam<std::tuple<Family, int>> {
protected:
    LetteringTest()
        : typeface(std::get<0>(GetParam())) {}

    static int scale() { return std::get<1>(GetParam()); }

    Lettered panel() const {
        return draw(typeface, DemoGain_ViewLayout::BitmapOf(Art::kBackground), 0, scale());
    }

    std::vector<Lettered> everyPicture() const {
        std::vector<Lettered> pictures;
        for (const Bitmap& bitmap : DemoGain_ViewLayout::kBitmaps) {
            for (int picture = 0; picture < bitmap.mPictures && bitmap.mArt != Art::kKnob; ++picture) {
                pictures.push_back(draw(typeface, bitmap, picture, scale()));
            }
        }
        return pictures;
    }

    // Whether a pixel lies within a box, or less than a pixel away.
    static bool touches(const Box& box, int x, int y) {
        const double size = 1.0 / scale();
        return box.inset(-size).overlaps({x * size, y * size, size, size});
    }

    Typeface typeface;
};

TEST_P(LetteringTest, NamesEveryControl) {
    std::vector<std::string> texts;
    for (const DrawnText& text : panel().texts) {
        texts.push_back(text.text);
    }
    EXPECT_THAT(
        texts, testing::IsSupersetOf({"Varno-S", "Gain", "Volume",   "Attack", "Release", "Hottitude", "Mix",
                                      "High",    "Pass", "Band",     "Pass",   "UK Mode", "Stereo",    "Link",
                                      "Ratio",   "L",    "Harmonic", "Select", "R",       "Auto Gain"}));
}

TEST_P(LetteringTest, KeepsOffTheControlsAndTheEdges) {
    constexpr double kEdge = 6.0;
    constexpr double kAir = 2.0;
    for (const DrawnText& text : panel().texts) {
        EXPECT_TRUE(viewBox().inset(kEdge).contains(text.box)) << text.text;
        EXPECT_FALSE(statusBox().inset(-kAir).overlaps(text.box)) << text.text;
        for (const auto& control : kControls) {
            EXPECT_FALSE(controlBox(control).inset(-kAir).overlaps(text.box))
                << text.text << " at " << control.mID;
        }
    }
}

TEST_P(LetteringTest, TextsKeepApart) {
    constexpr double kAir = 1.0;
    for (const Lettered& picture : everyPicture()) {
        for (std::size_t i = 0; i < picture.texts.size(); ++i) {
            for (std::size_t j = i + 1; j < picture.texts.size(); ++j) {
                EXPECT_FALSE(picture.texts[i].box.inset(-kAir).overlaps(picture.texts[j].box))
                    << picture.texts[i].text << " and " << picture.texts[j].text;
            }
        }
    }
}

TEST_P(LetteringTest, IsInkWhereItIsReportedAndNowhereElse) {
    for (const Lettered& picture : everyPicture()) {
        for (int y = 0; y < picture.with.height(); ++y) {
            for (int x = 0; x < picture.with.width(); ++x) {
                const bool reported = std::ranges::any_of(
                    picture.texts, [&](const DrawnText& text) { return touches(text.box, x, y); });
                ASSERT_TRUE(reported || picture.with.luminance(x, y) == picture.bare.luminance(x, y))
                    << x << ", " << y;
            }
        }
    }
}

TEST_P(LetteringTest, StandsOutFromAllThatIsBehindIt) {
    for (const Lettered& picture : everyPicture()) {
        for (const DrawnText& text : picture.texts) {
            double worst = test::contrast(palette::kBlack, palette::kWhite);
            double best = 0.0;
            for (int y = 0; y < picture.with.height(); ++y) {
                for (int x = 0; x < picture.with.width(); ++x) {
                    if (touches(text.box, x, y)) {
                        worst = std::min(worst, test::contrast(text.color, picture.bare.color(x, y)));
                        best = std::max(best,
                                        test::contrast(picture.with.color(x, y), picture.bare.color(x, y)));
                    }
                }
            }
            EXPECT_GE(worst, kLegible) << text.text << ": its colour on what is behind it";
            EXPECT_GE(best, kLegible) << text.text << ": its pixels on what is behind them";
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Fonts, LetteringTest,
                         testing::Combine(testing::ValuesIn(kFamilies), testing::Values(1, 2)),
                         [](const auto& tested) {
                             std::string name = std::get<0>(tested.param).name;
                             std::erase(name, ' ');
                             return name + "AtScale" + std::to_string(std::get<1>(tested.param));
                         });

} // namespace
} // namespace varno
