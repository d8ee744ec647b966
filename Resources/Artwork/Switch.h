/// The switch: a slider that lies left and dark when off, right and lit when on.
#ifndef VARNO_RESOURCES_ARTWORK_SWITCH_H
#define VARNO_RESOURCES_ARTWORK_SWITCH_H

#include "Artwork/Painter.h"

namespace varno {

/// Picture 0 is off, picture 1 on.
void drawSwitch(Painter& painter, int picture);

} // namespace varno

#endif
