/// What every control is called, engraved beside it.
#ifndef CONTROLNAMES_H
#define CONTROLNAMES_H

#include "Painter.h"

namespace varno {

void drawControlNames(Painter& painter);

} // namespace varno

#endif
