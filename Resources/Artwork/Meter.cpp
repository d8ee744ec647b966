#include "Artwork/Meter.h"

#include "Artwork/Placement.h"
#include "DemoGain_MeterLevels.h"
#include "GUI/DemoGain_MeterLaw.h"

namespace varno {
namespace {

constexpr Box kPicture = pictureBox(DemoGain_ViewLayout::Art::MeterOff);
constexpr int kLamps = DemoGain_ViewLayout::kMeterSteps;
constexpr double kLampWidth = kPicture.width / kLamps;
// Half of the gap lies on either side of a lamp, so that a step of the meter ends between lamps.
constexpr double kGap = 2.0;
constexpr double kCorner = 1.5;

Box lampBox(int lamp) {
    return {lamp * kLampWidth + kGap / 2, kGap, kLampWidth - kGap, kPicture.height - 2 * kGap};
}

// The first lamps to light are at the right; the last ones tell of heavy reduction.
Color lampColor(int lamp) {
    constexpr double kMildPart = 0.5;
    const double depth = 1.0 - static_cast<double>(lamp) / (kLamps - 1);
    return depth < kMildPart
               ? palette::kLit
               : between(palette::kLit, palette::kLitHot, (depth - kMildPart) / (1.0 - kMildPart));
}

void drawFloor(Painter& painter) {
    painter.box(kPicture);
    painter.fill(palette::kRecess);
}

} // namespace

void drawDarkMeter(Painter& painter) {
    constexpr double kDark = 0.86;
    drawFloor(painter);
    for (int lamp = 0; lamp < kLamps; ++lamp) {
        painter.roundedBox(lampBox(lamp), kCorner);
        painter.fill(between(lampColor(lamp), palette::kRecess, kDark));
    }
}

void drawLitMeter(Painter& painter) {
    constexpr double kCore = 0.35;
    drawFloor(painter);
    for (int lamp = 0; lamp < kLamps; ++lamp) {
        const Box box = lampBox(lamp);
        painter.roundedBox(box, kCorner);
        painter.fillDown(box.y, box.bottom(), between(lampColor(lamp), palette::kWhite, kCore),
                         lampColor(lamp));
    }
}

double litPart(double reductionDB) {
    // The tap's factor takes the gain, which is negative where it is reduced.
    const auto gainDB = static_cast<float>(-reductionDB);
    return 1.0 - static_cast<double>(DemoGain_MeterValue(gainDB * DemoGain::kMeterPerDB));
}

} // namespace varno
