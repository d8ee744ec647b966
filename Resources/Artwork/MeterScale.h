/// The scale of the gain reduction meters, in dB.
#ifndef VARNO_RESOURCES_ARTWORK_METERSCALE_H
#define VARNO_RESOURCES_ARTWORK_METERSCALE_H

#include "Artwork/Painter.h"

namespace varno {

/// The values that the scale names, in dB; it reads from right to left.
inline constexpr int kMeterScaleDB[] = {0, 3, 6, 10, 15, 20, 32};

/// Where a gain reduction ends on the meters, in the view. [any]
double meterScaleX(double reductionDB);

void drawMeterScale(Painter& painter);

} // namespace varno

#endif
