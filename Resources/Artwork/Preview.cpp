#include "Artwork/Artwork.h"

#include "Artwork/Meter.h"
#include "Artwork/Placement.h"

#include <cmath>
#include <string_view>

namespace varno {
namespace {

using DemoGain_ViewLayout::Art;
using DemoGain_ViewLayout::Control;
using DemoGain_ViewLayout::Kind;

// A control's value in the preview, from 0 to 1.
struct Shown {
    std::string_view mID;
    double mValue;
};

constexpr Shown kShown[] = {
    {"Gain", 0.62}, {"Volume", 0.45}, {"Atk", 0.3},    {"Rls", 0.5},   {"Hot", 0.78}, {"Mix", 0.0},
    {"HP", 1.0},    {"ASw", 1.0},     {"LinkSw", 1.0}, {"Ratio", 0.5}, {"PR2K", 0.0},
};
constexpr double kShownReductionDB = 7.0;

double shownValue(std::string_view id) {
    for (const Shown& shown : kShown) {
        if (shown.mID == id) {
            return shown.mValue;
        }
    }
    return 0.0;
}

// As the editor's meter does it: whole steps, dark ones from the left.
void drawMeter(Painter& painter, const Box& meter) {
    constexpr int kSteps = DemoGain_ViewLayout::kMeterSteps;
    const double dark = std::floor(kSteps * (1.0 - litPart(kShownReductionDB)) + 0.5) / kSteps * meter.width;
    const SavedState saved(painter);
    drawPicture(painter, Art::MeterOff, 0);
    painter.box({dark, 0, meter.width - dark, meter.height});
    cairo_clip(painter.cairo());
    drawPicture(painter, Art::MeterOn, 0);
}

void drawControl(Painter& painter, const Control& control) {
    const SavedState saved(painter);
    const Box box = controlBox(control);
    cairo_translate(painter.cairo(), box.x, box.y);
    if (control.mKind == Kind::Meter) {
        drawMeter(painter, box);
        return;
    }
    const int last = DemoGain_ViewLayout::BitmapOf(control.mArt).mPictures - 1;
    drawPicture(painter, control.mArt, static_cast<int>(std::lround(shownValue(control.mID) * last)));
}

void drawStatus(Painter& painter) {
    constexpr Color kStatusText = rgb(0xE6E6E6);
    constexpr TextStyle kStyle = {Weight::Regular, 12.0, 0.0};
    constexpr double kMargin = 2.0;
    constexpr double kBaseline = 13.0;
    painter.box(statusBox());
    painter.fill(palette::kBlack);
    painter.text("Hottitude 78.00", kStyle, {statusBox().x + kMargin, statusBox().y + kBaseline}, Align::Left,
                 kStatusText);
}

} // namespace

Canvas drawPreview(const Typeface& typeface, int scale) {
    const Box view = viewBox();
    Canvas canvas(static_cast<int>(view.width), static_cast<int>(view.height), scale);
    Painter painter(canvas.cairo(), typeface);
    drawPicture(painter, Art::Background, 0);
    drawStatus(painter);
    for (const Control& control : DemoGain_ViewLayout::kControls) {
        drawControl(painter, control);
    }
    return canvas;
}

} // namespace varno
