/// The pictures of the controls, each with its corner at the origin, and the scales around knobs and meters.
#ifndef VARNO_RESOURCES_ARTWORK_CONTROLS_H
#define VARNO_RESOURCES_ARTWORK_CONTROLS_H

#include "Artwork/Painter.h"

namespace varno {

// The knob (Knob.cpp): a body that stays, a pointer that turns, and a lit arc that shows the value from a
// distance.

/// The largest angle of the pointer to either side of straight up, in degrees.
inline constexpr double kKnobTravelDegrees = 135.0;

/// The pointer's angle in one of the pictures, in degrees clockwise from straight up. [any]
double knobDegrees(int picture);

void drawKnob(Painter& painter, int picture);

/// The scales around the knobs of the panel: ticks, unit, and the values at both ends and in the middle.
void drawKnobScales(Painter& painter);

// Switches and keys (Switches.cpp).

/// A slider that lies left and dark when off (picture 0), right and lit when on (picture 1).
void drawSwitch(Painter& painter, int picture);

/// The choice of one of the eight gain reduction curves: in picture n the n-th key is lit, counted from 0.
void drawRatioSwitch(Painter& painter, int picture);

/// The two keys that copy the settings to the clipboard and back. Picture 0 is up, picture 1 pressed.
void drawCopyButton(Painter& painter, int picture);
void drawPasteButton(Painter& painter, int picture);

// The gain reduction meters (Meter.cpp): a row of lamps, all dark or all lit. The editor shows dark ones from
// the left and lit ones after them, so that reduction grows from the right.

void drawDarkMeter(Painter& painter);
void drawLitMeter(Painter& painter);

/// The part of a meter that the editor lights at this gain reduction, 0 (none) to about 1 (all): the meter
/// tap's value for the reduction, on the editor's curve. [any]
double litPart(double reductionDB);

/// The values on the meters' scale, in dB; it reads from right to left.
inline constexpr int kMeterScaleDB[] = {0, 3, 6, 10, 15, 20, 32};

/// Where a gain reduction ends on the meters, in the view. [any]
double meterScaleX(double reductionDB);

/// The hollows around the meters of the panel, their names and their scale.
void drawMeterScale(Painter& painter);

} // namespace varno

#endif
