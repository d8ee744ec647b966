#include "Artwork/Sections.h"

#include "Artwork/Lettering.h"
#include "Artwork/Placement.h"

#include <cmath>

namespace varno {
namespace {

constexpr double kUpperBaseline = 47.0;
constexpr double kLowerBaseline = 198.0;
// From a title's baseline up to the lines at its sides, in pixels.
constexpr double kRise = 3.5;
constexpr double kLineWidth = 1.0;
// How far scales and names reach beyond the controls that they belong to, in pixels.
constexpr double kScaleReach = 7.0;
constexpr double kNameReach = 6.0;
constexpr double kMeterNameReach = 20.0;
constexpr double kMeterRim = 2.0;

// A group of controls: the title stands in a gap of the bracket over them.
struct Section {
    const char* mTitle;
    double mLeft;
    double mRight;
    double mBaseline;
};

constexpr Section kSections[] = {
    {"INPUT", controlBox("Gain").x - kScaleReach, controlBox("Gain").right() + kScaleReach, kUpperBaseline},
    {"DETECTOR", controlBox("HP").x - kNameReach, controlBox("Band").right() + kNameReach, kUpperBaseline},
    {"TIMING", controlBox("Atk").x - kScaleReach, controlBox("Rls").right() + kScaleReach, kUpperBaseline},
    {"OUTPUT", controlBox("ASw").x - kNameReach, controlBox("Volume").right() + kScaleReach, kUpperBaseline},
    {"DRIVE", controlBox("Hot").x - kScaleReach, controlBox("Hot").right() + kScaleReach, kLowerBaseline},
    {"BLEND", controlBox("LinkSw").x - kNameReach, controlBox("Mix").right() + kScaleReach, kLowerBaseline},
    {"GAIN REDUCTION", controlBox("METERGR1").x - kMeterNameReach, controlBox("METERGR1").right() + kMeterRim,
     kLowerBaseline},
};

void drawLine(Painter& painter, const std::vector<Point>& points) {
    painter.line(points);
    painter.stroke(palette::kLine, kLineWidth);
}

void drawSection(Painter& painter, const Section& section) {
    constexpr double kGap = 6.0;
    constexpr double kTurn = 4.0;
    painter.text(section.mTitle, lettering::kTitle, {(section.mLeft + section.mRight) / 2, section.mBaseline},
                 Align::Center, palette::kHint);
    const Box title = painter.texts().back().mBox;
    const double y = section.mBaseline - kRise;
    const double left = section.mLeft + kLineWidth / 2;
    const double right = section.mRight - kLineWidth / 2;
    drawLine(painter, {{left, y + kTurn}, {left, y}, {std::floor(title.x - kGap), y}});
    drawLine(painter, {{right, y + kTurn}, {right, y}, {std::ceil(title.right() + kGap), y}});
}

// Two switches lie apart from what they change; a line from each leads there.
constexpr double kSwitchGap = 4.0;

// "UK Mode" changes the release.
void drawReleaseLink(Painter& painter) {
    constexpr Box kFrom = controlBox("UK");
    constexpr Box kTo = controlBox("Rls");
    constexpr double kElbowX = 500.5;
    constexpr Point kEnd = {kTo.center().x + 27.5, kTo.bottom() + 19.5};
    constexpr double kDot = 1.75;
    const double y = kFrom.center().y + kLineWidth / 2;
    drawLine(painter, {{kFrom.x - kSwitchGap, y}, {kElbowX, y}, {kElbowX, kEnd.y}, kEnd});
    painter.circle(kEnd, kDot);
    painter.fill(palette::kLine);
}

// "Harmonic Select" changes the drive.
void drawDriveLink(Painter& painter) {
    constexpr Box kFrom = controlBox("HSw");
    constexpr double kElbowX = 104.5;
    constexpr double kEndX = controlBox("Hot").right() + kScaleReach;
    constexpr double kEndY = kLowerBaseline - kRise;
    const double y = kFrom.center().y + kLineWidth / 2;
    drawLine(painter, {{kFrom.x - kSwitchGap, y}, {kElbowX, y}, {kElbowX, kEndY}, {kEndX, kEndY}});
}

} // namespace

void drawSections(Painter& painter) {
    for (const Section& section : kSections) {
        drawSection(painter, section);
    }
    drawReleaseLink(painter);
    drawDriveLink(painter);
}

} // namespace varno
