#include "Artwork/MeterScale.h"

#include "Artwork/Lettering.h"
#include "Artwork/Light.h"
#include "Artwork/Meter.h"
#include "Artwork/Placement.h"

#include <algorithm>
#include <string>

namespace varno {
namespace {

constexpr Box kUpper = controlBox("METERGR1");
constexpr Box kLower = controlBox("METERGR2");

void drawHollow(Painter& painter, const Box& meter) {
    constexpr double kRim = 2.0;
    constexpr double kCorner = 3.0;
    recess(painter, meter.inset(-kRim), kCorner, palette::kRecess);
}

// Ticks stand between the meters.
void drawTick(Painter& painter, double x) {
    constexpr double kGap = 2.0;
    constexpr double kWidth = 1.0;
    painter.box({painter.snapped(x - kWidth / 2), kUpper.bottom() + kGap, kWidth,
                 kLower.y - kUpper.bottom() - 2 * kGap});
    painter.fill(palette::kHint);
}

} // namespace

double meterScaleX(double reductionDB) {
    return kUpper.right() - std::min(litPart(reductionDB), 1.0) * kUpper.width;
}

void drawMeterScale(Painter& painter) {
    constexpr double kBaseline = kLower.bottom() + 12.0;
    constexpr double kUnitX = kUpper.x - 13.0;
    drawHollow(painter, kUpper);
    drawHollow(painter, kLower);
    for (const int reductionDB : kMeterScaleDB) {
        const double x = meterScaleX(reductionDB);
        drawTick(painter, x);
        painter.text(std::to_string(reductionDB), lettering::kValue, {x, kBaseline}, Align::Center,
                     palette::kHint);
    }
    painter.text("dB", lettering::kValue, {kUnitX, kBaseline}, Align::Right, palette::kHint);
}

} // namespace varno
