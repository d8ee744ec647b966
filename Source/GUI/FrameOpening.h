/// The opening of a frame in the host's native view, which every system does in its own way.
#ifndef VARNO_SOURCE_GUI_FRAMEOPENING_H
#define VARNO_SOURCE_GUI_FRAMEOPENING_H

#include "Platform/RunLoop.h"

#include <cstdint>
#include <optional>

class VSTGUI_ContentView;

namespace varno {

/// Opens the view's frame in `nativeView` of the kind `containerType`, an AAX_EViewContainerType. The result
/// is to be reset as soon as the view has gone: it removes what the frame leaves behind in the native view.
/// Empty, and nothing done, where this system has no such views or the view is not there: an X11 window of a
/// display that cannot be reached, or none at all. [main]
std::optional<Registration> openFrame(VSTGUI_ContentView& view, int32_t containerType, void* nativeView);

} // namespace varno

#endif
