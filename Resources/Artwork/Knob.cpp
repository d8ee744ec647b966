#include "Artwork/Knob.h"

#include "Artwork/Light.h"
#include "Artwork/Placement.h"

namespace varno {
namespace {

constexpr Point kCenter = pictureBox(DemoGain_ViewLayout::Art::Knob).center();

// Radii and widths, in pixels.
constexpr double kArcRadius = 28.0;
constexpr double kChannelWidth = 5.0;
constexpr double kArcWidth = 3.0;
constexpr double kSkirtRadius = 22.0;
constexpr double kCapRadius = 17.5;
constexpr double kHeight = 5.0;
constexpr double kPointerInner = 8.0;
constexpr double kPointerOuter = 20.0;
constexpr double kPointerWidth = 2.75;

void drawChannel(Painter& painter) {
    painter.dialArc(kCenter, kArcRadius, -kKnobTravelDegrees, kKnobTravelDegrees);
    painter.stroke(palette::kRecess, kChannelWidth);
    painter.dialArc(kCenter, kArcRadius, -kKnobTravelDegrees, kKnobTravelDegrees);
    painter.stroke(palette::kUnlit, kArcWidth);
}

void drawLitArc(Painter& painter, double degrees) {
    constexpr double kGlowWidth = 6.0;
    constexpr double kGlow = 0.22;
    painter.dialArc(kCenter, kArcRadius, -kKnobTravelDegrees, degrees);
    painter.stroke(palette::kLit, kGlowWidth, kGlow);
    painter.dialArc(kCenter, kArcRadius, -kKnobTravelDegrees, degrees);
    painter.stroke(palette::kLit, kArcWidth);
}

// The grip: notches around the skirt, which turn with the pointer.
void drawNotches(Painter& painter, double degrees) {
    constexpr int kNotches = 30;
    constexpr double kSpacingDegrees = 360.0 / kNotches;
    constexpr double kWidth = 1.25;
    constexpr double kDepth = 0.45;
    for (int notch = 0; notch < kNotches; ++notch) {
        painter.dialRay(kCenter, kCapRadius, kSkirtRadius, degrees + (notch + 0.5) * kSpacingDegrees);
        painter.stroke(palette::kBlack, kWidth, kDepth);
    }
}

void drawBody(Painter& painter, double degrees) {
    castShadow(painter, kCenter, kSkirtRadius, kHeight);
    painter.circle(kCenter, kSkirtRadius);
    painter.fillDown(kCenter.y - kSkirtRadius, kCenter.y + kSkirtRadius, palette::kSkirtLight,
                     palette::kSkirtDark);
    drawNotches(painter, degrees);
    painter.circle(kCenter, kCapRadius);
    painter.fillDown(kCenter.y - kCapRadius, kCenter.y + kCapRadius, palette::kSkirtLight,
                     palette::kSkirtDark);
    painter.circle(kCenter, kCapRadius - 1);
    painter.fillDown(kCenter.y - kCapRadius, kCenter.y + kCapRadius, palette::kCapLight, palette::kCapDark);
}

void drawPointer(Painter& painter, double degrees) {
    const SavedState saved(painter);
    cairo_set_line_cap(painter.cairo(), CAIRO_LINE_CAP_ROUND);
    painter.dialRay(kCenter, kPointerInner, kPointerOuter, degrees);
    painter.stroke(palette::kName, kPointerWidth);
}

} // namespace

double knobDegrees(int picture) {
    constexpr int kLast = DemoGain_ViewLayout::BitmapOf(DemoGain_ViewLayout::Art::Knob).mPictures - 1;
    return kKnobTravelDegrees * (2.0 * picture / kLast - 1.0);
}

void drawKnob(Painter& painter, int picture) {
    const double degrees = knobDegrees(picture);
    drawChannel(painter);
    drawLitArc(painter, degrees);
    drawBody(painter, degrees);
    drawPointer(painter, degrees);
}

} // namespace varno
