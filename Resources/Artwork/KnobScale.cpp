#include "Artwork/KnobScale.h"

#include "Artwork/Knob.h"
#include "Artwork/Lettering.h"
#include "Artwork/Placement.h"

namespace varno {
namespace {

constexpr int kTicks = 11;
constexpr double kTickInner = 33.0;
constexpr double kTickOuter = 36.0;
constexpr double kMajorOuter = 38.0;
constexpr double kTickWidth = 1.0;

// A knob and the texts at the ends of its scale.
struct Scale {
    Box mKnob;
    const char* mLow;
    const char* mHigh;
};

constexpr Scale kScales[] = {
    {controlBox("Gain"), "−20", "+20"},  {controlBox("Volume"), "−20", "+20"},
    {controlBox("Atk"), "fast", "slow"}, {controlBox("Rls"), "fast", "slow"},
    {controlBox("Hot"), "0", "100"},     {controlBox("Mix"), "wet", "dry"},
};

void drawScale(Painter& painter, const Scale& scale) {
    constexpr double kOutwards = 27.0;
    constexpr double kBaseline = 9.0;
    const Point center = scale.mKnob.center();
    for (int tick = 0; tick < kTicks; ++tick) {
        const double degrees = kKnobTravelDegrees * (2.0 * tick / (kTicks - 1) - 1.0);
        const bool major = tick % (kTicks / 2) == 0;
        painter.dialRay(center, kTickInner, major ? kMajorOuter : kTickOuter, degrees);
        painter.stroke(major ? palette::kName : palette::kHint, kTickWidth, major ? 1.0 : 0.7);
    }
    const double y = scale.mKnob.bottom() + kBaseline;
    painter.text(scale.mLow, lettering::kValue, {center.x - kOutwards, y}, Align::Center, palette::kHint);
    painter.text(scale.mHigh, lettering::kValue, {center.x + kOutwards, y}, Align::Center, palette::kHint);
}

} // namespace

void drawKnobScales(Painter& painter) {
    for (const Scale& scale : kScales) {
        drawScale(painter, scale);
    }
}

} // namespace varno
