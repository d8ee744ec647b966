// The post sections. No output depends on them, only their state at the end of a buffer is needed. Their
// responses decay within a few dozen frames, so this state is a weighted sum of the last samples and, in
// short buffers, of the state before. The weights are computed while compiling, from the coefficients that a
// reset puts into every state and nothing else changes. Their sums round differently from the sections: the
// state agrees to 2e-6.
#if defined(DEMOGAIN_POSTSECTIONS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef DEMOGAIN_POSTSECTIONS_INL_H
#undef DEMOGAIN_POSTSECTIONS_INL_H
#else
#define DEMOGAIN_POSTSECTIONS_INL_H
#endif

#include "Alg/DemoGain_ChunkRows.h"
#include "Alg/DemoGain_Recursion-inl.h"
#include "Alg/DemoGain_State.h"
#include "DemoGain_Alg.h"

#include <hwy/highway.h>

#include <algorithm>
#include <array>
#include <cstddef>

HWY_BEFORE_NAMESPACE();
namespace DemoGain {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// Chunks at the end of a buffer that the state is computed from. The slowest pole of the two sections lies at
// 0.665: after 49 frames, the fewest that these chunks hold, a response is below 1e-8. They have kChunkFrames
// frames each, also where the pipeline has longer ones, so that the state has the same bits.
inline constexpr std::size_t kPostChunks = kRingChunks - 1;
inline constexpr std::size_t kPostFrames = kPostChunks * kChunkFrames;

// State words of both sections.
enum EPostWord { eAx1, eAx2, eAy1, eAy2, eBx1, eBx2, eBy1, eBy2, ePostWords };
using PostWords = std::array<double, ePostWords>;

// The state one frame after `s`, with the input `x`.
constexpr PostWords stepPostSections(const PostWords& s, double x) {
    const auto run = [](const SDemoGain_PostSection& c, double in, double x1, double x2, double y1,
                        double y2) {
        return (double{c.b0} * in + double{c.b1} * x1 + double{c.b2} * x2 - double{c.a1} * y1 -
                double{c.a2} * y2) *
               double{c.g};
    };
    const double a = run(kDemoGain_PostA, x, s[eAx1], s[eAx2], s[eAy1], s[eAy2]);
    const double b = run(kDemoGain_PostB, a, s[eBx1], s[eBx2], s[eBy1], s[eBy2]);
    return {x, s[eAx1], a, s[eAy1], a, s[eBx1], b, s[eBy1]};
}

// Zero-input responses: the outputs of A and B after some frames of silence, by number of frames and by the
// state word that was 1 before them.
struct PostZeroInputResponse {
    float mA[kPostFrames + 1][ePostWords];
    float mB[kPostFrames + 1][ePostWords];
};

inline constexpr PostZeroInputResponse kPostZeroInput = [] {
    PostZeroInputResponse decay{};
    for (std::size_t word = 0; word < ePostWords; ++word) {
        PostWords state{};
        state[word] = 1.0;
        for (std::size_t frame = 0; frame <= kPostFrames; ++frame) {
            decay.mA[frame][word] = static_cast<float>(state[eAy1]);
            decay.mB[frame][word] = static_cast<float>(state[eBy1]);
            state = stepPostSections(state, 0.0);
        }
    }
    return decay;
}();

// Impulse responses of A and of A and B in series, reversed in time, with each value once per lane so that
// their layout is that of the samples of rows. Entry kPostFrames - 1 is the response to the last frame; zeros
// follow.
template<std::size_t kLanes>
struct PostImpulseResponse {
    static constexpr std::size_t kFrames = kPostFrames + kChunkFrames;
    alignas(kRowAlignment) float mA[kFrames * kLanes];
    alignas(kRowAlignment) float mB[kFrames * kLanes];
};

template<std::size_t kLanes>
inline constexpr PostImpulseResponse<kLanes> kPostImpulse = [] {
    PostImpulseResponse<kLanes> impulse{};
    PostWords state = stepPostSections({}, 1.0);
    for (std::size_t age = 0; age < kPostFrames; ++age) {
        const std::size_t first = (kPostFrames - 1 - age) * kLanes;
        for (std::size_t i = first; i < first + kLanes; ++i) {
            impulse.mA[i] = static_cast<float>(state[eAy1]);
            impulse.mB[i] = static_cast<float>(state[eBy1]);
        }
        state = stepPostSections(state, 0.0);
    }
    return impulse;
}();

// Sum of the frames that a vector holds.
template<std::size_t kLanes, class D>
HWY_INLINE hn::Vec<Frame<kLanes>> sumOverFrames(D /*d*/, hn::Vec<D> frames) {
    if constexpr (hn::MaxLanes(D()) == kLanes) {
        return frames;
    } else {
        const hn::Half<D> half;
        return sumOverFrames<kLanes>(half, hn::Add(hn::LowerHalf(half, frames), hn::UpperHalf(half, frames)));
    }
}

// The last two outputs of both sections; index 0 is the last one.
template<std::size_t kLanes>
struct PostOutputs {
    float mA[2][kLanes];
    float mB[2][kLanes];
};

// Zero-state response: the outputs at the end of a buffer of `frames` frames, had the state before been 0.
template<std::size_t kLanes, std::size_t kFrames>
HWY_INLINE PostOutputs<kLanes> zeroStateResponse(const RowRing<kLanes, kFrames>& clipped,
                                                 std::size_t frames) {
    const Samples d;
    const PostImpulseResponse<kLanes>& impulse = kPostImpulse<kLanes>;
    const std::size_t chunks = (frames + kChunkFrames - 1) / kChunkFrames;
    const std::size_t first = chunks - std::min(chunks, kPostChunks);
    // The last frame of the buffer is weighted with entry kPostFrames - 1, wherever in its chunk it is.
    const std::size_t shift = kPostFrames - (frames - first * kChunkFrames);
    auto a1 = hn::Zero(d);
    auto a2 = hn::Zero(d);
    auto b1 = hn::Zero(d);
    auto b2 = hn::Zero(d);
    for (std::size_t chunk = first; chunk < chunks; ++chunk) {
        const float* row = clipped.frame(chunk * kChunkFrames);
        const std::size_t start = (shift + (chunk - first) * kChunkFrames) * kLanes;
        for (std::size_t i = 0; i < kRowSize<kLanes, kChunkFrames>; i += hn::Lanes(d)) {
            const auto y = hn::Load(d, row + i);
            const float* a = impulse.mA + start + i;
            const float* b = impulse.mB + start + i;
            a1 = hn::Add(a1, hn::Mul(y, hn::LoadU(d, a)));
            b1 = hn::Add(b1, hn::Mul(y, hn::LoadU(d, b)));
            // The output one frame earlier: the response is shifted by a frame.
            a2 = hn::Add(a2, hn::Mul(y, hn::LoadU(d, a + kLanes)));
            b2 = hn::Add(b2, hn::Mul(y, hn::LoadU(d, b + kLanes)));
        }
    }
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): every word is stored below
    PostOutputs<kLanes> outputs;
    const Frame<kLanes> frame;
    hn::StoreU(sumOverFrames<kLanes>(d, a1), frame, outputs.mA[0]);
    hn::StoreU(sumOverFrames<kLanes>(d, a2), frame, outputs.mA[1]);
    hn::StoreU(sumOverFrames<kLanes>(d, b1), frame, outputs.mB[0]);
    hn::StoreU(sumOverFrames<kLanes>(d, b2), frame, outputs.mB[1]);
    return outputs;
}

