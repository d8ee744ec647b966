// What the recursive parts of the stages share: they process a chunk frame by frame, with all samples of a
// frame in one vector.
#if defined(DEMOGAIN_RECURSION_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef DEMOGAIN_RECURSION_INL_H
#undef DEMOGAIN_RECURSION_INL_H
#else
#define DEMOGAIN_RECURSION_INL_H
#endif

#include "Alg/DemoGain_ChunkRows.h"
#include "Alg/DemoGain_Lanes.h"
#include "DemoGain_Alg.h"

#include <hwy/highway.h>

#include <cstddef>

HWY_BEFORE_NAMESPACE();
namespace DemoGain {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// A vector over time: as many samples of a row as fit.
using Samples = hn::CappedTag<float, kMostSamples>;
// The samples of one frame.
template<std::size_t kLanes>
using Frame = hn::FixedTag<float, kLanes>;

// A value of each lane, for a vector over time or for a frame.
template<class D>
HWY_INLINE hn::Vec<D> lanes(D d, const LaneValues& values) {
    return hn::Load(d, values.v);
}

// Where a switch of LaneSettings is on.
template<class D>
HWY_INLINE hn::Mask<D> isOn(D d, const LaneValues& values) {
    return hn::Gt(lanes(d, values), hn::Zero(d));
}

// A vector of kCount values: `value` returns each by its number, from kFirst on. They are put together in
// registers: a load that spans several recent stores has to wait until they have reached the cache.
template<std::size_t kCount, std::size_t kFirst = 0, class Value>
HWY_INLINE hn::Vec<Frame<kCount>> collect(const Value& value) {
    if constexpr (kCount == 1) {
        return hn::Set(Frame<1>(), value(kFirst));
    } else {
        constexpr std::size_t kHalf = kCount / 2;
        return hn::Combine(Frame<kCount>(), collect<kHalf, kFirst + kHalf>(value),
                           collect<kHalf, kFirst>(value));
    }
}

// Loads a word of each lane's state: `word` returns the one of a state and a channel.
template<std::size_t kInstances, std::size_t kChannels, class Word>
HWY_INLINE auto loadFrame(const Group<kInstances, kChannels>& group, Word word) {
    return collect<kInstances * kChannels>(
        [&](std::size_t lane) HWY_ATTR { return word(group.stateOf(lane), group.channelOf(lane)); });
}

// Stores a word of each lane's state.
template<std::size_t kInstances, std::size_t kChannels, class Word>
HWY_INLINE void storeFrame(const float* values, const Group<kInstances, kChannels>& group, Word word) {
    for (std::size_t lane = 0; lane < group.kLanes; ++lane) {
        word(group.stateOf(lane), group.channelOf(lane)) = values[lane];
    }
}
template<class V, std::size_t kInstances, std::size_t kChannels, class Word>
HWY_INLINE void storeFrame(V frame, const Group<kInstances, kChannels>& group, Word word) {
    constexpr std::size_t kLanes = kInstances * kChannels;
    float values[kLanes];
    hn::StoreU(frame, Frame<kLanes>(), values);
    storeFrame(static_cast<const float*>(values), group, word);
}

// Frames that a recursion is run over at a time: two, or one where no more fit into a vector.
template<std::size_t kLanes>
inline constexpr std::size_t kBlockFrames = hn::MaxLanes(Samples()) / kLanes > 1 ? 2 : 1;
template<std::size_t kLanes>
using Block = hn::FixedTag<float, kBlockFrames<kLanes> * kLanes>;

// Loads samples of a row that a recursion wrote. A load that spans several recent stores has to wait until
// they have reached the cache. Recursions store blocks, so blocks are loaded.
template<std::size_t kLanes, class D>
HWY_INLINE hn::Vec<D> loadBlocks(D d, const float* samples) {
    if constexpr (hn::MaxLanes(D()) == hn::MaxLanes(Block<kLanes>())) {
        return hn::Load(d, samples);
    } else {
        const hn::Half<D> half;
        const auto low = loadBlocks<kLanes>(half, samples);
        return hn::Combine(d, loadBlocks<kLanes>(half, samples + hn::MaxLanes(half)), low);
    }
}

// Frame `frame` of a row.
template<std::size_t kLanes>
HWY_INLINE hn::Vec<Frame<kLanes>> frameOf(const float* row, std::size_t frame) {
    return hn::LoadU(Frame<kLanes>(), row + frame * kLanes);
}

// The last two vectors of a row that is read vector by vector: what a delay looks back at.
template<class D>
struct VectorsBefore {
    hn::Vec<D> mLast;
    hn::Vec<D> mLastButOne;

