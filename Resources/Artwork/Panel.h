/// The background: sheet, plate, scales and all lettering around the controls.
#ifndef PANEL_H
#define PANEL_H

#include "Painter.h"

namespace varno {

void drawPanel(Painter& painter);

} // namespace varno

#endif
