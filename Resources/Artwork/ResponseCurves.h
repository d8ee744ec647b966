/// Small curves over the detector's switches: which frequencies each lets through or lifts.
#ifndef RESPONSECURVES_H
#define RESPONSECURVES_H

#include "Painter.h"

namespace varno {

void drawResponseCurves(Painter& painter);

} // namespace varno

#endif
