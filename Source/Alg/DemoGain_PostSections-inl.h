// The states of the post sections at the end of a buffer.
#if defined(DEMOGAIN_POSTSECTIONS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef DEMOGAIN_POSTSECTIONS_INL_H
#undef DEMOGAIN_POSTSECTIONS_INL_H
#else
#define DEMOGAIN_POSTSECTIONS_INL_H
#endif

#include "Alg/DemoGain_ChunkRows.h"
#include "Alg/DemoGain_PostResponses.h"
#include "Alg/DemoGain_Recursion-inl.h"
#include "DemoGain_Alg.h"

#include <hwy/highway.h>

#include <algorithm>
#include <cstddef>

HWY_BEFORE_NAMESPACE();
namespace DemoGain {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// Sum of the frames that a vector holds.
template<std::size_t kChannels, class D>
HWY_INLINE hn::Vec<Frame<kChannels>> sumOfFrames(D /*d*/, hn::Vec<D> frames) {
    if constexpr (hn::MaxLanes(D()) == kChannels) {
        return frames;
    } else {
        const hn::Half<D> half;
        return sumOfFrames<kChannels>(half,
                                      hn::Add(hn::LowerHalf(half, frames), hn::UpperHalf(half, frames)));
    }
}

// The last two outputs of both sections: 0 is the last one.
template<std::size_t kChannels>
struct PostOutputs {
    float mA[2][kChannels];
    float mB[2][kChannels];
};

// What the last chunks of a buffer of `frames` frames make of the outputs.
template<std::size_t kChannels>
HWY_INLINE PostOutputs<kChannels> answerToInput(const RowRing<kChannels>& clipped, std::size_t frames) {
    const Samples<kChannels> d;
    const PostWeights<kChannels>& weights = kPostWeights<kChannels>;
    const std::size_t chunks = (frames + kChunkFrames - 1) / kChunkFrames;
    const std::size_t first = chunks - std::min(chunks, kPostChunks);
    // The last frame of the buffer meets the last weight, wherever in its chunk it stands.
    const std::size_t shift = kPostFrames - (frames - first * kChunkFrames);
    auto a1 = hn::Zero(d);
    auto a2 = hn::Zero(d);
    auto b1 = hn::Zero(d);
    auto b2 = hn::Zero(d);
    for (std::size_t chunk = first; chunk < chunks; ++chunk) {
        const float* row = clipped[chunk];
        const std::size_t start = (shift + (chunk - first) * kChunkFrames) * kChannels;
        for (std::size_t i = 0; i < kRowSize<kChannels>; i += hn::Lanes(d)) {
            const auto y = hn::Load(d, row + i);
            const float* a = weights.mA + start + i;
            const float* b = weights.mB + start + i;
            a1 = hn::Add(a1, hn::Mul(y, hn::LoadU(d, a)));
            b1 = hn::Add(b1, hn::Mul(y, hn::LoadU(d, b)));
            // One frame earlier a sample was one frame younger.
            a2 = hn::Add(a2, hn::Mul(y, hn::LoadU(d, a + kChannels)));
            b2 = hn::Add(b2, hn::Mul(y, hn::LoadU(d, b + kChannels)));
        }
    }
    PostOutputs<kChannels> outputs;
    const Frame<kChannels> frame;
    hn::StoreU(sumOfFrames<kChannels>(d, a1), frame, outputs.mA[0]);
    hn::StoreU(sumOfFrames<kChannels>(d, a2), frame, outputs.mA[1]);
    hn::StoreU(sumOfFrames<kChannels>(d, b1), frame, outputs.mB[0]);
    hn::StoreU(sumOfFrames<kChannels>(d, b2), frame, outputs.mB[1]);
    return outputs;
}

// Adds what a short buffer leaves of the state before it: less than a buffer of more than kPostFrames frames
// leaves is far below what counts.
inline void addDecay(const SDemoGain_PostStates& before, std::size_t frames, float (&ioA)[2],
                     float (&ioB)[2]) {
    const float words[ePostWords] = {before.mA.x1, before.mA.x2, before.mA.y1, before.mA.y2,
                                     before.mB.x1, before.mB.x2, before.mB.y1, before.mB.y2};
    for (std::size_t age = 0; age < 2; ++age) {
        for (std::size_t word = 0; word < ePostWords; ++word) {
            ioA[age] += kPostDecay.mA[frames - age][word] * words[word];
            ioB[age] += kPostDecay.mB[frames - age][word] * words[word];
        }
    }
}

// Takes the states of the post sections over a buffer of `frames` frames whose clipped samples end in the
// ring.
template<std::size_t kChannels>
HWY_INLINE void advancePostSections(const RowRing<kChannels>& clipped, std::size_t frames,
                                    SDemoGain_PostStates (&ioStates)[2]) {
    const PostOutputs<kChannels> outputs = answerToInput(clipped, frames);
    const auto sample = [&](std::size_t frame, std::size_t channel) {
        return clipped[frame / kChunkFrames][frame % kChunkFrames * kChannels + channel];
    };
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        SDemoGain_PostStates& state = ioStates[channel];
        float a[2] = {outputs.mA[0][channel], outputs.mA[1][channel]};
        float b[2] = {outputs.mB[0][channel], outputs.mB[1][channel]};
        if (frames <= kPostFrames) {
            addDecay(state, frames, a, b);
        }
        const float x2 = frames > 1 ? sample(frames - 2, channel) : state.mA.x1;
        state.mA = {sample(frames - 1, channel), x2, a[0], a[1]};
        state.mB = {a[0], a[1], b[0], b[1]};
    }
}

} // namespace HWY_NAMESPACE
} // namespace DemoGain
HWY_AFTER_NAMESPACE();

#endif
