#include "Artwork/Text.h"

#include "Artwork/Artwork.h"
#include "Tests/Resources/Artwork/Support/Bitmaps.h"
#include "Tests/Resources/Artwork/Support/Image.h"

#include <algorithm>
#include <cmath>
#include <gmock/gmock.h>
#include <map>
#include <stdexcept>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace varno {
namespace {

TEST(Typeface, HasAFaceForEachWeight) {
    const Typeface typeface;
    for (const Weight weight : {Weight::kRegular, Weight::kBold}) {
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

Lettered draw(const Typeface& typeface, const Bitmap& bitmap, int picture, double scale) {
    const Canvas with(bitmap.mWidth, bitmap.mHeight, scale);
    Painter painter(with.cairo(), typeface);
    drawPicture(painter, bitmap.mArt, picture);
    const Canvas bare(bitmap.mWidth, bitmap.mHeight, scale);
    Painter mute(bare.cairo(), typeface, false);
    drawPicture(mute, bitmap.mArt, picture);
    return {Image::of(with), Image::of(bare), painter.texts()};
}

// All pictures with lettering in a family at a scale; drawn once. The first is the panel.
const std::vector<Lettered>& letteredPictures(const Family& family, double scale) {
    static std::map<std::pair<std::string, double>, std::vector<Lettered>> drawn;
    std::vector<Lettered>& pictures = drawn[{family.name, scale}];
    if (pictures.empty()) {
        for (const Bitmap& bitmap : DemoGain_ViewLayout::kBitmaps) {
            for (int picture = 0; picture < bitmap.mPictures && bitmap.mArt != Art::kKnob; ++picture) {
                pictures.push_back(draw(test::typeface(family), bitmap, picture, scale));
            }
        }
    }
    return pictures;
}

// All lettering, in each of the fonts that may be used.
class LetteringTest : public testing::TestWithParam<std::tuple<Family, DemoGain_ViewLayout::ArtScale>> {
protected:
    static double scale() { return std::get<1>(GetParam()).mFactor; }

    static const std::vector<Lettered>& everyPicture() {
        return letteredPictures(std::get<0>(GetParam()), scale());
    }
    static const Lettered& panel() { return everyPicture().front(); }

    // The pixels that a box touches, and those less than a pixel away, within a picture.
    static DemoGain_ViewLayout::Edges pixelsOf(const Box& box, const Image& picture) {
        const auto first = [](double length) {
            return std::max(0, static_cast<int>(std::floor(length * scale())) - 1);
        };
        const auto last = [](double length, int size) {
            return std::min(size, static_cast<int>(std::ceil(length * scale())) + 1);
        };
        return {first(box.x), first(box.y), last(box.right(), picture.width()),
                last(box.bottom(), picture.height())};
    }
};

TEST_P(LetteringTest, NamesEveryControl) {
    std::vector<std::string> texts;
    for (const DrawnText& text : panel().texts) {
        texts.push_back(text.text);
    }
    EXPECT_THAT(texts, testing::IsSupersetOf({"Varno-S", "Gain", "Volume", "Attack", "Release", "Hottitude",
                                              "Mix", "High", "Pass", "Band", "Pass", "UK Mode", "Stereo",
                                              "Link", "Ratio", "Harmonic", "Select", "Auto Gain"}));
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

// Whoever clicks a name clicks its control.
TEST_P(LetteringTest, NamesLieWhereTheLayoutSays) {
    std::vector<Box> legends;
    for (const auto& control : kControls) {
        const auto edges = DemoGain_ViewLayout::LegendOf(control);
        const Box legend = {static_cast<double>(edges.mLeft), static_cast<double>(edges.mTop),
                            static_cast<double>(edges.mRight - edges.mLeft),
                            static_cast<double>(edges.mBottom - edges.mTop)};
        const SDemoGain_Parameter* const parameter = DemoGain_FindParameter(control.mID);
        if (parameter == nullptr) {
            EXPECT_EQ(0.0, legend.width) << control.mID;
            continue;
        }
        for (const char* line : parameter->mLegend) {
            EXPECT_TRUE(line == nullptr || std::ranges::any_of(panel().texts,
                                                               [&](const DrawnText& text) {
                                                                   return text.text == line &&
                                                                          legend.contains(text.box);
                                                               }))
                << control.mID << ": " << line;
        }
        for (const auto& other : kControls) {
            EXPECT_FALSE(legend.overlaps(controlBox(other))) << control.mID << " at " << other.mID;
        }
        for (const Box& other : legends) {
            EXPECT_FALSE(legend.overlaps(other)) << control.mID;
        }
        legends.push_back(legend);
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
        const int width = picture.with.width();
        std::vector<bool> reported(static_cast<std::size_t>(width * picture.with.height()));
        for (const DrawnText& text : picture.texts) {
            const auto pixels = pixelsOf(text.box, picture.with);
            for (int y = pixels.mTop; y < pixels.mBottom; ++y) {
                std::fill(reported.begin() + y * width + pixels.mLeft,
                          reported.begin() + y * width + pixels.mRight, true);
            }
        }
        for (int y = 0; y < picture.with.height(); ++y) {
            for (int x = 0; x < width; ++x) {
                ASSERT_TRUE(reported[static_cast<std::size_t>(y * width + x)] ||
                            picture.with.isSame(picture.bare, x, y))
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
            const auto pixels = pixelsOf(text.box, picture.with);
            for (int y = pixels.mTop; y < pixels.mBottom; ++y) {
                for (int x = pixels.mLeft; x < pixels.mRight; ++x) {
                    worst = std::min(worst, test::contrast(text.color, picture.bare.color(x, y)));
                    best = std::max(best, test::contrast(picture.with.color(x, y), picture.bare.color(x, y)));
                }
            }
            EXPECT_GE(worst, kLegible) << text.text << ": its colour on what is behind it";
            EXPECT_GE(best, kLegible) << text.text << ": its pixels on what is behind them";
        }
    }
}

TEST(Lettering, IsAtLeastTenPixelsHigh) {
    using namespace lettering;
    for (const TextStyle& style : {kProduct, kMotto, kTitle, kName, kValue, kKeyNumber, kKeyText}) {
        EXPECT_GE(style.size, 10.0);
    }
}

INSTANTIATE_TEST_SUITE_P(Fonts, LetteringTest,
                         testing::Combine(testing::ValuesIn(kFamilies), testing::ValuesIn(test::kSomeScales)),
                         [](const auto& tested) {
                             std::string name = std::get<0>(tested.param).name;
                             std::erase(name, ' ');
                             return name + test::nameOf(std::get<1>(tested.param));
                         });

} // namespace
} // namespace varno
