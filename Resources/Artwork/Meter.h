/// The gain reduction meters: a row of lamps, all dark or all lit. The editor shows dark ones from the left
/// and lit ones from where they end, so reduction grows from the right.
#ifndef VARNO_RESOURCES_ARTWORK_METER_H
#define VARNO_RESOURCES_ARTWORK_METER_H

#include "Artwork/Painter.h"

namespace varno {

void drawDarkMeter(Painter& painter);
void drawLitMeter(Painter& painter);

/// The part of a meter that the editor lights at this gain reduction, 0 (none) to about 1 (all): the
/// reduction as its tap shows it, on the editor's curve. [any]
double litPart(double reductionDB);

} // namespace varno

#endif
