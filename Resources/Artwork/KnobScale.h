/// The scales around the knobs: ticks, and what the ends mean.
#ifndef KNOBSCALE_H
#define KNOBSCALE_H

#include "Painter.h"

namespace varno {

void drawKnobScales(Painter& painter);

} // namespace varno

#endif
