/// The run loop that VSTGUI asks for on X11.
#ifndef VARNO_SOURCE_GUI_VSTGUI_RUNLOOP_H
#define VARNO_SOURCE_GUI_VSTGUI_RUNLOOP_H

#include "Platform/RunLoop.h"

#include "vstgui/lib/platform/platform_x11.h"
#include "vstgui/lib/vstguibase.h"

#include <memory>
#include <unordered_map>

/// Enters what VSTGUI registers in the loop that all editors share. The library holds on to the one that came
/// with the first open frame until the last frame is closed. [main]
class VSTGUI_RunLoop final : public VSTGUI::X11::IRunLoop, public VSTGUI::NonAtomicReferenceCounted {
public:
    explicit VSTGUI_RunLoop(std::shared_ptr<varno::RunLoop> loop)
        : mLoop(std::move(loop)) {}

    /// The descriptor's handler is called on every tick of the loop: events that the library has read
    /// already, while it waited for an answer, make no descriptor readable. A handler has one descriptor.
    /// [main]
    bool registerEventHandler(int descriptor, VSTGUI::X11::IEventHandler* handler) override;
    /// The descriptor may be closed already. False for a handler that is not registered. [main]
    bool unregisterEventHandler(VSTGUI::X11::IEventHandler* handler) override;
    /// `interval` is in milliseconds. One of a frame, with which the library draws what has become dirty,
    /// comes with every tick instead: what a hand has done is seen in the same tick, not up to a frame later.
    /// A handler has one timer. [main]
    bool registerTimer(uint64_t interval, VSTGUI::X11::ITimerHandler* handler) override;
    /// False for a handler that is not registered. [main]
    bool unregisterTimer(VSTGUI::X11::ITimerHandler* handler) override;

private:
    std::shared_ptr<varno::RunLoop> mLoop;
    std::unordered_map<VSTGUI::X11::IEventHandler*, varno::Registration> mDescriptors;
    std::unordered_map<VSTGUI::X11::ITimerHandler*, varno::Registration> mTimers;
};

#endif