    HWY_INLINE void push(hn::Vec<D> now) {
        mLastButOne = mLast;
        mLast = now;
    }
};

// The samples `now` of a row, delayed by one or two frames.
template<std::size_t kLanes, std::size_t kFrames, class D>
HWY_INLINE hn::Vec<D> delayed(D d, hn::Vec<D> now, const VectorsBefore<D>& before) {
    constexpr std::size_t kBlockSamples = 4; // what shifts across vectors move within
    constexpr std::size_t kVectorSamples = hn::MaxLanes(D());
    constexpr std::size_t kShift = kFrames * kLanes;
    static_assert(kShift <= 2 * kBlockSamples && kVectorSamples <= 2 * kBlockSamples);
    if constexpr (kShift == 2 * kVectorSamples) {
        return before.mLastButOne;
    } else if constexpr (kShift == kVectorSamples) {
        return before.mLast;
    } else {
        auto blockDelayed = before.mLast;
        if constexpr (kVectorSamples > kBlockSamples) {
            blockDelayed = hn::ConcatLowerUpper(d, now, before.mLast);
        }
        if constexpr (kShift == kBlockSamples) {
            return blockDelayed;
        } else {
            return hn::CombineShiftRightBytes<(kBlockSamples - kShift) * sizeof(float)>(d, now, blockDelayed);
        }
    }
}

// Runs a recursion over the frames of one vector, one after the other.
template<std::size_t kLanes, std::size_t kFrames, class D, class Recursion>
HWY_INLINE hn::Vec<D> stepThroughVector(D d, Recursion& ioRecursion, const ChunkRows<kLanes, kFrames>& rows,
                                        std::size_t frame) {
    if constexpr (hn::MaxLanes(D()) == kLanes) {
        return ioRecursion.step(rows, frame);
    } else {
        const hn::Half<D> half;
        const auto low = stepThroughVector(half, ioRecursion, rows, frame);
        const auto high = stepThroughVector(half, ioRecursion, rows, frame + hn::MaxLanes(half) / kLanes);
        return hn::Combine(d, high, low);
    }
}

// Runs a recursion over a block of frames.
template<std::size_t kLanes, std::size_t kFrames, class Recursion>
HWY_INLINE void stepThroughBlock(Recursion& ioRecursion, ChunkRows<kLanes, kFrames>& rows,
                                 std::size_t frame) {
    if constexpr (requires { Recursion::output(rows); }) {
        const Block<kLanes> block;
        hn::StoreU(stepThroughVector(block, ioRecursion, rows, frame), block,
                   Recursion::output(rows).v + frame * kLanes);
    } else {
        for (std::size_t i = frame; i < frame + kBlockFrames<kLanes>; ++i) {
            ioRecursion.step(rows, i);
        }
    }
}

// Runs a recursion over fewer frames than a chunk has. The rest of its output row repeats the last frame, so
// that later stages process only values that occur in the signal.
template<std::size_t kLanes, std::size_t kFrames, class Recursion>
HWY_INLINE void stepThroughPart(Recursion& ioRecursion, ChunkRows<kLanes, kFrames>& rows,
                                std::size_t frames) {
    auto last = ioRecursion.step(rows, 0);
    for (std::size_t frame = 0; frame < kFrames; ++frame) {
        last = frame > 0 && frame < frames ? ioRecursion.step(rows, frame) : last;
        if constexpr (requires { Recursion::output(rows); }) {
            hn::StoreU(last, Frame<kLanes>(), Recursion::output(rows).v + frame * kLanes);
        }
    }
}

// Runs a recursion over the first `frames` frames of a chunk, 1 at least.
template<std::size_t kLanes, std::size_t kFrames, class Recursion>
HWY_INLINE void stepThrough(Recursion& ioRecursion, ChunkRows<kLanes, kFrames>& rows, std::size_t frames) {
    Recursion recursion = ioRecursion;
    if (HWY_LIKELY(frames == kFrames)) {
        for (std::size_t frame = 0; frame < kFrames; frame += kBlockFrames<kLanes>) {
            stepThroughBlock(recursion, rows, frame);
        }
    } else {
        stepThroughPart(recursion, rows, frames);
    }
    ioRecursion = recursion;
}

// Runs several recursions at the same time, each over a chunk of its own: while one waits for its last
// result, the processor works on the others.
template<std::size_t kLanes, std::size_t kFrames, class... Recursions>
HWY_INLINE void stepTogether(ChunkRows<kLanes, kFrames>& rows, Recursions&... ioRecursions) {
    for (std::size_t frame = 0; frame < kFrames; frame += kBlockFrames<kLanes>) {
        (stepThroughBlock(ioRecursions, rows, frame), ...);
    }
}

} // namespace HWY_NAMESPACE
} // namespace DemoGain
HWY_AFTER_NAMESPACE();

#endif
