#include "Artwork/Panel.h"

#include "Artwork/Controls.h"
#include "DemoGain_Coefficients.h"

#include <cmath>
#include <cstdint>
#include <string>

namespace varno {
namespace {

// The bare material: the sheet, the plate let into it and the product's name.

// The plate that carries the dynamics section.
constexpr Box kPlate = {116, 24, 418, 326};
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
    const int rows = static_cast<int>(std::ceil(area.height * painter.scale()));
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

void drawProductName(Painter& painter) {
    constexpr double kBaseline = 24.0;
    constexpr double kMargin = 16.0;
    painter.text("Varno-S", lettering::kProduct, {kMargin, kBaseline}, Align::kLeft, palette::kName);
    painter.text("SATURATION & DYNAMICS", lettering::kMotto, {viewBox().width - kMargin, kBaseline},
                 Align::kRight, palette::kHint);
}

void drawSheet(Painter& painter) {
    const Box view = painter.covered(viewBox());
    painter.box(view);
    painter.fillDown(view.y, view.bottom(), palette::kSheetTop, palette::kSheetBottom);
    brush(painter, view);
    painter.box({view.x, view.y, view.width, 1});
    painter.fill(palette::kWhite, 0.12);
    painter.box({view.x, view.bottom() - 1, view.width, 1});
    painter.fill(palette::kBlack, 0.4);
    drawPlate(painter);
    drawProductName(painter);
}

// Sections: their titles, and lines from a switch to what it changes.

constexpr double kUpperBaseline = 37.0;
constexpr double kLowerBaseline = 189.0;
constexpr double kMeterBaseline = 227.0;
// From a title's baseline up to the lines at its sides, in pixels.
constexpr double kRise = 3.5;
constexpr double kTurn = 4.0;
constexpr double kLineWidth = 1.0;
// How far scales and names reach beyond the controls that they belong to, in pixels.
constexpr double kScaleReach = 7.0;
constexpr double kNameReach = 6.0;
constexpr double kWideNameReach = 11.0;
constexpr double kMeterNameReach = 52.0;
constexpr double kMeterRim = 2.0;
// Below the switches of the detector and their names.
constexpr double kDetectorBottom = 129.5;

// A group of controls: the title stands in a gap of the line over them, whose ends go down to `bottom`. Where
// they are long, a line joins them.
struct Section {
    const char* title;
    double left;
    double right;
    double baseline;
    double bottom;

