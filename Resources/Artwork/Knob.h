/// The knob: a body that stays, a pointer that turns, and a lit arc that shows the value from afar.
#ifndef VARNO_RESOURCES_ARTWORK_KNOB_H
#define VARNO_RESOURCES_ARTWORK_KNOB_H

#include "Artwork/Painter.h"

namespace varno {

/// How far the pointer turns either way from straight up, in degrees.
inline constexpr double kKnobTravelDegrees = 135.0;

/// The pointer's angle in one of the pictures, in degrees clockwise from straight up. [any]
double knobDegrees(int picture);

void drawKnob(Painter& painter, int picture);

} // namespace varno

#endif
