/// How the mouse turns a knob: in a line, up or to the right for more, down or to the left for less.
#ifndef VARNO_TESTS_INTEGRATION_EDITOR_KNOBGEOMETRY_H
#define VARNO_TESTS_INTEGRATION_EDITOR_KNOBGEOMETRY_H

#include "DemoGain_ViewLayout.h"
#include "Tests/Support/XClient.h"

#include <cmath>

namespace varno::test {

/// Pixels of a drag from one end of a knob to the other, and how many times as many they are in a fine drag.
inline constexpr double kKnobRange = 200.0;
inline constexpr double kFineDrag = 6.0;

/// The pointer's place, from a knob's corner, after it was pressed in the knob's middle and has turned the
/// knob by that much: to the right of it or below, where the screen has room.
inline Place pullOf(double change) {
    const DemoGain_ViewLayout::Bitmap& knob = DemoGain_ViewLayout::BitmapOf(DemoGain_ViewLayout::Art::kKnob);
    const int pixels = static_cast<int>(std::lround(change * kKnobRange));
    const Place middle{knob.mWidth / 2, knob.mHeight / 2};
    return middle + (pixels > 0 ? Place{pixels, 0} : Place{0, -pixels});
}

/// Which of the knob's pictures shows a value.
inline int knobPicture(double value) {
    const DemoGain_ViewLayout::Bitmap& knob = DemoGain_ViewLayout::BitmapOf(DemoGain_ViewLayout::Art::kKnob);
    // The control has a float, which may be less than the decimal number.
    return static_cast<int>(double{static_cast<float>(value)} * (knob.mPictures - 1));
}

} // namespace varno::test

#endif
