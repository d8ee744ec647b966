#include "Artwork/Sheet.h"

#include "Artwork/Lettering.h"
#include "Artwork/Light.h"
#include "Artwork/Placement.h"

#include <cstdint>

namespace varno {
namespace {

// The plate that carries the dynamics section.
constexpr Box kPlate = {116, 33, 418, 313};
constexpr double kPlateCorner = 6.0;

// A random-looking number from 0 to 1 that is the same on every run.
double grain(std::uint32_t seed) {
    constexpr std::uint32_t kMask = 0xFFFF;
    seed ^= seed >> 16U;
    seed *= 0x7FEB352DU;
    seed ^= seed >> 15U;
    seed *= 0x846CA68BU;
    seed ^= seed >> 16U;
    return static_cast<double>(seed & kMask) / kMask;
}

// Fine brushing along the panel: every row of pixels a little lighter or darker than its neighbours.
void brush(Painter& painter, const Box& area) {
    constexpr double kStrength = 0.015;
    const double row = 1.0 / painter.scale();
    const int rows = static_cast<int>(area.height * painter.scale());
    for (int n = 0; n < rows; ++n) {
        const double shade = grain(static_cast<std::uint32_t>(n)) * 2.0 - 1.0;
        painter.box({area.x, area.y + n * row, area.width, row});
        painter.fill(shade > 0 ? palette::kWhite : palette::kBlack,
                     kStrength * (shade > 0 ? shade : -2 * shade));
    }
}

void drawPlate(Painter& painter) {
    recess(painter, kPlate, kPlateCorner, palette::kPlateTop);
    painter.roundedBox({kPlate.x, kPlate.y + 1, kPlate.width, kPlate.height - 1}, kPlateCorner);
    painter.fillDown(kPlate.y, kPlate.bottom(), palette::kPlateTop, palette::kPlateBottom);
}

void drawName(Painter& painter) {
    constexpr double kBaseline = 24.0;
    constexpr double kMargin = 16.0;
    painter.text("Varno-S", lettering::kProduct, {kMargin, kBaseline}, Align::Left, palette::kName);
    painter.text("SATURATION  &  DYNAMICS", lettering::kMotto, {viewBox().width - kMargin, kBaseline},
                 Align::Right, palette::kHint);
}

} // namespace

void drawSheet(Painter& painter) {
    const Box view = viewBox();
    painter.box(view);
    painter.fillDown(view.y, view.bottom(), palette::kSheetTop, palette::kSheetBottom);
    brush(painter, view);
    painter.box({view.x, view.y, view.width, 1});
    painter.fill(palette::kWhite, 0.12);
    painter.box({view.x, view.bottom() - 1, view.width, 1});
    painter.fill(palette::kBlack, 0.4);
    drawPlate(painter);
    drawName(painter);
}

} // namespace varno
