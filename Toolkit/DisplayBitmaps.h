/// Bitmaps where frames are drawn; the code differs by system.
#ifndef VARNO_TOOLKIT_DISPLAYBITMAPS_H
#define VARNO_TOOLKIT_DISPLAYBITMAPS_H

#include "vstgui/lib/vstguifwd.h"

namespace varno {

/// The bitmap to draw in the place of `bitmap`, in an open frame. On X11 the library sends the whole of a
/// bitmap to the server each time that a part of it is drawn, megabytes for one step of a knob: there, the
/// result is a copy that the server keeps. Elsewhere, and where no copy can be made, `bitmap` itself. Exists
/// until forgetDisplayBitmaps, as does `bitmap`, whose pixels stay as they are. [main]
VSTGUI::CBitmap& displayBitmap(VSTGUI::CBitmap& bitmap);

/// Releases the copies; to be called after the last frame has closed. [main]
void forgetDisplayBitmaps();

} // namespace varno

#endif
