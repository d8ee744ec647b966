// The editor as the library draws it, at each size, beside the same drawn at once by the artwork's generator.
#include "Artwork/Artwork.h"
#include "Artwork/Controls.h"
#include "Artwork/EditorPicture.h"
#include "GUI/DemoGain_GUI_VST/DemoGain_ScaledBitmap.h"
#include "Tests/Source/GUI/DemoGain_GUI_VST/ViewFixture.h"
#include "Tests/Support/Picture.h"

#include "vstgui/lib/cfont.h"
#include "vstgui/lib/cgraphicstransform.h"
#include "vstgui/lib/coffscreencontext.h"

#include <fontconfig/fontconfig.h>
#include <gmock/gmock.h>

#include <cmath>
#include <cstring>
#include <filesystem>
#include <memory>
#include <ostream>
#include <string>

#include <unistd.h>

namespace DemoGain_ViewLayout {

// The same on every run.
inline void PrintTo(const ArtScale& scale, std::ostream* stream) {
    *stream << scale.mFactor;
}

} // namespace DemoGain_ViewLayout

namespace varno::test {
namespace {

using DemoGain_ViewLayout::Art;
using VSTGUI::CPoint;
using VSTGUI::CRect;

int pixelsAt(double scale, double length) {
    constexpr double kRest = 1e-6;
    return static_cast<int>(std::ceil(length * scale - kRest));
}

Picture pictureOf(const Canvas& canvas) {
    cairo_surface_t* const surface = canvas.surface();
    cairo_surface_flush(surface);
    const int width = cairo_image_surface_get_width(surface);
    const int height = cairo_image_surface_get_height(surface);
    std::vector<std::uint32_t> pixels;
    for (int y = 0; y < height; ++y) {
        const unsigned char* const row =
            cairo_image_surface_get_data(surface) +
            static_cast<std::ptrdiff_t>(y) * cairo_image_surface_get_stride(surface);
        for (int x = 0; x < width; ++x) {
            constexpr std::uint32_t kColour = 0x00FFFFFF;
            std::uint32_t pixel = 0;
            std::memcpy(&pixel, row + static_cast<std::ptrdiff_t>(x) * 4, sizeof pixel);
            pixels.push_back(pixel & kColour);
        }
    }
    return {width, height, std::move(pixels)};
}

Picture pictureOf(VSTGUI::CBitmap& bitmap) {
    const auto access = VSTGUI::owned(VSTGUI::CBitmapPixelAccess::create(&bitmap));
    const auto width = static_cast<std::uint32_t>(bitmap.getWidth());
    const auto height = static_cast<std::uint32_t>(bitmap.getHeight());
    std::vector<std::uint32_t> pixels;
    for (std::uint32_t y = 0; y < height; ++y) {
        for (std::uint32_t x = 0; x < width; ++x) {
            VSTGUI::CColor colour;
            access->setPosition(x, y);
            access->getColor(colour);
            pixels.push_back(std::uint32_t{colour.red} << 16U | std::uint32_t{colour.green} << 8U |
                             colour.blue);
        }
    }
    return {static_cast<int>(width), static_cast<int>(height), std::move(pixels)};
}

// A part of the view in pixels, with what it touches.
Area areaAt(double scale, const Box& box) {
    const int x = static_cast<int>(std::floor(box.x * scale));
    const int y = static_cast<int>(std::floor(box.y * scale));
    return {x, y, pixelsAt(scale, box.right()) - x, pixelsAt(scale, box.bottom()) - y};
}

class DemoGain_FaceTest : public ViewFixture {
protected:
    static constexpr double kReductionDB = 7.0;

    // What the frame draws at a zoom.
    Picture drawn(double zoom) {
        VSTGUI::CFrame* const frame = view->getFrame();
        frame->setZoom(zoom);
        const CPoint size(pixelsAt(zoom, viewBox().width), pixelsAt(zoom, viewBox().height));
        const auto context = VSTGUI::COffscreenContext::create(size);
        context->beginDraw();
        frame->drawRect(context, frame->getViewSize());
        context->endDraw();
        return pictureOf(*context->getBitmap());
    }

