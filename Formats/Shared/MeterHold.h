/// Meter values as hosts and windows show them.
#ifndef VARNO_FORMATS_SHARED_METERHOLD_H
#define VARNO_FORMATS_SHARED_METERHOLD_H

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace varno {

/// Least time for which a peak stays: windows of hosts read meters about 25 times a second.
inline constexpr double kMeterHoldSeconds = 0.040;

/// Holds a meter's peaks. A higher value shows at once; a lower one, from the meter's own fall, once the peak
/// has been shown for kMeterHoldSeconds. [audio]
class MeterHold {
public:
    explicit MeterHold(double sampleRateHz)
        : mHoldFrames(static_cast<std::int32_t>(std::ceil(kMeterHoldSeconds * sampleRateHz))) {}

    /// What to show after a buffer of `frames` frames at whose end the meter stood at `value`: 0 to 1, the
    /// declared range of a meter.
    float show(float value, std::int32_t frames) noexcept {
        mFramesLeft -= frames;
        if (value >= mShown || mFramesLeft <= 0) {
            mShown = std::clamp(value, 0.0F, 1.0F);
            mFramesLeft = mHoldFrames;
        }
        return mShown;
    }
    /// Shows 0 again, and holds nothing.
    void restart() noexcept {
        mFramesLeft = 0;
        mShown = 0.0F;
    }

private:
    std::int32_t mHoldFrames;
    std::int32_t mFramesLeft = 0;
    float mShown = 0.0F;
};

} // namespace varno

#endif
