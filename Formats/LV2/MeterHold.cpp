#include "LV2/MeterHold.h"

#include <cmath>

namespace varno {

MeterHold::MeterHold(double sampleRateHz)
    : mHoldFrames(static_cast<std::int32_t>(std::ceil(kMeterHoldSeconds * sampleRateHz))) {
}

void MeterHold::restart() noexcept {
    mFramesLeft = 0;
    mShown = 0.0F;
}

} // namespace varno
