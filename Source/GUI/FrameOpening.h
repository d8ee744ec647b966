/// The opening of a frame in the host's native view, which every system does in its own way.
#ifndef VARNO_FRAMEOPENING_H
#define VARNO_FRAMEOPENING_H

#include <cstdint>

class VSTGUI_ContentView;

namespace varno {

/// Opens the view's frame in `nativeView` of the kind `containerType`, an AAX_EViewContainerType. False, and
/// nothing done, where this system has no such views or the view is not there: an X11 window of a display
/// that cannot be reached, or none at all. [main]
bool openFrame(VSTGUI_ContentView& view, int32_t containerType, void* nativeView);

} // namespace varno

#endif
