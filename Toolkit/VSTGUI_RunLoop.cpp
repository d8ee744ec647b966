#include "Toolkit/VSTGUI_RunLoop.h"

#include <chrono>

namespace {

// The period at which the library draws, a frame of 60 Hz in whole milliseconds.
constexpr uint64_t kFrameMs = 16;

} // namespace

bool VSTGUI_RunLoop::registerEventHandler(int descriptor, VSTGUI::X11::IEventHandler* handler) {
    mDescriptors.insert_or_assign(handler,
                                  mLoop->addDescriptor(descriptor, [handler] { handler->onEvent(); }));
    return true;
}

bool VSTGUI_RunLoop::unregisterEventHandler(VSTGUI::X11::IEventHandler* handler) {
    return mDescriptors.erase(handler) > 0;
}

bool VSTGUI_RunLoop::registerTimer(uint64_t interval, VSTGUI::X11::ITimerHandler* handler) {
    const std::chrono::milliseconds period(interval > kFrameMs ? interval : 0);
    mTimers.insert_or_assign(handler, mLoop->addTimer(period, [handler] { handler->onTimer(); }));
    return true;
}

bool VSTGUI_RunLoop::unregisterTimer(VSTGUI::X11::ITimerHandler* handler) {
    return mTimers.erase(handler) > 0;
}
