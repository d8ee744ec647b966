#include "Artwork/Artwork.h"

#include "Artwork/Controls.h"
#include "Artwork/Panel.h"

#include <stdexcept>

namespace varno {
namespace {

// The icon. All lengths are shares of its size.
constexpr double kIconMargin = 1.0 / 32;
constexpr double kIconCorner = 0.2;
constexpr Point kIconCenter = {0.5, 0.52};
constexpr double kIconArcRadius = 0.33;
constexpr double kIconArcWidth = 0.095;
constexpr double kIconBodyRadius = 0.23;
constexpr double kIconPointerInner = 0.06;
constexpr double kIconPointerOuter = 0.21;
constexpr double kIconPointerWidth = 0.07;
// Where the pointer stands, in degrees.
constexpr double kIconDegrees = 50.0;

void drawIconTile(Painter& painter) {
    const Box tile = Box{0, 0, 1, 1}.inset(kIconMargin);
    painter.roundedBox(tile, kIconCorner);
    painter.fillDown(tile.y, tile.bottom(), palette::kSkirtLight, palette::kPlateTop);
    painter.roundedBox(tile.inset(kIconMargin / 2), kIconCorner - kIconMargin / 2);
    painter.fillDown(tile.y, tile.bottom(), palette::kSheetTop, palette::kPlateTop);
}

void drawIconDial(Painter& painter) {
    painter.dialArc(kIconCenter, kIconArcRadius, -kKnobTravelDegrees, kKnobTravelDegrees);
    painter.stroke(palette::kRecess, kIconArcWidth);
    painter.dialArc(kIconCenter, kIconArcRadius, -kKnobTravelDegrees, kIconDegrees);
    painter.stroke(palette::kLit, kIconArcWidth);
    castShadow(painter, kIconCenter, kIconBodyRadius, kIconBodyRadius / 4);
    painter.circle(kIconCenter, kIconBodyRadius);
    painter.fillDown(kIconCenter.y - kIconBodyRadius, kIconCenter.y + kIconBodyRadius, palette::kSkirtLight,
                     palette::kCapDark);
    painter.dialRay(kIconCenter, kIconPointerInner, kIconPointerOuter, kIconDegrees);
    painter.stroke(palette::kName, kIconPointerWidth);
}

} // namespace

void drawPicture(Painter& painter, DemoGain_ViewLayout::Art art, int picture) {
    using DemoGain_ViewLayout::Art;
    const SavedState saved(painter);
    painter.box(painter.covered(pictureBox(art)));
    cairo_clip(painter.cairo());
    switch (art) {
    case Art::kBackground:
        return drawPanel(painter);
    case Art::kKnob:
        return drawKnob(painter, picture);
    case Art::kMeterOff:
        return drawDarkMeter(painter);
    case Art::kMeterOn:
        return drawLitMeter(painter);
    case Art::kSwitch:
        return drawSwitch(painter, picture);
    case Art::kRatio:
        return drawRatioSwitch(painter, picture);
    case Art::kCopy:
        return drawCopyButton(painter, picture);
    case Art::kPaste:
        return drawPasteButton(painter, picture);
    }
    throw std::logic_error("unknown bitmap");
}

Canvas drawOne(const DemoGain_ViewLayout::Bitmap& bitmap, const Typeface& typeface, double scale,
               int picture) {
    Canvas canvas(bitmap.mWidth, bitmap.mHeight, scale);
    Painter painter(canvas.cairo(), typeface);
    drawPicture(painter, bitmap.mArt, picture);
    return canvas;
}

Canvas drawBitmap(const DemoGain_ViewLayout::Bitmap& bitmap, const Typeface& typeface, double scale) {
    const int rows = DemoGain_ViewLayout::PictureRowsAt(scale, bitmap);
    Canvas strip(DemoGain_ViewLayout::PixelsAt(scale, bitmap.mWidth), rows * bitmap.mPictures, 1.0);
    for (int picture = 0; picture < bitmap.mPictures; ++picture) {
        const Canvas one = drawOne(bitmap, typeface, scale, picture);
        cairo_set_source_surface(strip.cairo(), one.surface(), 0, rows * picture);
        cairo_paint(strip.cairo());
    }
    return strip;
}

std::string fileName(const DemoGain_ViewLayout::Bitmap& bitmap, const DemoGain_ViewLayout::ArtScale& scale) {
    std::string name = bitmap.mFile;
    return name.insert(name.rfind('.'), scale.mMark);
}

Canvas drawIcon(const Typeface& typeface, int size) {
    Canvas canvas(1, 1, size);
    Painter painter(canvas.cairo(), typeface);
    cairo_set_line_cap(painter.cairo(), CAIRO_LINE_CAP_ROUND);
    drawIconTile(painter);
    drawIconDial(painter);
    return canvas;
}

std::filesystem::path iconFile(int size) {
    const std::string pixels = std::to_string(size);
    return std::filesystem::path("icons") / (pixels + "x" + pixels) / "varno-s.png";
}

} // namespace varno
