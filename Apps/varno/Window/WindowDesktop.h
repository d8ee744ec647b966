#ifndef VARNO_APPS_VARNO_WINDOW_WINDOWDESKTOP_H
#define VARNO_APPS_VARNO_WINDOW_WINDOWDESKTOP_H

#include "EventLoop.h"
#include "Host/ViewContainer.h"

namespace varno {

/// The desktop around a window, for the editor in it: the window's event loop and the scale. [main]
class WindowDesktop : public Desktop {
public:
    /// @param loop outlives this object
    /// @param scale 1 is the plain size
    WindowDesktop(EventLoop& loop, double scale)
        : mLoop(loop),
          mScale(scale) {}

    double scale() const override { return mScale; }
    void watch(int descriptor, const void* owner, Wake wake) override {
        mLoop.watch(descriptor, owner, std::move(wake));
    }
    void unwatch(int descriptor, const void* owner) override { mLoop.unwatch(descriptor, owner); }
    void startTimer(std::chrono::milliseconds period, const void* owner, Wake wake) override {
        mLoop.startTimer(period, owner, std::move(wake));
    }
    void stopTimer(const void* owner) override { mLoop.stopTimer(owner); }

private:
    EventLoop& mLoop;
    double mScale;
};

} // namespace varno

#endif
