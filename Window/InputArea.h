#ifndef VARNO_WINDOW_INPUTAREA_H
#define VARNO_WINDOW_INPUTAREA_H

#include "Window/ChildWindow.h"
#include "Window/PointerEvents.h"

#include <functional>

namespace varno {

/// A child window that is not seen and receives the pointer's buttons in place of what is below it. Raise it
/// whenever another client's window may have come above it. [main]
class InputArea : public ChildWindow {
public:
    /// @param event places are in this window; a release is reported also where the pointer has left it
    using Handler = std::function<void(const ButtonEvent& event)>;

    /// Makes it, hidden. @param connection outlives this object
    InputArea(XConnection& connection, xcb_window_t parent, Handler handler);
    ~InputArea() = default;

    /// @param area in the parent
    void setArea(const WindowArea& area) const { moveTo(area); }

private:
    WindowEvents::Registration mEvents;
};

} // namespace varno

#endif
