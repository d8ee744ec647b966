/// Coefficients that come into force later than they arrive.
#ifndef VARNO_HOST_COEFFICIENTDELAY_H
#define VARNO_HOST_COEFFICIENTDELAY_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace varno {

/// Keeps images of all ports until the sound that they belong to has come through a filter. Allocates at
/// construction alone. [audio]
class CoefficientDelay {
public:
    /// Images that wait at a time. Where more arrive, the last one replaces the one before.
    static constexpr std::size_t kMostWaiting = 32;

    /// @param imageBytes of every image @param delayFrames 0 or more [main]
    CoefficientDelay(std::size_t imageBytes, std::int32_t delayFrames);

    /// The image in force, at the same place always; zeros before the first.
    const std::byte* inForce() const noexcept { return mInForce.data(); }
    /// An image arrives before the buffer that begins at frame `position`.
    void take(std::span<const std::byte> image, std::int64_t position) noexcept;
    /// Puts into force what is due at frame `position`.
    /// @return frames for which this stays so, 0 to `frames`; of 0 frames 0
    std::int32_t begin(std::int64_t position, std::int32_t frames) noexcept;
    /// What waits and what arrives before the next frame comes into force at once.
    void restart() noexcept;

private:
    struct Waiting {
        std::int64_t due = 0;
        std::vector<std::byte> image;
    };

    void putIntoForce(const Waiting& waiting) noexcept;
    Waiting& at(std::size_t place) noexcept { return mWaiting[(mFirst + place) % kMostWaiting]; }

    std::vector<std::byte> mInForce;
    std::vector<Waiting> mWaiting; ///< A ring.
    std::size_t mFirst = 0;
    std::size_t mCount = 0;
    std::int32_t mDelayFrames;
    bool mIsStarting = true;
};

} // namespace varno

#endif
