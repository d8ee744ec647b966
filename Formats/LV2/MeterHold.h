/// What a meter port shows.
#ifndef VARNO_FORMATS_LV2_METERHOLD_H
#define VARNO_FORMATS_LV2_METERHOLD_H

#include <cstdint>

namespace varno {

/// Least time for which a peak stays: windows of hosts look about 25 times a second.
inline constexpr double kMeterHoldSeconds = 0.040;

/// Holds a meter's peaks. A higher value shows at once; a lower one, which the meter's own fall has led to,
/// once the peak has stayed for kMeterHoldSeconds. [audio]
class MeterHold {
public:
    explicit MeterHold(double sampleRateHz);

    /// What to show after a buffer of `frames` frames at whose end the meter stood at `value`.
    float show(float value, std::int32_t frames) noexcept {
        mFramesLeft -= frames;
        if (value >= mShown || mFramesLeft <= 0) {
            mShown = value;
            mFramesLeft = mHoldFrames;
        }
        return mShown;
    }
    /// Back to nothing.
    void restart() noexcept;

private:
    std::int32_t mHoldFrames;
    std::int32_t mFramesLeft = 0;
    float mShown = 0.0F;
};

} // namespace varno

#endif
