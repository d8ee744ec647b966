/// What belongs together: titles of the sections, and lines from a switch to what it changes.
#ifndef VARNO_RESOURCES_ARTWORK_SECTIONS_H
#define VARNO_RESOURCES_ARTWORK_SECTIONS_H

#include "Artwork/Painter.h"

namespace varno {

void drawSections(Painter& painter);

} // namespace varno

#endif
