/// The bare material of the panel: the matte sheet, the plate let into it and the product's name.
#ifndef VARNO_RESOURCES_ARTWORK_SHEET_H
#define VARNO_RESOURCES_ARTWORK_SHEET_H

#include "Artwork/Painter.h"

namespace varno {

void drawSheet(Painter& painter);

} // namespace varno

#endif
