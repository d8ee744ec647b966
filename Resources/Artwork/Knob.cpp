#include "Artwork/Controls.h"

#include "DemoGain_ValueText.h"

#include <cmath>
#include <string>

namespace varno {
namespace {

constexpr Point kKnobCenter = pictureBox(DemoGain_ViewLayout::Art::kKnob).center();

// Radii and widths, in pixels.
constexpr double kKnobArcRadius = 28.0;
constexpr double kChannelWidth = 5.0;
constexpr double kKnobArcWidth = 3.0;
constexpr double kSkirtRadius = 22.0;
constexpr double kCapRadius = 17.5;
constexpr double kKnobHeight = 5.0;
constexpr double kKnobPointerInner = 8.0;
constexpr double kKnobPointerOuter = 20.0;
constexpr double kKnobPointerWidth = 2.75;

void drawChannel(Painter& painter) {
    painter.dialArc(kKnobCenter, kKnobArcRadius, -kKnobTravelDegrees, kKnobTravelDegrees);
    painter.stroke(palette::kRecess, kChannelWidth);
    painter.dialArc(kKnobCenter, kKnobArcRadius, -kKnobTravelDegrees, kKnobTravelDegrees);
    painter.stroke(palette::kUnlit, kKnobArcWidth);
}

void drawLitArc(Painter& painter, double degrees) {
    constexpr double kGlowWidth = 6.0;
    constexpr double kGlow = 0.22;
    painter.dialArc(kKnobCenter, kKnobArcRadius, -kKnobTravelDegrees, degrees);
    painter.stroke(palette::kLit, kGlowWidth, kGlow);
    painter.dialArc(kKnobCenter, kKnobArcRadius, -kKnobTravelDegrees, degrees);
    painter.stroke(palette::kLit, kKnobArcWidth);
}

// The grip: notches around the skirt, which turn with the pointer.
void drawNotches(Painter& painter, double degrees) {
    constexpr int kNotches = 30;
    constexpr double kSpacingDegrees = 360.0 / kNotches;
    constexpr double kWidth = 1.25;
    constexpr double kDepth = 0.45;
    for (int notch = 0; notch < kNotches; ++notch) {
        painter.dialRay(kKnobCenter, kCapRadius, kSkirtRadius, degrees + (notch + 0.5) * kSpacingDegrees);
        painter.stroke(palette::kBlack, kWidth, kDepth);
    }
}

void drawBody(Painter& painter, double degrees) {
    castShadow(painter, kKnobCenter, kSkirtRadius, kKnobHeight);
    painter.circle(kKnobCenter, kSkirtRadius);
    painter.fillDown(kKnobCenter.y - kSkirtRadius, kKnobCenter.y + kSkirtRadius, palette::kSkirtLight,
                     palette::kSkirtDark);
    drawNotches(painter, degrees);
    painter.circle(kKnobCenter, kCapRadius);
    painter.fillDown(kKnobCenter.y - kCapRadius, kKnobCenter.y + kCapRadius, palette::kSkirtLight,
                     palette::kSkirtDark);
    painter.circle(kKnobCenter, kCapRadius - 1);
    painter.fillDown(kKnobCenter.y - kCapRadius, kKnobCenter.y + kCapRadius, palette::kCapLight,
                     palette::kCapDark);
}

void drawPointer(Painter& painter, double degrees) {
    const SavedState saved(painter);
    cairo_set_line_cap(painter.cairo(), CAIRO_LINE_CAP_ROUND);
    painter.dialRay(kKnobCenter, kKnobPointerInner, kKnobPointerOuter, degrees);
    painter.stroke(palette::kName, kKnobPointerWidth);
}

// The scales around the knobs. Radii, widths and distances in pixels.

constexpr int kTicks = 11;
constexpr double kTickInner = 33.0;
constexpr double kTickOuter = 35.5;
constexpr double kMajorOuter = 37.0;
constexpr double kTickWidth = 1.0;
// From the knob's middle to the texts at the ends, and from its edges to the baselines of the texts.
constexpr double kOutwards = 27.0;
constexpr double kAbove = 8.5;
constexpr double kBelow = 10.0;
constexpr double kWordsBelow = 22.0;

// The value at a place of a knob, 0 to 1, in the unit that stands in the middle of the scale; with a sign
// where values have two.
std::string scaleNumber(const SDemoGain_Parameter& parameter, double normalized) {
    constexpr double kWithDecimalBelow = 10.0;
    const double value = DemoGain_ValueText::InUnit(parameter, normalized);
    const double magnitude = std::fabs(value);
    const double tenths = std::round(magnitude * 10.0);
    const bool isWhole = magnitude >= kWithDecimalBelow || std::fmod(tenths, 10.0) == 0.0;
    const auto digits = static_cast<int>(isWhole ? std::round(magnitude) : tenths);
    std::string text =
        isWhole ? std::to_string(digits) : std::to_string(digits / 10) + '.' + std::to_string(digits % 10);
    if (digits != 0 && parameter.mUnit.mLow < 0.0) {
        text.insert(0, value < 0.0 ? "−" : "+");
    }
    return text;
}

void drawKnobTicks(Painter& painter, Point center) {
    for (int tick = 0; tick < kTicks; ++tick) {
        const double degrees = kKnobTravelDegrees * (2.0 * tick / (kTicks - 1) - 1.0);
        const bool major = tick % (kTicks / 2) == 0;
        painter.dialRay(center, kTickInner, major ? kMajorOuter : kTickOuter, degrees);
        painter.stroke(major ? palette::kName : palette::kHint, kTickWidth);
    }
}

// All knobs share their pictures: what the ends and the middle are worth stands around each.
void drawKnobScale(Painter& painter, const Box& knob, const SDemoGain_Parameter& parameter) {
    const Point center = knob.center();
    const auto write = [&](const std::string& text, double x, double y, Color color) {
        painter.text(text, lettering::kValue, {x, y}, Align::kCenter, color);
    };
    drawKnobTicks(painter, center);
    const double below = knob.bottom() + kBelow;
    write(scaleNumber(parameter, 0.5), center.x, knob.y - kAbove, palette::kHint);
    write(scaleNumber(parameter, 0.0), center.x - kOutwards, below, palette::kHint);
    write(scaleNumber(parameter, 1.0), center.x + kOutwards, below, palette::kHint);
    write(parameter.mUnit.mSymbol, center.x, below, palette::kHint);
    if (parameter.mScaleLow != nullptr) {
        const double words = knob.bottom() + kWordsBelow;
        write(parameter.mScaleLow, center.x - kOutwards, words, palette::kName);
        write(parameter.mScaleHigh, center.x + kOutwards, words, palette::kName);
    }
}

} // namespace

double knobDegrees(int picture) {
    constexpr int kLast = DemoGain_ViewLayout::BitmapOf(DemoGain_ViewLayout::Art::kKnob).mPictures - 1;
    return kKnobTravelDegrees * (2.0 * picture / kLast - 1.0);
}

void drawKnob(Painter& painter, int picture) {
    const double degrees = knobDegrees(picture);
    drawChannel(painter);
    drawLitArc(painter, degrees);
    drawBody(painter, degrees);
    drawPointer(painter, degrees);
}

void drawKnobScales(Painter& painter) {
    for (const DemoGain_ViewLayout::Control& control : DemoGain_ViewLayout::kControls) {
        if (control.mKind == DemoGain_ViewLayout::Kind::kKnob) {
            const SDemoGain_Parameter& parameter = *DemoGain_FindParameter(control.mID);
            drawKnobScale(painter, painter.placed(controlBox(control)), parameter);
        }
    }
}

} // namespace varno
