#include "MeterScale.h"

#include "Light.h"
#include "Meter.h"
#include "Placement.h"

#include <algorithm>
#include <string>

namespace varno {
namespace {

constexpr TextStyle kValue = {Weight::Medium, 9.0, 0.0};
constexpr double kTickHeight = 5.0;
constexpr double kGap = 2.0;
constexpr double kBaseline = 12.0;

} // namespace

void drawMeterScale(Painter& painter) {
    constexpr Box kUpper = controlBox("METERGR1");
    constexpr Box kLower = controlBox("METERGR2");
    constexpr double kFrame = 2.0;
    for (const Box& meter : {kUpper, kLower}) {
        recess(painter, meter.inset(-kFrame), 3.0, palette::kRecess);
    }
    for (const int reductionDB : kMeterScaleDB) {
        const double x = kUpper.right() - std::min(litPart(reductionDB), 1.0) * kUpper.width;
        painter.box({x - 0.5, kUpper.bottom() + kGap, 1, kTickHeight});
        painter.fill(palette::kHint);
        painter.text(std::to_string(reductionDB), kValue, {x, kLower.bottom() + kBaseline}, Align::Center,
                     palette::kHint);
    }
    painter.text("GAIN REDUCTION  dB", {Weight::SemiBold, 8.5, 1.2},
                 {kUpper.center().x, kLower.bottom() + 22}, Align::Center, palette::kHint);
}

} // namespace varno
