// What the recursive parts of the stages share: they process a chunk frame by frame, with all samples of a
// frame in one vector.
#if defined(DEMOGAIN_RECURSION_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef DEMOGAIN_RECURSION_INL_H
#undef DEMOGAIN_RECURSION_INL_H
#else
#define DEMOGAIN_RECURSION_INL_H
#endif

#include "Alg/DemoGain_ChunkRows.h"

#include <hwy/highway.h>

#include <cstddef>

HWY_BEFORE_NAMESPACE();
namespace DemoGain {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// Most samples of a vector that runs over time. A stereo row then takes two vectors or more, and the
// processor overlaps their long chains of dependent operations; one vector of 16 samples was slower than two
// of 8.
inline constexpr std::size_t kMostSamples = 8;
// A vector over time: as many samples of a row as fit.
template<std::size_t kChannels>
using Samples = hn::CappedTag<float, kMostSamples>;
// The samples of one frame.
template<std::size_t kChannels>
using Frame = hn::FixedTag<float, kChannels>;

// Loads one value of each channel's part of the state.
template<std::size_t kChannels, class Part, class Word>
HWY_INLINE hn::Vec<Frame<kChannels>> loadFrame(const Part (&channels)[2], Word word) {
    float values[kChannels];
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        values[channel] = word(channels[channel]);
    }
    return hn::LoadU(Frame<kChannels>(), values);
}

// Stores one value to each channel's part of the state.
template<std::size_t kChannels, class Part, class Word>
HWY_INLINE void storeFrame(hn::Vec<Frame<kChannels>> frame, Part (&channels)[2], Word word) {
    float values[kChannels];
    hn::StoreU(frame, Frame<kChannels>(), values);
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        word(channels[channel]) = values[channel];
    }
}

// Frames that a recursion is run over at a time, and their samples.
inline constexpr std::size_t kBlockFrames = 2;
template<std::size_t kChannels>
using Block = hn::FixedTag<float, kBlockFrames * kChannels>;

// Loads samples of a row that a recursion wrote. A load that spans several recent stores has to wait until
// they have reached the cache. Recursions store blocks, so blocks are loaded.
template<std::size_t kChannels, class D>
HWY_INLINE hn::Vec<D> loadBlocks(D d, const float* samples) {
    if constexpr (hn::MaxLanes(D()) == kBlockFrames * kChannels) {
        return hn::Load(d, samples);
    } else {
        const hn::Half<D> half;
        const auto low = loadBlocks<kChannels>(half, samples);
        return hn::Combine(d, loadBlocks<kChannels>(half, samples + hn::MaxLanes(half)), low);
    }
}

// Frame `frame` of a row.
template<std::size_t kChannels>
HWY_INLINE hn::Vec<Frame<kChannels>> frameOf(const float* row, std::size_t frame) {
    return hn::LoadU(Frame<kChannels>(), row + frame * kChannels);
}

// The samples `now` of a row, delayed by one or two frames; `before` are the samples before them.
template<std::size_t kChannels, std::size_t kFrames, class D>
HWY_INLINE hn::Vec<D> delayed(D d, hn::Vec<D> now, hn::Vec<D> before) {
    constexpr std::size_t kBlockLanes = 4;
    constexpr std::size_t kLanes = hn::MaxLanes(D());
    constexpr std::size_t kShift = kFrames * kChannels;
    static_assert(kShift <= kBlockLanes && kLanes <= 2 * kBlockLanes);
    auto blockDelayed = before;
    if constexpr (kLanes > kBlockLanes) {
        blockDelayed = hn::ConcatLowerUpper(d, now, before);
    }
    if constexpr (kShift == kBlockLanes) {
        return blockDelayed;
    } else {
        return hn::CombineShiftRightBytes<(kBlockLanes - kShift) * sizeof(float)>(d, now, blockDelayed);
    }
}

// Runs a recursion over the frames of one vector, one after the other.
template<std::size_t kChannels, class D, class Recursion>
HWY_INLINE hn::Vec<D> stepThroughVector(D d, Recursion& ioRecursion, const ChunkRows<kChannels>& rows,
                                        std::size_t frame) {
    if constexpr (hn::MaxLanes(D()) == kChannels) {
        return ioRecursion.step(rows, frame);
    } else {
        const hn::Half<D> half;
        const auto low = stepThroughVector(half, ioRecursion, rows, frame);
        const auto high = stepThroughVector(half, ioRecursion, rows, frame + hn::MaxLanes(half) / kChannels);
        return hn::Combine(d, high, low);
    }
}

// Runs a recursion over a block of frames.
template<std::size_t kChannels, class Recursion>
HWY_INLINE void stepThroughBlock(Recursion& ioRecursion, ChunkRows<kChannels>& rows, std::size_t frame) {
    if constexpr (requires { Recursion::output(rows); }) {
        const Block<kChannels> block;
        hn::StoreU(stepThroughVector(block, ioRecursion, rows, frame), block,
                   Recursion::output(rows).v + frame * kChannels);
    } else {
        for (std::size_t i = frame; i < frame + kBlockFrames; ++i) {
            ioRecursion.step(rows, i);
        }
    }
}

// Runs a recursion over fewer frames than a chunk has. The rest of its output row repeats the last frame, so
// that later stages process only values that occur in the signal.
template<std::size_t kChannels, class Recursion>
HWY_INLINE void stepThroughPart(Recursion& ioRecursion, ChunkRows<kChannels>& rows, std::size_t frames) {
    auto last = ioRecursion.step(rows, 0);
    for (std::size_t frame = 0; frame < kChunkFrames; ++frame) {
        last = frame > 0 && frame < frames ? ioRecursion.step(rows, frame) : last;
        if constexpr (requires { Recursion::output(rows); }) {
            hn::StoreU(last, Frame<kChannels>(), Recursion::output(rows).v + frame * kChannels);
        }
    }
}

// Runs a recursion over the first `frames` frames of a chunk, 1 at least.
template<std::size_t kChannels, class Recursion>
HWY_INLINE void stepThrough(Recursion& ioRecursion, ChunkRows<kChannels>& rows, std::size_t frames) {
    Recursion recursion = ioRecursion;
    if (HWY_LIKELY(frames == kChunkFrames)) {
        for (std::size_t frame = 0; frame < kChunkFrames; frame += kBlockFrames) {
            stepThroughBlock(recursion, rows, frame);
        }
    } else {
        stepThroughPart(recursion, rows, frames);
    }
    ioRecursion = recursion;
}

// Runs several recursions at the same time, each over a chunk of its own: while one waits for its last
// result, the processor works on the others.
template<std::size_t kChannels, class... Recursions>
HWY_INLINE void stepTogether(ChunkRows<kChannels>& rows, Recursions&... ioRecursions) {
    for (std::size_t frame = 0; frame < kChunkFrames; frame += kBlockFrames) {
        (stepThroughBlock(ioRecursions, rows, frame), ...);
    }
}

} // namespace HWY_NAMESPACE
} // namespace DemoGain
HWY_AFTER_NAMESPACE();

#endif
