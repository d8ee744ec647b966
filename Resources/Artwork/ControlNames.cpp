#include "Artwork/ControlNames.h"

#include "Artwork/Lettering.h"
#include "Artwork/Placement.h"

namespace varno {
namespace {

constexpr double kLineHeight = 12.0;

enum class Side { Below, Left, Right };

// The name of a control, in one line or two.
struct ControlName {
    Box mControl;
    Side mSide;
    const char* mFirst;
    const char* mSecond;
};

constexpr ControlName kNames[] = {
    {controlBox("Gain"), Side::Below, "Gain", nullptr},
    {controlBox("Volume"), Side::Below, "Volume", nullptr},
    {controlBox("Atk"), Side::Below, "Attack", nullptr},
    {controlBox("Rls"), Side::Below, "Release", nullptr},
    {controlBox("Hot"), Side::Below, "Hottitude", nullptr},
    {controlBox("Mix"), Side::Below, "Mix", nullptr},
    {controlBox("HP"), Side::Below, "High", "Pass"},
    {controlBox("Band"), Side::Below, "Band", "Pass"},
    {controlBox("UK"), Side::Below, "UK Mode", nullptr},
    {controlBox("ASw"), Side::Below, "Auto Gain", nullptr},
    {controlBox("LinkSw"), Side::Below, "Stereo", "Link"},
    {controlBox("HSw"), Side::Right, "Harmonic", "Select"},
    {controlBox("Ratio"), Side::Left, "Ratio", nullptr},
    {controlBox("METERGR1"), Side::Left, "L", nullptr},
    {controlBox("METERGR2"), Side::Left, "R", nullptr},
};

// Where the knobs' names stand: below the end values of their scales.
constexpr double kBelowKnob = 23.0;
constexpr double kBelowSwitch = 12.0;
constexpr double kBeside = 8.0;

struct Place {
    Point mAnchor;
    Align mAlign;
};

Place placeOf(const ControlName& name) {
    const Box& control = name.mControl;
    const double beside = control.center().y + lettering::halfCapitals(lettering::kName) -
                          (name.mSecond != nullptr ? kLineHeight / 2 : 0.0);
    switch (name.mSide) {
    case Side::Left:
        return {{control.x - kBeside, beside}, Align::Right};
    case Side::Right:
        return {{control.right() + kBeside, beside}, Align::Left};
    case Side::Below:
        break;
    }
    const bool knob = control.height == controlBox("Gain").height;
    return {{control.center().x, control.bottom() + (knob ? kBelowKnob : kBelowSwitch)}, Align::Center};
}

void drawName(Painter& painter, const ControlName& name) {
    const auto [anchor, align] = placeOf(name);
    painter.text(name.mFirst, lettering::kName, anchor, align, palette::kName);
    if (name.mSecond != nullptr) {
        painter.text(name.mSecond, lettering::kName, {anchor.x, anchor.y + kLineHeight}, align,
                     palette::kName);
    }
}

} // namespace

void drawControlNames(Painter& painter) {
    for (const ControlName& name : kNames) {
        drawName(painter, name);
    }
}

} // namespace varno
