#include "Host/MeterBank.h"

#include <algorithm>
#include <cmath>

namespace varno {

MeterBank::MeterBank(std::vector<AAX_CTypeID> ids, double sampleRateHz)
    : mIDs(std::move(ids)),
      mTaps(mIDs.size(), 0.0F),
      mReadings(mIDs.size()),
      mFallPerFrame(-kMeterFallDBPerSecond / 20.0 * std::log(10.0) / sampleRateHz) {
}

std::optional<std::size_t> MeterBank::indexOf(AAX_CTypeID id) const {
    const auto found = std::find(mIDs.begin(), mIDs.end(), id);
    return found == mIDs.end() ? std::nullopt : std::optional<std::size_t>(found - mIDs.begin());
}

void MeterBank::beforeBuffer() noexcept {
    if (mLastFrames == 0) {
        return;
    }
    if (mLastFrames != mFactorFrames) {
        mFactor = static_cast<float>(std::exp(mFallPerFrame * mLastFrames));
        mFactorFrames = mLastFrames;
    }
    for (float& tap : mTaps) {
        // Written so that a tap which is not a number ends at 0 too.
        tap = tap * mFactor >= kMeterFloor ? tap * mFactor : 0.0F;
    }
    mLastFrames = 0;
}

void MeterBank::afterBuffer(std::int32_t frames) noexcept {
    mLastFrames = frames;
    for (std::size_t i = 0; i < mTaps.size(); ++i) {
        Readings& readings = mReadings[i];
        readings.value.store(mTaps[i], std::memory_order_relaxed);
        if (mTaps[i] > readings.peak.load(std::memory_order_relaxed)) {
            readings.peak.store(mTaps[i], std::memory_order_relaxed);
        }
        if (mTaps[i] > 1.0F) {
            readings.clipped.store(true, std::memory_order_relaxed);
        }
    }
}

float MeterBank::peak(std::size_t tap) const noexcept {
    return mReadings[tap].peak.load(std::memory_order_relaxed);
}

bool MeterBank::clipped(std::size_t tap) const noexcept {
    return mReadings[tap].clipped.load(std::memory_order_relaxed);
}

void MeterBank::clearPeak(std::size_t tap) noexcept {
    mReadings[tap].peak.store(0.0F, std::memory_order_relaxed);
}

void MeterBank::clearClip(std::size_t tap) noexcept {
    mReadings[tap].clipped.store(false, std::memory_order_relaxed);
}

void MeterBank::reset() noexcept {
    std::fill(mTaps.begin(), mTaps.end(), 0.0F);
    mLastFrames = 0;
    for (std::size_t i = 0; i < mReadings.size(); ++i) {
        mReadings[i].value.store(0.0F, std::memory_order_relaxed);
        clearPeak(i);
        clearClip(i);
    }
}

} // namespace varno
