/// The run loop that VSTGUI requires on X11.
#ifndef VARNO_TOOLKIT_VSTGUI_RUNLOOP_H
#define VARNO_TOOLKIT_VSTGUI_RUNLOOP_H

#include "Platform/RunLoop.h"

#include "vstgui/lib/platform/platform_x11.h"
#include "vstgui/lib/vstguibase.h"

#include <memory>
#include <unordered_map>

/// Registers VSTGUI's handlers with the loop that all editors share. The library keeps the run loop of the
/// first open frame until the last frame is closed. [main]
class VSTGUI_RunLoop final : public VSTGUI::X11::IRunLoop, public VSTGUI::NonAtomicReferenceCounted {
public:
    explicit VSTGUI_RunLoop(std::shared_ptr<varno::RunLoop> loop)
        : mLoop(std::move(loop)) {}

    /// The descriptor's handler is called on every tick of the loop: events that the library has already
    /// read, while it waited for a reply, do not make the descriptor readable. A handler has one descriptor.
    /// [main]
    bool registerEventHandler(int descriptor, VSTGUI::X11::IEventHandler* handler) override;
    /// The descriptor may be closed already. False for a handler that is not registered. [main]
    bool unregisterEventHandler(VSTGUI::X11::IEventHandler* handler) override;
    /// `interval` is in milliseconds. A timer of one frame's period, with which the library redraws, fires on
    /// every tick instead: the effect of a gesture is drawn in the same tick, not up to a frame later. A
    /// handler has one timer. [main]
    bool registerTimer(uint64_t interval, VSTGUI::X11::ITimerHandler* handler) override;
    /// False for a handler that is not registered. [main]
    bool unregisterTimer(VSTGUI::X11::ITimerHandler* handler) override;

private:
    std::shared_ptr<varno::RunLoop> mLoop;
    std::unordered_map<VSTGUI::X11::IEventHandler*, varno::Registration> mDescriptors;
    std::unordered_map<VSTGUI::X11::ITimerHandler*, varno::Registration> mTimers;
};

#endif