// Adds the zero-input response of a buffer of kPostFrames frames or fewer. Of longer buffers it is
// negligible.
inline void addZeroInputResponse(const SDemoGain_PostStates& before, std::size_t frames, float (&ioA)[2],
                                 float (&ioB)[2]) {
    const float words[ePostWords] = {before.mA.x1, before.mA.x2, before.mA.y1, before.mA.y2,
                                     before.mB.x1, before.mB.x2, before.mB.y1, before.mB.y2};
    for (std::size_t age = 0; age < 2; ++age) {
        for (std::size_t word = 0; word < ePostWords; ++word) {
            ioA[age] += kPostZeroInput.mA[frames - age][word] * words[word];
            ioB[age] += kPostZeroInput.mB[frames - age][word] * words[word];
        }
    }
}

// Advances the states of the post sections over a buffer of `frames` frames, whose last clipped samples are
// in the ring.
template<std::size_t kInstances, std::size_t kChannels, std::size_t kFrames>
HWY_INLINE void advancePostSections(const RowRing<kInstances * kChannels, kFrames>& clipped,
                                    std::size_t frames, const Group<kInstances, kChannels>& group) {
    constexpr std::size_t kLanes = kInstances * kChannels;
    const PostOutputs<kLanes> outputs = zeroStateResponse(clipped, frames);
    const auto sample = [&](std::size_t frame, std::size_t lane) { return clipped.frame(frame)[lane]; };
    for (std::size_t lane = 0; lane < kLanes; ++lane) {
        SDemoGain_PostStates& state = group.stateOf(lane).mPost[group.channelOf(lane)];
        float a[2] = {outputs.mA[0][lane], outputs.mA[1][lane]};
        float b[2] = {outputs.mB[0][lane], outputs.mB[1][lane]};
        if (frames <= kPostFrames) {
            addZeroInputResponse(state, frames, a, b);
        }
        const float x2 = frames > 1 ? sample(frames - 2, lane) : state.mA.x1;
        state.mA = {sample(frames - 1, lane), x2, a[0], a[1]};
        state.mB = {a[0], a[1], b[0], b[1]};
    }
}

} // namespace HWY_NAMESPACE
} // namespace DemoGain
HWY_AFTER_NAMESPACE();

#endif
