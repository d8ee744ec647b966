/// The bare material of the panel: the matte sheet, the plate let into it and the product's name.
#ifndef SHEET_H
#define SHEET_H

#include "Painter.h"

namespace varno {

void drawSheet(Painter& painter);

} // namespace varno

#endif
