/// Where on a knob a value lies: the circle that a hand turns it on.
#ifndef VARNO_TEST_KNOBGEOMETRY_H
#define VARNO_TEST_KNOBGEOMETRY_H

#include "DemoGain_ViewLayout.h"
#include "XClient.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace varno::test {

/// A knob turns by three quarters of a circle, clockwise, with 0.5 at the top.
inline constexpr double kKnobTurn = 1.5 * std::numbers::pi;
inline constexpr double kKnobTop = 1.5 * std::numbers::pi;

/// The pixel within the knob's picture where a value from 0 to 1 lies, near the rim.
inline Place placeOnKnob(double value) {
    const DemoGain_ViewLayout::Bitmap& knob = DemoGain_ViewLayout::BitmapOf(DemoGain_ViewLayout::Art::Knob);
    constexpr double kPartOfRadius = 0.9;
    const double angle = kKnobTop + (value - 0.5) * kKnobTurn;
    const double radius = kPartOfRadius * knob.mWidth / 2;
    return {static_cast<int>(std::lround(knob.mWidth / 2.0 + radius * std::cos(angle))),
            static_cast<int>(std::lround(knob.mHeight / 2.0 + radius * std::sin(angle)))};
}

/// The value at a pixel within the knob's picture.
inline float valueOnKnob(Place place) {
    const DemoGain_ViewLayout::Bitmap& knob = DemoGain_ViewLayout::BitmapOf(DemoGain_ViewLayout::Art::Knob);
    double angle = std::atan2(place.y - knob.mHeight / 2.0, place.x - knob.mWidth / 2.0) - kKnobTop;
    angle = std::remainder(angle, 2.0 * std::numbers::pi);
    return static_cast<float>(std::clamp(0.5 + angle / kKnobTurn, 0.0, 1.0));
}

/// Which of the knob's pictures shows a value.
inline int knobPicture(double value) {
    const DemoGain_ViewLayout::Bitmap& knob = DemoGain_ViewLayout::BitmapOf(DemoGain_ViewLayout::Art::Knob);
    // The control holds a float, which may be less than the decimal that was written.
    return static_cast<int>(double{static_cast<float>(value)} * (knob.mPictures - 1));
}

} // namespace varno::test

#endif
