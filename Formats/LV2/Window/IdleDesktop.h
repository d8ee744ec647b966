/// The desktop around a window whose host calls it now and then.
#ifndef VARNO_FORMATS_LV2_WINDOW_IDLEDESKTOP_H
#define VARNO_FORMATS_LV2_WINDOW_IDLEDESKTOP_H

#include "Host/Desktop.h"

namespace varno {

/// Tells the scale. There is no event loop to offer: the host's idle calls are the only clock, and each of
/// them calls the editor's timer, which looks after every descriptor and timer of the editor's. So watches
/// and timers of this desktop are never due. [main]
class IdleDesktop : public Desktop {
public:
    /// @param scale 1 is the plain size
    explicit IdleDesktop(double scale)
        : mScale(scale) {}

    double scale() const override { return mScale; }
    void watch(int, const void*, Wake) override {}
    void unwatch(int, const void*) override {}
    void startTimer(std::chrono::milliseconds, const void*, Wake) override {}
    void stopTimer(const void*) override {}

private:
    double mScale;
};

} // namespace varno

#endif