    // The same parameters, drawn at once.
    static Picture expected(double scale) {
        ShownEditor shown{.values = {}, .reductionDB = kReductionDB, .status = {}};
        for (const SDemoGain_Parameter& parameter : kDemoGain_Parameters) {
            shown.values[parameter.mIdentifier] = parameter.mDefault;
        }
        return pictureOf(drawEditor(Typeface(), scale, shown));
    }
};

class DemoGain_FaceAtScaleTest : public DemoGain_FaceTest,
                                 public testing::WithParamInterface<DemoGain_ViewLayout::ArtScale> {};

TEST_P(DemoGain_FaceAtScaleTest, IsDrawnPixelByPixel) {
    const double scale = GetParam().mFactor;
    for (const char* meter : {"METERGR1", "METERGR2"}) {
        view->GetControl(meter)->setValue(1.0F - static_cast<float>(litPart(kReductionDB)));
    }
    const Picture seen = drawn(scale);
    const Picture direct = expected(scale);
    ASSERT_EQ(seen.width(), direct.width());
    ASSERT_EQ(seen.height(), direct.height());
    // Blending may round a channel the other way.
    constexpr int kRounding = 2;
    const Area status = areaAt(scale, statusBox());
    for (int y = 0; y < seen.height(); ++y) {
        for (int x = 0; x < seen.width(); ++x) {
            const bool isStatus =
                x >= status.x && x < status.x + status.width && y >= status.y && y < status.y + status.height;
            ASSERT_TRUE(isStatus || channelDifference(seen.at({x, y}), direct.at({x, y})) <= kRounding)
                << "at " << x << ", " << y << ", in the view " << x / scale << ", " << y / scale;
        }
    }
}

// A control that moves is drawn again and again within its own pixels; nothing of it may add up or be left.
TEST_P(DemoGain_FaceAtScaleTest, IsTheSameAfterManyPartsWereDrawnAgain) {
    const double scale = GetParam().mFactor;
    VSTGUI::CFrame* const frame = view->getFrame();
    const Picture once = drawn(scale);
    const auto context = VSTGUI::COffscreenContext::create(CPoint(once.width(), once.height()));
    context->beginDraw();
    frame->drawRect(context, frame->getViewSize());
    for (const float value : {1.0F, 0.0F, 0.3F, 0.8F}) {
        for (const auto& control : DemoGain_ViewLayout::kControls) {
            VSTGUI::CControl* const shown = view->GetControl(control.mID);
            const float before = shown->getValue();
            // A meter falls slowly from what it has shown.
            const bool isMeter = control.mKind == DemoGain_ViewLayout::Kind::kMeter;
            for (const float each : {isMeter ? before : value, before}) {
                shown->setValue(each);
                // As the library invalidates it.
                CRect part = shown->getViewSize();
                frame->getTransform().transform(part);
                part.makeIntegral();
                frame->drawRect(context, part);
                // As where a window moves away from above one half.
                part.right = std::floor(part.getCenter().x);
                frame->drawRect(context, part);
            }
        }
    }
    context->endDraw();
    EXPECT_EQ(largestDifference(once, pictureOf(*context->getBitmap())), 0);
}

INSTANTIATE_TEST_SUITE_P(Scales, DemoGain_FaceAtScaleTest, testing::ValuesIn(DemoGain_ViewLayout::kArtScales),
                         [](const auto& tested) {
                             return "At" + std::to_string(std::lround(100 * tested.param.mFactor));
                         });

// Three pictures of which the middle one is green and its neighbours are red, at all scales of the artwork.
class LoudStrip {
public:
    static constexpr DemoGain_ViewLayout::Bitmap kRow = {Art::kSwitch, "loud.png", 37, 23, 3};

