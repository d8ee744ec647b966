/// The switch: a slider that lies left and dark when off, right and lit when on.
#ifndef SWITCH_H
#define SWITCH_H

#include "Painter.h"

namespace varno {

/// Picture 0 is off, picture 1 on.
void drawSwitch(Painter& painter, int picture);

} // namespace varno

#endif
