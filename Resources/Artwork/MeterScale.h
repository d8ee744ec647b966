/// The scale of the gain reduction meters, in dB.
#ifndef METERSCALE_H
#define METERSCALE_H

#include "Painter.h"

namespace varno {

/// The values that the scale names, in dB; it reads from right to left.
inline constexpr int kMeterScaleDB[] = {0, 3, 6, 10, 15, 20, 32};

void drawMeterScale(Painter& painter);

} // namespace varno

#endif
