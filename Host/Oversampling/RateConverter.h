/// Sound of one channel at a multiple of its rate, and back.
#ifndef VARNO_HOST_OVERSAMPLING_RATECONVERTER_H
#define VARNO_HOST_OVERSAMPLING_RATECONVERTER_H

#include "Host/Oversampling/HalfBandKernels.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace varno {

/// The factors of oversampling: 1 is none.
inline constexpr std::array<std::int32_t, 4> kOversamplingFactors = {1, 2, 4, 8};

/// Doublings that make up a factor of kOversamplingFactors. [any]
constexpr std::size_t stagesOf(std::int32_t factor) {
    std::size_t stages = 0;
    for (; factor > 1; factor /= 2) {
        ++stages;
    }
    return stages;
}

/// By how many samples of the higher rate each direction delays the sound. [any]
constexpr std::int32_t converterDelay(std::int32_t factor) {
    std::int32_t delay = 0;
    for (std::size_t stage = 0; stage < stagesOf(factor); ++stage) {
        delay = 2 * delay + static_cast<std::int32_t>(halfBandDelay(stage));
    }
    return delay;
}

/// Samples with those before them: each block is appended to the end of the block before.
class SampleHistory {
public:
    /// Keeps `history` samples before blocks of up to `mostSamples`. Allocates. [main]
    SampleHistory(std::size_t history, std::size_t mostSamples)
        : mSamples(history + mostSamples + kKernelSlack),
          mHistory(history) {}

    /// Where a block's samples are written to and read from. [audio]
    float* block() noexcept { return mSamples.data() + mHistory; }
    /// The block of that many samples is done. [audio]
    void passed(std::size_t samples) noexcept;
    /// Silence before the next block. [audio]
    void clear() noexcept;

private:
    std::vector<float> mSamples;
    std::size_t mHistory;
};

/// From a rate to a multiple of it. Allocates at construction alone.
class Upsampler {
public:
    /// @param factor of kOversamplingFactors, above 1 @param mostFrames of a block [main]
    Upsampler(std::int32_t factor, std::size_t mostFrames, const HalfBandKernels& kernels);

    /// The next block: `frames` samples become `factor` times as many, which stay until the next call; behind
    /// them is a slack of kKernelSlack. [audio]
    float* process(const float* in, std::size_t frames) noexcept;
    /// Silence before the next block. [audio]
    void clear() noexcept;

private:
    const HalfBandKernels& mKernels;
    std::vector<SampleHistory> mInputs; ///< Of each stage; the last holds what comes out.
};

/// From a multiple of a rate to the rate. Allocates at construction alone.
class Downsampler {
public:
    /// @param factor of kOversamplingFactors, above 1 @param mostFrames of a block
    /// @param extraDelay samples of the higher rate by which the sound is delayed besides [main]
    Downsampler(std::int32_t factor, std::size_t mostFrames, std::size_t extraDelay,
                const HalfBandKernels& kernels);

    /// The next block: of `frames` times the factor samples, `frames` are written; kKernelSlack samples
    /// behind those that go in are read. Of each two samples of a stage, the later one is that which comes
    /// out. [audio]
    void process(const float* in, float* out, std::size_t frames) noexcept;
    /// Silence before the next block. [audio]
    void clear() noexcept;

private:
    struct Stage {
        SampleHistory even;
        SampleHistory odd;
    };

    const HalfBandKernels& mKernels;
    SampleHistory mDelayed;
    std::size_t mExtraDelay;
    std::vector<Stage> mStages; ///< Of the lowest rate first.
    std::vector<float> mBetween;
};

} // namespace varno

#endif
