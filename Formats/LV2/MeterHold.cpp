#include "MeterHold.h"

#include <cmath>

namespace varno {

MeterHold::MeterHold(double sampleRateHz)
    : mHoldFrames(static_cast<int32_t>(std::ceil(kMeterHoldSeconds * sampleRateHz))) {
}

float MeterHold::show(float value, int32_t frames) noexcept {
    mFramesLeft -= frames;
    if (value >= mShown || mFramesLeft <= 0) {
        mShown = value;
        mFramesLeft = mHoldFrames;
    }
    return mShown;
}

void MeterHold::restart() noexcept {
    mFramesLeft = 0;
    mShown = 0.0F;
}

} // namespace varno
