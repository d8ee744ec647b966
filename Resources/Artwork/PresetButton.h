/// The two keys that carry the settings to the clipboard and back.
#ifndef VARNO_RESOURCES_ARTWORK_PRESETBUTTON_H
#define VARNO_RESOURCES_ARTWORK_PRESETBUTTON_H

#include "Artwork/Painter.h"

namespace varno {

/// Picture 0 is up, picture 1 pressed.
void drawCopyButton(Painter& painter, int picture);
void drawPasteButton(Painter& painter, int picture);

} // namespace varno

#endif
