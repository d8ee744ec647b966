/// The knob: a body that stays, a pointer that turns, and a lit arc that shows the value from afar.
#ifndef KNOB_H
#define KNOB_H

#include "Painter.h"

namespace varno {

/// How far the pointer turns either way from straight up, in degrees.
inline constexpr double kKnobTravelDegrees = 135.0;

/// The pointer's angle in one of the pictures, in degrees clockwise from straight up. [any]
double knobDegrees(int picture);

void drawKnob(Painter& painter, int picture);

} // namespace varno

#endif
