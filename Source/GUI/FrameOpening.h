/// Opens a frame in the host's native view; the code differs by system.
#ifndef VARNO_SOURCE_GUI_FRAMEOPENING_H
#define VARNO_SOURCE_GUI_FRAMEOPENING_H

#include "Platform/RunLoop.h"

#include <cstdint>
#include <optional>

class VSTGUI_ContentView;

namespace varno {

/// Opens the view's frame in `nativeView` of the kind `containerType`, an AAX_EViewContainerType. Reset the
/// result as soon as the view is deleted: it removes the remains of the frame from the native view. Returns
/// nothing and does nothing where this system has no such views or the view does not exist, such as an X11
/// window of a display that cannot be reached. [main]
std::optional<Registration> openFrame(VSTGUI_ContentView& view, int32_t containerType, void* nativeView);

} // namespace varno

#endif
