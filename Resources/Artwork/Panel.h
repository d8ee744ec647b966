/// The background: sheet, plate, scales and all lettering around the controls.
#ifndef VARNO_RESOURCES_ARTWORK_PANEL_H
#define VARNO_RESOURCES_ARTWORK_PANEL_H

#include "Artwork/Painter.h"

namespace varno {

void drawPanel(Painter& painter);

/// The part of it that names the parameters beside their controls.
void drawControlNames(Painter& painter);

} // namespace varno

#endif
