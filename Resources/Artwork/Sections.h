/// What belongs together: titles of the sections, and lines from a switch to what it changes.
#ifndef SECTIONS_H
#define SECTIONS_H

#include "Painter.h"

namespace varno {

void drawSections(Painter& painter);

} // namespace varno

#endif
