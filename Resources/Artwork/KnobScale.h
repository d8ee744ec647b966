/// The scales around the knobs: ticks, and what the ends mean.
#ifndef VARNO_RESOURCES_ARTWORK_KNOBSCALE_H
#define VARNO_RESOURCES_ARTWORK_KNOBSCALE_H

#include "Artwork/Painter.h"

namespace varno {

void drawKnobScales(Painter& painter);

} // namespace varno

#endif
