/// The switch that chooses one of the eight gain reduction curves.
#ifndef VARNO_RESOURCES_ARTWORK_RATIOSWITCH_H
#define VARNO_RESOURCES_ARTWORK_RATIOSWITCH_H

#include "Artwork/Painter.h"

namespace varno {

/// In picture n the n-th position is chosen, counted from 0.
void drawRatioSwitch(Painter& painter, int picture);

} // namespace varno

#endif
