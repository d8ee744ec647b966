/// A bypass without clicks, which a host puts around an instance.
#ifndef VARNO_HOST_BYPASS_H
#define VARNO_HOST_BYPASS_H

#include "Host/Oversampling/Oversampling.h"

#include <atomic>
#include <cstdint>
#include <span>
#include <vector>

namespace varno {

/// How long the change between the processed and the bypassed sound takes.
inline constexpr double kBypassFadeSeconds = 0.010;

/// What a fade is made for.
struct BypassFormat {
    std::size_t channels = 2;
    std::int32_t maximumFrames = 512; ///< Largest buffer, at least 1.
    double sampleRateHz = kDefaultSampleRateHz;
    std::int32_t mostLatencyFrames = 0; ///< The largest of setLatency.
};

/// Fades linearly between what was processed and the delayed input. Outside a fade both pass bit for bit. The
/// inaudible one is computed too, so that the load hardly depends on the bypass. No lock, no allocation, no
/// system call, no exception, but at construction. [audio]
class BypassFade {
public:
    /// Allocates for the largest buffer. [main]
    explicit BypassFade(const BypassFormat& format);

    /// The latency of the processed sound: the bypassed one is delayed by as much, from the next `blend` on.
    /// It is 0 at the start.
    void setLatency(std::int32_t frames) noexcept { mLatencyFrames = frames; }
    /// Clears the sound so far; the state of the next `keep` is in force at once.
    void restart() noexcept;
    /// Keeps what it needs of a buffer of each channel, of 1 to maximumFrames frames, before it is processed:
    /// the output may take its memory.
    void keep(std::span<const float* const> inputs, std::int32_t frames, bool isBypassed) noexcept;
    /// Replaces the processed sound by the bypassed one, or fades between them, in the outputs of the buffer
    /// that was kept.
    void blend(std::span<float* const> outputs, std::int32_t frames) noexcept;

private:
    bool isAllProcessed() const noexcept { return mPosition == mFadeFrames && mEnd == mFadeFrames; }
    void keepEnd(std::vector<float>& kept, const float* input, std::int32_t frames) const noexcept;
    void fade(float* output, const float* bypassed, std::int32_t frames) const noexcept;

    /// Per channel the last mHistoryFrames frames before the present buffer, then that buffer.
    std::vector<std::vector<float>> mKept;
    std::int32_t mHistoryFrames;
    std::int32_t mLatencyFrames = 0;
    std::int32_t mFadeFrames;
    std::int32_t mPosition = 0; ///< 0: bypassed, mFadeFrames: processed.
    std::int32_t mEnd = 0;      ///< Where the fade leads to, or has led.
    bool mIsStarting = true;
};

/// An effect that can be bypassed while it processes. It goes on processing meanwhile, so that it can be
/// heard again at any time; its meters of gain reduction read 0 then. The effect's own master bypass is
/// another one, which this class leaves alone.
class Bypass {
public:
    /// Not bypassed. @param effect outlives this object; nothing else processes it [main]
    explicit Bypass(Oversampling& effect);

    Oversampling& effect() noexcept { return mEffect; }
    const Oversampling& effect() const noexcept { return mEffect; }

    /// In force from the next block on. [any]
    void set(bool isBypassed) noexcept { mIsBypassed.store(isBypassed, std::memory_order_relaxed); }
    bool isBypassed() const noexcept { return mIsBypassed.load(std::memory_order_relaxed); }
    /// Resets the effect and puts the fade back to its start: the state at the next block is in force at
    /// once. While nothing processes. [main]
    void reset();
    /// Processes, then fades where the bypass changes, then where the oversampling does. Channels may share
    /// memory as those of an instance may. No lock, no allocation, no system call, no exception. [audio]
    void process(const float* const* inputs, float* const* outputs, std::int32_t frames) noexcept;

private:
    Oversampling& mEffect;
    BypassFade mFade;
    std::vector<const float*> mInputs; ///< Of the present buffer.
    std::vector<float*> mOutputs;
    std::atomic<bool> mIsBypassed{false};
};

} // namespace varno

#endif
