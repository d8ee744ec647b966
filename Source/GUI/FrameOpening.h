/// Opens a frame in the host's native view; the code differs by system.
#ifndef VARNO_SOURCE_GUI_FRAMEOPENING_H
#define VARNO_SOURCE_GUI_FRAMEOPENING_H

#include <cstdint>

class VSTGUI_ContentView;

namespace varno {

/// Opens the view's frame in its native view of the kind `containerType`, an AAX_EViewContainerType, and sets
/// what the view does when the frame leaves it. Returns false and does nothing where this system has no such
/// views or the view does not exist, such as an X11 window of a display that cannot be reached. [main]
bool openFrame(VSTGUI_ContentView& view, int32_t containerType);

} // namespace varno

#endif
