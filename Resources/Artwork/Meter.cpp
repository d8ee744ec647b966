#include "Artwork/Controls.h"

#include "DemoGain_MeterLaw.h"

#include <algorithm>
#include <string>

namespace varno {
namespace {

constexpr Box kMeterPicture = pictureBox(DemoGain_ViewLayout::Art::kMeterOff);
constexpr int kLamps = DemoGain_ViewLayout::kMeterSteps;
constexpr double kLampWidth = kMeterPicture.width / kLamps;
// Half of the gap lies on either side of a lamp, so that a step of the meter ends between lamps.
constexpr double kLampGap = 2.0;
constexpr double kLampCorner = 1.5;

// Its edges lie between pixels.
Box lampBox(const Painter& painter, int lamp) {
    const double margin = painter.snapped(kLampGap / 2);
    const double left = painter.snapped(lamp * kLampWidth) + margin;
    const double right = painter.snapped((lamp + 1) * kLampWidth) - margin;
    return {left, kLampGap, right - left, kMeterPicture.height - 2 * kLampGap};
}

// The first lamps to light are at the right; the last ones are lit by strong reduction.
Color lampColor(int lamp) {
    constexpr double kMildPart = 0.5;
    const double depth = 1.0 - static_cast<double>(lamp) / (kLamps - 1);
    return depth < kMildPart
               ? palette::kLit
               : between(palette::kLit, palette::kLitHot, (depth - kMildPart) / (1.0 - kMildPart));
}

void drawMeterFloor(Painter& painter) {
    painter.box(kMeterPicture);
    painter.fill(palette::kRecess);
}

// The scale of both meters.

constexpr Box kUpperMeter = controlBox("METERGR1");
constexpr Box kLowerMeter = controlBox("METERGR2");

void drawMeterHollow(Painter& painter, const Box& meter) {
    constexpr double kRim = 2.0;
    constexpr double kCorner = 3.0;
    recess(painter, meter.inset(-kRim), kCorner, palette::kRecess);
}

// Both meters show one reading: that of the left channel, which is that of both where they are linked.
void drawMeterName(Painter& painter) {
    constexpr double kBraceX = kUpperMeter.x - 7.5;
    constexpr double kTurn = 3.0;
    constexpr double kBraceWidth = 1.0;
    constexpr double kNameGap = 6.0;
    constexpr double kLineHeight = 12.0;
    const double top = kUpperMeter.center().y;
    const double bottom = kLowerMeter.center().y;
    painter.crispLine({{kBraceX + kTurn, top}, {kBraceX, top}, {kBraceX, bottom}, {kBraceX + kTurn, bottom}},
                      kBraceWidth, palette::kLine);
    const double first = (top + bottom - kLineHeight) / 2 + lettering::halfCapitals(lettering::kValue);
    const auto write = [&](const char* text, double y) {
        painter.text(text, lettering::kValue, {kBraceX - kNameGap, y}, Align::kRight, palette::kName);
    };
    write("left,", first);
    write("or linked", first + kLineHeight);
}

// Ticks stand between the meters.
void drawMeterTick(Painter& painter, double x) {
    constexpr double kGap = 2.0;
    constexpr double kWidth = 1.0;
    painter.box({painter.snapped(x - kWidth / 2), kUpperMeter.bottom() + kGap, kWidth,
                 kLowerMeter.y - kUpperMeter.bottom() - 2 * kGap});
    painter.fill(palette::kHint);
}

} // namespace

void drawDarkMeter(Painter& painter) {
    constexpr double kDark = 0.86;
    drawMeterFloor(painter);
    for (int lamp = 0; lamp < kLamps; ++lamp) {
        painter.roundedBox(lampBox(painter, lamp), kLampCorner);
        painter.fill(between(lampColor(lamp), palette::kRecess, kDark));
    }
}

void drawLitMeter(Painter& painter) {
    constexpr double kCore = 0.35;
    drawMeterFloor(painter);
    for (int lamp = 0; lamp < kLamps; ++lamp) {
        const Box box = lampBox(painter, lamp);
        painter.roundedBox(box, kLampCorner);
        painter.fillDown(box.y, box.bottom(), between(lampColor(lamp), palette::kWhite, kCore),
                         lampColor(lamp));
    }
}

double litPart(double reductionDB) {
    // The tap's factor takes the gain, which is negative where it is reduced.
    const auto gainDB = static_cast<float>(-reductionDB);
    return 1.0 - static_cast<double>(DemoGain_MeterValue(gainDB * DemoGain::kMeterPerDB));
}

double meterScaleX(double reductionDB) {
    return kUpperMeter.right() - std::min(litPart(reductionDB), 1.0) * kUpperMeter.width;
}

void drawMeterScale(Painter& painter) {
    constexpr double kBaseline = kLowerMeter.bottom() + 12.0;
    constexpr double kUnitX = kUpperMeter.x - 13.0;
    drawMeterHollow(painter, painter.placed(kUpperMeter));
    drawMeterHollow(painter, painter.placed(kLowerMeter));
    drawMeterName(painter);
    for (const int reductionDB : kMeterScaleDB) {
        const double x = meterScaleX(reductionDB);
        drawMeterTick(painter, x);
        painter.text(std::to_string(reductionDB), lettering::kValue, {x, kBaseline}, Align::kCenter,
                     palette::kHint);
    }
    painter.text("dB", lettering::kValue, {kUnitX, kBaseline}, Align::kRight, palette::kHint);
}

} // namespace varno
