/// Small curves over the detector's switches: which frequencies each lets through or lifts.
#ifndef VARNO_RESOURCES_ARTWORK_RESPONSECURVES_H
#define VARNO_RESOURCES_ARTWORK_RESPONSECURVES_H

#include "Artwork/Painter.h"

namespace varno {

void drawResponseCurves(Painter& painter);

} // namespace varno

#endif
