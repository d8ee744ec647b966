/// Opens a frame of VSTGUI in a native view; the code differs by system.
#ifndef VARNO_TOOLKIT_FRAMEOPENING_H
#define VARNO_TOOLKIT_FRAMEOPENING_H

#include "Toolkit/OpenedFrame.h"

#include "vstgui/lib/vstguifwd.h"

#include <cstdint>
#include <optional>

namespace varno {

/// Opens `frame` in the native view of the kind `containerType`, an AAX_EViewContainerType. Returns nothing
/// and does nothing where this system has no such views or the view does not exist, such as an X11 window of
/// a display that cannot be reached. The result is reset after the frame is closed. [main]
std::optional<OpenedFrame> openFrame(VSTGUI::CFrame& frame, void* nativeView, int32_t containerType);

} // namespace varno

#endif
