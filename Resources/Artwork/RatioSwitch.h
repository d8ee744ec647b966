/// The switch that chooses one of the eight gain reduction curves.
#ifndef RATIOSWITCH_H
#define RATIOSWITCH_H

#include "Painter.h"

namespace varno {

/// In picture n the n-th position is chosen, counted from 0.
void drawRatioSwitch(Painter& painter, int picture);

} // namespace varno

#endif
