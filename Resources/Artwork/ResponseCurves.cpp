#include "Artwork/ResponseCurves.h"

#include "Artwork/Placement.h"

namespace varno {
namespace {

constexpr double kWidth = 24.0;
constexpr double kHeight = 7.0;
constexpr double kAbove = 8.0;
constexpr double kLineWidth = 1.25;

// A rise from the lower to the upper level, in shares of the width.
void drawRise(Painter& painter, const Box& control, double from, double to) {
    const Box area{control.center().x - kWidth / 2, control.y - kAbove - kHeight, kWidth, kHeight};
    const double middle = area.x + area.width * (from + to) / 2;
    cairo_new_path(painter.cairo());
    cairo_move_to(painter.cairo(), area.x, area.bottom());
    cairo_line_to(painter.cairo(), area.x + area.width * from, area.bottom());
    cairo_curve_to(painter.cairo(), middle, area.bottom(), middle, area.y, area.x + area.width * to, area.y);
    cairo_line_to(painter.cairo(), area.right(), area.y);
    painter.stroke(palette::kHint, kLineWidth);
}

} // namespace

void drawResponseCurves(Painter& painter) {
    drawRise(painter, controlBox("HP"), 0.0, 0.6);
    drawRise(painter, controlBox("Band"), 0.4, 1.0);
}

} // namespace varno
