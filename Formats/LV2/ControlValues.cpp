#include "LV2/ControlValues.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace varno {

namespace {

// Equal to nothing, so that any value of a port is new.
constexpr float kNeverSeen = std::numeric_limits<float>::quiet_NaN();

} // namespace

ControlValues::ControlValues(GlidingValues& values)
    : mValues(values),
      mSeen(values.size(), kNeverSeen) {
}

void ControlValues::restart() noexcept {
    mIsStarting = true;
    std::ranges::fill(mSeen, kNeverSeen);
}

void ControlValues::read(const float* const* ports) noexcept {
    // Without a branch for each: usually none has changed.
    unsigned moved = 0;
    for (std::size_t i = 0; i < mSeen.size(); ++i) {
        moved |= static_cast<unsigned>(*ports[i] != mSeen[i]);
    }
    if (moved != 0) {
        takeMoved(ports);
    }
}

void ControlValues::takeMoved(const float* const* ports) noexcept {
    const auto move = mIsStarting ? GlidingValues::Move::kAtOnce : GlidingValues::Move::kGlide;
    for (std::size_t i = 0; i < mSeen.size(); ++i) {
        const float found = *ports[i];
        if (found != mSeen[i]) {
            mSeen[i] = found;
            const float value = std::isnan(found) && mIsStarting ? mValues.fallback(i) : found;
            if (!std::isnan(value)) {
                mValues.moveTo(i, value, move);
            }
        }
    }
    mIsStarting = false;
}

} // namespace varno