    LoudStrip() {
        std::filesystem::create_directories(mFolder);
        for (const auto& scale : DemoGain_ViewLayout::kArtScales) {
            const double rows = DemoGain_ViewLayout::PictureRowsAt(scale.mFactor, kRow);
            const double filled = DemoGain_ViewLayout::PixelsAt(scale.mFactor, kRow.mHeight);
            const double width = DemoGain_ViewLayout::PixelsAt(scale.mFactor, kRow.mWidth);
            const Canvas canvas(width, rows * kRow.mPictures, 1.0);
            for (int picture = 0; picture < kRow.mPictures; ++picture) {
                cairo_set_source_rgb(canvas.cairo(), picture == 1 ? 0 : 1, picture == 1 ? 1 : 0, 0);
                cairo_rectangle(canvas.cairo(), 0, rows * picture, width, filled);
                cairo_fill(canvas.cairo());
            }
            canvas.write(mFolder / fileName(kRow, scale));
        }
        UseVSTGUI(mFolder.string());
    }
    LoudStrip(const LoudStrip&) = delete;
    LoudStrip& operator=(const LoudStrip&) = delete;
    ~LoudStrip() {
        UseVSTGUI(VARNO_RESOURCES);
        std::filesystem::remove_all(mFolder);
    }

private:
    const std::filesystem::path mFolder =
        std::filesystem::temp_directory_path() / ("varno-loud-" + std::to_string(::getpid()));
};

// The middle picture of the strip, at a place of the view.
Picture drawnLoud(double zoom, const CPoint& corner) {
    constexpr const DemoGain_ViewLayout::Bitmap& kRow = LoudStrip::kRow;
    const auto bitmap = VSTGUI::makeOwned<DemoGain_ScaledBitmap>(kRow, DemoGain_ScaledBitmap::Place::kPart);
    const CPoint far = corner + CPoint(kRow.mWidth, kRow.mHeight);
    const auto context =
        VSTGUI::COffscreenContext::create(CPoint(pixelsAt(zoom, far.x) + 2, pixelsAt(zoom, far.y) + 2));
    context->beginDraw();
    {
        const VSTGUI::CDrawContext::Transform zoomed(*context,
                                                     VSTGUI::CGraphicsTransform().scale(zoom, zoom));
        bitmap->draw(context, CRect(corner, CPoint(kRow.mWidth, kRow.mHeight)), CPoint(0, kRow.mHeight),
                     1.0F);
    }
    context->endDraw();
    return pictureOf(*context->getBitmap());
}

constexpr std::uint32_t kGreen = 0x0000FF00;
constexpr std::uint32_t kRedChannel = 0x00FF0000;

TEST(DemoGain_ScaledBitmap, NoPictureShowsItsNeighbourAtAnySizeOrPlace) {
    const LoudStrip strip;
    for (const double zoom :
         {0.5, 0.6, 0.75, 0.9, 1.0, 1.1, 1.25, 1.33, 1.5, 1.75, 2.0, 2.5, 2.9, 3.0, 4.0}) {
        for (const CPoint corner : {CPoint(2, 2), CPoint(5, 7), CPoint(2.3, 2.6)}) {
            const Picture seen = drawnLoud(zoom, corner);
            int green = 0;
            for (int y = 0; y < seen.height(); ++y) {
                for (int x = 0; x < seen.width(); ++x) {
                    ASSERT_EQ(seen.at({x, y}) & kRedChannel, 0U) << zoom << ": " << x << ", " << y;
                    green += seen.at({x, y}) == kGreen ? 1 : 0;
                }
            }
            EXPECT_GE(green, (LoudStrip::kRow.mWidth * zoom - 2) * (LoudStrip::kRow.mHeight * zoom - 2))
                << zoom;
        }
    }
}

TEST(DemoGain_ScaledBitmap, BeginsAtTheNearestPixelWhereThereIsAFileForTheZoom) {
    const LoudStrip strip;
    for (const auto& scale : DemoGain_ViewLayout::kArtScales) {
        const Picture seen = drawnLoud(scale.mFactor, CPoint(5, 7));
        const auto left = static_cast<int>(std::lround(5 * scale.mFactor));
        const auto top = static_cast<int>(std::lround(7 * scale.mFactor));
        const int right = left + DemoGain_ViewLayout::PixelsAt(scale.mFactor, LoudStrip::kRow.mWidth);
        const int bottom = top + DemoGain_ViewLayout::PixelsAt(scale.mFactor, LoudStrip::kRow.mHeight);
        for (int y = 0; y < seen.height(); ++y) {
            for (int x = 0; x < seen.width(); ++x) {
                const bool isWithin = x >= left && x < right && y >= top && y < bottom;
                ASSERT_EQ(seen.at({x, y}), isWithin ? kGreen : 0U) << scale.mFactor << ": " << x << ", " << y;
            }
        }
    }
}

// The line of text is drawn by the library, everything else by the artwork.
TEST_F(DemoGain_FaceTest, TheLineOfTextHasTheArtworksTypeface) {
    const std::string face = view->GetStatusLabel()->getFont()->getName().getString();
    const std::unique_ptr<FcConfig, decltype(&FcConfigDestroy)> config(FcInitLoadConfigAndFonts(),
                                                                       &FcConfigDestroy);
    const std::unique_ptr<FcPattern, decltype(&FcPatternDestroy)> wanted(
        FcNameParse(reinterpret_cast<const FcChar8*>(face.c_str())), &FcPatternDestroy);
    FcConfigSubstitute(config.get(), wanted.get(), FcMatchPattern);
    FcDefaultSubstitute(wanted.get());
    FcResult result = FcResultNoMatch;
    const std::unique_ptr<FcPattern, decltype(&FcPatternDestroy)> found(
        FcFontMatch(config.get(), wanted.get(), &result), &FcPatternDestroy);
    FcChar8* family = nullptr;
    ASSERT_EQ(FcPatternGetString(found.get(), FC_FAMILY, 0, &family), FcResultMatch);
    EXPECT_STREQ(reinterpret_cast<const char*>(family), kFamilies[0].name) << "for " << face;
}

} // namespace
} // namespace varno::test
