/// The two keys that carry the settings to the clipboard and back.
#ifndef PRESETBUTTON_H
#define PRESETBUTTON_H

#include "Painter.h"

namespace varno {

/// Picture 0 is up, picture 1 pressed.
void drawCopyButton(Painter& painter, int picture);
void drawPasteButton(Painter& painter, int picture);

} // namespace varno

#endif
