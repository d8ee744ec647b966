/// What every control is called, engraved beside it.
#ifndef VARNO_RESOURCES_ARTWORK_CONTROLNAMES_H
#define VARNO_RESOURCES_ARTWORK_CONTROLNAMES_H

#include "Artwork/Painter.h"

namespace varno {

void drawControlNames(Painter& painter);

} // namespace varno

#endif
