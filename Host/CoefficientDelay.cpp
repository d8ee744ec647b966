#include "Host/CoefficientDelay.h"

#include <algorithm>

namespace varno {

CoefficientDelay::CoefficientDelay(std::size_t imageBytes, std::int32_t delayFrames)
    : mInForce(imageBytes),
      mWaiting(kMostWaiting, Waiting{0, std::vector<std::byte>(imageBytes)}),
      mDelayFrames(delayFrames) {
}

void CoefficientDelay::take(std::span<const std::byte> image, std::int64_t position) noexcept {
    if (mIsStarting) {
        std::ranges::copy(image, mInForce.begin());
        return;
    }
    const std::int64_t due = position + mDelayFrames;
    const bool replacesLast = mCount > 0 && (mCount == kMostWaiting || at(mCount - 1).due == due);
    mCount += replacesLast ? 0 : 1;
    Waiting& last = at(mCount - 1);
    last.due = due;
    std::ranges::copy(image, last.image.begin());
}

std::int32_t CoefficientDelay::begin(std::int64_t position, std::int32_t frames) noexcept {
    mIsStarting = mIsStarting && frames == 0;
    while (mCount > 0 && at(0).due <= position) {
        putIntoForce(at(0));
        mFirst = (mFirst + 1) % kMostWaiting;
        --mCount;
    }
    return mCount > 0 ? static_cast<std::int32_t>(std::min<std::int64_t>(at(0).due - position, frames))
                      : frames;
}

void CoefficientDelay::restart() noexcept {
    if (mCount > 0) {
        putIntoForce(at(mCount - 1));
    }
    mCount = 0;
    mIsStarting = true;
}

void CoefficientDelay::putIntoForce(const Waiting& waiting) noexcept {
    std::ranges::copy(waiting.image, mInForce.begin());
}

} // namespace varno
