/// What an open frame has in the host's native view.
#ifndef VARNO_TOOLKIT_OPENEDFRAME_H
#define VARNO_TOOLKIT_OPENEDFRAME_H

#include "Platform/RunLoop.h"

#include <functional>

namespace varno {

/// Made by openFrame for a frame of this system.
struct OpenedFrame {
    /// Takes the frame's window out of the native view while the frame is still open; empty where frames
    /// have no window of their own. Must not throw.
    std::function<void()> leave;
    /// Removes what remains of the frame; is reset when the frame has been closed.
    Registration remains;
};

} // namespace varno

#endif