    constexpr double line() const { return baseline - kRise; }
    constexpr bool isFramed() const { return bottom > line() + kTurn; }
};

constexpr Section bracket(const char* title, double left, double right, double baseline) {
    return {title, left, right, baseline, baseline - kRise + kTurn};
}

constexpr Section kDetector = {"DETECTOR", controlBox("HP").x - kWideNameReach,
                               controlBox("Band").right() + kWideNameReach, kUpperBaseline, kDetectorBottom};
constexpr Section kTiming = bracket("TIMING", controlBox("Atk").x, controlBox("Rls").right(), kUpperBaseline);
constexpr Section kDrive = bracket("DRIVE", controlBox("Hot").x - kScaleReach,
                                   controlBox("Hot").right() + kScaleReach, kLowerBaseline);
constexpr Section kSections[] = {
    bracket("INPUT", controlBox("Gain").x - kScaleReach, controlBox("Gain").right() + kScaleReach,
            kUpperBaseline),
    kDetector,
    kTiming,
    bracket("OUTPUT", controlBox("ASw").x - kNameReach, controlBox("Volume").right() + kScaleReach,
            kUpperBaseline),
    kDrive,
    bracket("BLEND", controlBox("Mix").x - kScaleReach, controlBox("Mix").right() + kScaleReach,
            kLowerBaseline),
    bracket("GAIN REDUCTION", controlBox("METERGR1").x - kMeterNameReach,
            controlBox("METERGR1").right() + kMeterRim, kMeterBaseline),
};

void drawPanelLine(Painter& painter, const std::vector<Point>& points) {
    painter.crispLine(points, kLineWidth, palette::kLine);
}

void drawSection(Painter& painter, const Section& section) {
    constexpr double kGap = 6.0;
    painter.text(section.title, lettering::kTitle, {(section.left + section.right) / 2, section.baseline},
                 Align::kCenter, palette::kHint);
    const Box title = painter.texts().back().box;
    const Point leftGap = {std::floor(title.x - kGap), section.line()};
    const Point rightGap = {std::ceil(title.right() + kGap), section.line()};
    const Point left = {section.left, section.line()};
    const Point right = {section.right, section.line()};
    const Point leftEnd = {section.left, section.bottom};
    const Point rightEnd = {section.right, section.bottom};
    if (section.isFramed()) {
        drawPanelLine(painter, {leftGap, left, leftEnd, rightEnd, right, rightGap});
    } else {
        drawPanelLine(painter, {leftGap, left, leftEnd});
        drawPanelLine(painter, {rightGap, right, rightEnd});
    }
}

// Three switches lie apart from what they change; a line from each leads there and ends in a dot.
constexpr double kSwitchGap = 4.0;

void drawLink(Painter& painter, const std::vector<Point>& points) {
    constexpr double kDot = 2.25;
    drawPanelLine(painter, points);
    painter.circle(points.back(), kDot);
    painter.fill(palette::kLine);
}

// "UK Mode" changes the release: the line ends beside its name.
void drawReleaseLink(Painter& painter) {
    constexpr Box kFrom = controlBox("UK");
    constexpr Box kTo = controlBox("Rls");
    constexpr double kElbowX = 500.5;
    constexpr Point kEnd = {kTo.center().x + 31.5, kTo.bottom() + 18.5};
    constexpr double kY = kFrom.center().y + kLineWidth / 2;
    drawLink(painter, {{kFrom.x - kSwitchGap, kY}, {kElbowX, kY}, {kElbowX, kEnd.y}, kEnd});
}

// "Harmonic Select" changes the drive.
void drawDriveLink(Painter& painter) {
    constexpr Box kFrom = controlBox("HSw");
    constexpr double kElbowX = 104.5;
    constexpr double kY = kFrom.center().y + kLineWidth / 2;
    drawLink(
        painter,
        {{kFrom.x - kSwitchGap, kY}, {kElbowX, kY}, {kElbowX, kDrive.line()}, {kDrive.right, kDrive.line()}});
}

// "Stereo Link" has the detectors of both channels work as one.
void drawDetectorLink(Painter& painter) {
    constexpr Box kFrom = controlBox("LinkSw");
    constexpr double kElbowX = 526.5;
    constexpr double kBelowNames = 160.5;
    constexpr double kY = kFrom.center().y + kLineWidth / 2;
    constexpr double kEndX = kDetector.right;
    drawLink(painter, {{kFrom.x - kSwitchGap, kY},
                       {kElbowX, kY},
                       {kElbowX, kBelowNames},
                       {kEndX, kBelowNames},
                       {kEndX, kDetectorBottom}});
}

// The times on the scales are those of one curve: the one that is chosen at first.
void drawTimesNote(Painter& painter) {
    constexpr double kLineHeight = 13.0;
    constexpr Point kFirst = {(kTiming.left + kTiming.right) / 2, 84.0};
    const int curve = DemoGain_CurveIndex(DemoGain_FindParameter(cDemoGain_RatioID)->mDefault);
    const auto write = [&](const std::string& text, double y) {
        painter.text(text, lettering::kValue, {kFirst.x, y}, Align::kCenter, palette::kHint);
    };
    write("times at", kFirst.y);
    write(std::string("ratio ") + kDemoGain_CurveTexts[curve], kFirst.y + kLineHeight);
}

void drawSections(Painter& painter) {
    for (const Section& section : kSections) {
        drawSection(painter, section);
    }
    drawReleaseLink(painter);
    drawDriveLink(painter);
    drawDetectorLink(painter);
    drawTimesNote(painter);
}

// Small curves over the detector's switches: which frequencies each passes or raises.

constexpr double kCurveWidth = 24.0;
constexpr double kCurveHeight = 7.0;
constexpr double kAboveSwitch = 8.0;
constexpr double kCurveLineWidth = 1.25;

// A rise from the lower to the upper level, in shares of the width.
void drawRise(Painter& painter, const Box& control, double from, double to) {
    const Box area{control.center().x - kCurveWidth / 2, control.y - kAboveSwitch - kCurveHeight, kCurveWidth,
                   kCurveHeight};
    const double middle = area.x + area.width * (from + to) / 2;
    cairo_new_path(painter.cairo());
    cairo_move_to(painter.cairo(), area.x, area.bottom());
    cairo_line_to(painter.cairo(), area.x + area.width * from, area.bottom());
    cairo_curve_to(painter.cairo(), middle, area.bottom(), middle, area.y, area.x + area.width * to, area.y);
    cairo_line_to(painter.cairo(), area.right(), area.y);
    painter.stroke(palette::kHint, kCurveLineWidth);
}

void drawResponseCurves(Painter& painter) {
    drawRise(painter, controlBox("HP"), 0.0, 0.6);
    drawRise(painter, controlBox("Band"), 0.4, 1.0);
}

// The names of the controls.

using DemoGain_ViewLayout::NameSide;

constexpr double kNameLineHeight = 12.5;

// From a control to its name, in pixels. The names of knobs are below the end values of their scales.
constexpr double kBelowKnob = 23.0;
constexpr double kBelowSwitch = 12.0;
constexpr double kBeside = 6.0;

struct NamePlace {
    Point anchor; ///< Of the first line.
    Align align;
};

NamePlace placeOfName(const DemoGain_ViewLayout::Control& control, bool hasTwoLines) {
    const Box box = controlBox(control);
    const double beside = box.center().y + lettering::halfCapitals(lettering::kName) -
                          (hasTwoLines ? kNameLineHeight / 2 : 0.0);
    switch (control.mNameSide) {
    case NameSide::kLeft:
        return {{box.x - kBeside, beside}, Align::kRight};
    case NameSide::kRight:
        return {{box.right() + kBeside, beside}, Align::kLeft};
    case NameSide::kBelow:
    case NameSide::kNone:
        break;
    }
    const bool isKnob = control.mKind == DemoGain_ViewLayout::Kind::kKnob;
    return {{box.center().x, box.bottom() + (isKnob ? kBelowKnob : kBelowSwitch)}, Align::kCenter};
}

// The name of a parameter, in one line or two.
void drawControlName(Painter& painter, const DemoGain_ViewLayout::Control& control, const char* first,
                     const char* second) {
    const auto [anchor, align] = placeOfName(control, second != nullptr);
    painter.text(first, lettering::kName, anchor, align, palette::kName);
    if (second != nullptr) {
        painter.text(second, lettering::kName, {anchor.x, anchor.y + kNameLineHeight}, align, palette::kName);
    }
}

// The hollow around the line of text that the view draws itself.
void drawStatusFrame(Painter& painter) {
    constexpr double kMargin = 2.0;
    constexpr double kCorner = 3.0;
    recess(painter, statusBox().inset(-kMargin), kCorner, palette::kBlack);
}

} // namespace

void drawControlNames(Painter& painter) {
    for (const DemoGain_ViewLayout::Control& control : DemoGain_ViewLayout::kControls) {
        if (const SDemoGain_Parameter* const parameter = DemoGain_FindParameter(control.mID)) {
            drawControlName(painter, control, parameter->mLegend[0], parameter->mLegend[1]);
        }
    }
}

void drawPanel(Painter& painter) {
    drawSheet(painter);
    drawSections(painter);
    drawResponseCurves(painter);
    drawKnobScales(painter);
    drawMeterScale(painter);
    drawControlNames(painter);
    drawStatusFrame(painter);
}

} // namespace varno
