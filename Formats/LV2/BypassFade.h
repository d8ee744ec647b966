/// The host's bypass of a plug-in.
#ifndef VARNO_FORMATS_LV2_BYPASSFADE_H
#define VARNO_FORMATS_LV2_BYPASSFADE_H

#include <cstdint>
#include <span>
#include <vector>

namespace varno {

/// Frames by which the processed sound comes later than the input: the detector looks that far ahead. The
/// bypassed sound comes as late.
inline constexpr std::int32_t kLatencyFrames = 1;
/// How long the change between the processed and the bypassed sound takes.
inline constexpr double kFadeSeconds = 0.010;

/// Fades linearly between what was processed and the input delayed by kLatencyFrames. Neither is altered
/// where no fade is under way, whatever its bits. What is not to be heard is computed all the same, so that
/// the load hardly depends on the bypass. [audio]
class BypassFade {
public:
    /// Buffers of up to `maximumFrames`. [main]
    BypassFade(std::size_t channels, std::int32_t maximumFrames, double sampleRateHz);

    /// Forgets the sound so far; the state that the next `keep` names is in force at once.
    void restart() noexcept;
    /// Keeps what it needs of a buffer of each channel, of at least one frame, before it is processed: the
    /// output may take its memory.
    void keep(std::span<const float* const> inputs, std::int32_t frames, bool isEnabled) noexcept;
    /// Puts the bypassed sound in the place of the processed one as far as it is to be heard, in the outputs
    /// of the buffer that was kept.
    void blend(std::span<float* const> outputs, std::int32_t frames) noexcept;

private:
    bool isAllProcessed() const noexcept { return mPosition == mFadeFrames && mEnd == mFadeFrames; }
    void fade(float* output, const float* bypassed, std::int32_t frames) const noexcept;

    /// Per channel the last frame of the buffer before, then the present buffer.
    std::vector<std::vector<float>> mKept;
    std::int32_t mFadeFrames;
    std::int32_t mPosition = 0; ///< 0: bypassed, mFadeFrames: processed.
    std::int32_t mEnd = 0;      ///< Where the fade leads to, or has led.
    bool mIsStarting = true;
};

} // namespace varno

#endif
