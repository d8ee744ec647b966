/// The meters of one instance.
#ifndef VARNO_HOST_METERBANK_H
#define VARNO_HOST_METERBANK_H

#include "AAX.h"

#include <atomic>
#include <cstddef>
#include <optional>
#include <vector>

namespace varno {

/// Rate at which a meter falls between buffers, in dB a second: about that of a peak programme meter (20 dB
/// in 1.7 s), so that a person can follow it. The routine itself only raises its taps.
inline constexpr double kMeterFallDBPerSecond = 12.0;
/// A tap below this (-120 dB) is put to 0, so that it does not fall for ever.
inline constexpr float kMeterFloor = 1.0e-6F;

/// Taps lie contiguously for the audio thread; values, peaks and clips can be read from any thread. The fall
/// depends on the time that a buffer lasts, not on the number of buffers.
class MeterBank {
public:
    /// One tap per identifier, all at 0.
    MeterBank(std::vector<AAX_CTypeID> ids, double sampleRateHz);

    /// The identifiers in the order of the taps. [any]
    const std::vector<AAX_CTypeID>& ids() const { return mIDs; }
    /// The index of a tap, if there is one of this identifier. [any]
    std::optional<std::size_t> indexOf(AAX_CTypeID id) const;

    /// The taps for the routine to raise; null when there are none. [audio]
    float* taps() noexcept { return mTaps.data(); }
    /// Lets the taps fall by the time of the last buffer, before the next one. [audio]
    void beforeBuffer() noexcept;
    /// Makes the taps readable, after a buffer of `frames` frames. [audio]
    void afterBuffer(std::int32_t frames) noexcept;

    /// The value after the latest buffer; 1.0 is full scale. [any]
    float value(std::size_t tap) const noexcept {
        return mReadings[tap].value.load(std::memory_order_relaxed);
    }
    /// The largest value since the peak was cleared. [any]
    float peak(std::size_t tap) const noexcept;
    /// Whether a value was above 1.0 since the clip was cleared. [any]
    bool clipped(std::size_t tap) const noexcept;
    /// Clear a peak to 0, a clip to false. A value that a buffer raises at the same time may win. [any]
    void clearPeak(std::size_t tap) noexcept;
    void clearClip(std::size_t tap) noexcept;
    /// Puts everything to 0; while nothing processes. [main]
    void reset() noexcept;

private:
    struct Readings {
        std::atomic<float> value{0.0F};
        std::atomic<float> peak{0.0F};
        std::atomic<bool> clipped{false};
    };

    std::vector<AAX_CTypeID> mIDs;
    std::vector<float> mTaps;
    std::vector<Readings> mReadings;
    double mFallPerFrame; ///< Natural logarithm of the factor of one frame, negative.
    std::int32_t mLastFrames = 0;
    std::int32_t mFactorFrames =
        0; ///< Frames whose fall mFactor is: most buffers are as long as the one before.
    float mFactor = 1.0F;
};

} // namespace varno

#endif
