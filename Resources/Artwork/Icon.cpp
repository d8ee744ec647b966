#include "Artwork/Icon.h"

#include "Artwork/Knob.h"
#include "Artwork/Light.h"

namespace varno {
namespace {

// All lengths are shares of the icon's size.
constexpr double kMargin = 1.0 / 32;
constexpr double kCorner = 0.2;
constexpr Point kCenter = {0.5, 0.52};
constexpr double kArcRadius = 0.33;
constexpr double kArcWidth = 0.095;
constexpr double kBodyRadius = 0.23;
constexpr double kPointerInner = 0.06;
constexpr double kPointerOuter = 0.21;
constexpr double kPointerWidth = 0.07;
// Where the pointer stands, in degrees.
constexpr double kTurned = 50.0;

void drawTile(Painter& painter) {
    const Box tile = Box{0, 0, 1, 1}.inset(kMargin);
    painter.roundedBox(tile, kCorner);
    painter.fillDown(tile.y, tile.bottom(), palette::kSkirtLight, palette::kPlateTop);
    painter.roundedBox(tile.inset(kMargin / 2), kCorner - kMargin / 2);
    painter.fillDown(tile.y, tile.bottom(), palette::kSheetTop, palette::kPlateTop);
}

void drawDial(Painter& painter) {
    painter.dialArc(kCenter, kArcRadius, -kKnobTravelDegrees, kKnobTravelDegrees);
    painter.stroke(palette::kRecess, kArcWidth);
    painter.dialArc(kCenter, kArcRadius, -kKnobTravelDegrees, kTurned);
    painter.stroke(palette::kLit, kArcWidth);
    castShadow(painter, kCenter, kBodyRadius, kBodyRadius / 4);
    painter.circle(kCenter, kBodyRadius);
    painter.fillDown(kCenter.y - kBodyRadius, kCenter.y + kBodyRadius, palette::kSkirtLight,
                     palette::kCapDark);
    painter.dialRay(kCenter, kPointerInner, kPointerOuter, kTurned);
    painter.stroke(palette::kName, kPointerWidth);
}

} // namespace

Canvas drawIcon(const Typeface& typeface, int size) {
    Canvas canvas(1, 1, size);
    Painter painter(canvas.cairo(), typeface);
    cairo_set_line_cap(painter.cairo(), CAIRO_LINE_CAP_ROUND);
    drawTile(painter);
    drawDial(painter);
    return canvas;
}

std::filesystem::path iconFile(int size) {
    const std::string pixels = std::to_string(size);
    return std::filesystem::path("icons") / (pixels + "x" + pixels) / "varno-s.png";
}

} // namespace varno
