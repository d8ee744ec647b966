/// The post sections and what they answer. Nothing hears them, only their state at the end of a buffer is
/// wanted; and since they forget within a few dozen frames, that is a weighted sum of the last samples that
/// went in.
#ifndef VARNO_SOURCE_ALG_DEMOGAIN_POSTRESPONSES_H
#define VARNO_SOURCE_ALG_DEMOGAIN_POSTRESPONSES_H

#include "Alg/DemoGain_ChunkRows.h"
#include "DemoGain_Alg.h"

#include <array>
#include <cstddef>

namespace DemoGain {

/// The two sections, at every sample rate.
inline constexpr SDemoGain_PostSection kPostA = {0.21020785F,  0.4204157F,   0.21020785F,
                                                 -0.84083444F, 0.040730298F, 0.60940844F};
inline constexpr SDemoGain_PostSection kPostB = {kPostA.b0, kPostA.b1, kPostA.b2,
                                                 kPostA.a1, kPostA.a2, 0.85306305F};

/// Chunks at the end of a buffer that the state is computed from. The slowest pole of the two sections lies
/// at 0.665: of what was 49 frames ago, the least that these chunks hold, less than 1e-8 is left.
inline constexpr std::size_t kPostChunks = kRingChunks - 1;
inline constexpr std::size_t kPostFrames = kPostChunks * kChunkFrames;

/// State of both sections, as words.
enum EPostWord { eAx1, eAx2, eAy1, eAy2, eBx1, eBx2, eBy1, eBy2, ePostWords };
using PostWords = std::array<double, ePostWords>;

/// The state one frame after `s`, `x` going in.
constexpr PostWords advancePostWords(const PostWords& s, double x) {
    const auto run = [](const SDemoGain_PostSection& c, double in, double x1, double x2, double y1,
                        double y2) {
        return (double{c.b0} * in + double{c.b1} * x1 + double{c.b2} * x2 - double{c.a1} * y1 -
                double{c.a2} * y2) *
               double{c.g};
    };
    const double a = run(kPostA, x, s[eAx1], s[eAx2], s[eAy1], s[eAy2]);
    const double b = run(kPostB, a, s[eBx1], s[eBx2], s[eBy1], s[eBy2]);
    return {x, s[eAx1], a, s[eAy1], a, s[eBx1], b, s[eBy1]};
}

/// What is left of a state after some frames of silence: by number of frames, by word of the state, the
/// outputs of A and B.
struct PostDecay {
    float mA[kPostFrames + 1][ePostWords];
    float mB[kPostFrames + 1][ePostWords];
};

inline constexpr PostDecay kPostDecay = [] {
    PostDecay decay{};
    for (std::size_t word = 0; word < ePostWords; ++word) {
        PostWords state{};
        state[word] = 1.0;
        for (std::size_t frame = 0; frame <= kPostFrames; ++frame) {
            decay.mA[frame][word] = static_cast<float>(state[eAy1]);
            decay.mB[frame][word] = static_cast<float>(state[eBy1]);
            state = advancePostWords(state, 0.0);
        }
    }
    return decay;
}();

/// Weights of the samples that went in, the oldest first, once per channel so that they lie like the samples
/// of rows. Entry kPostFrames - 1 is the weight of the last frame; before it come the answers to an impulse
/// backwards, behind it zeros.
template<std::size_t kChannels>
struct PostWeights {
    static constexpr std::size_t kFrames = kPostFrames + kChunkFrames;
    alignas(kRowAlignment) float mA[kFrames * kChannels];
    alignas(kRowAlignment) float mB[kFrames * kChannels];
};

template<std::size_t kChannels>
inline constexpr PostWeights<kChannels> kPostWeights = [] {
    PostWeights<kChannels> weights{};
    PostWords state = advancePostWords({}, 1.0);
    for (std::size_t age = 0; age < kPostFrames; ++age) {
        const std::size_t first = (kPostFrames - 1 - age) * kChannels;
        for (std::size_t i = first; i < first + kChannels; ++i) {
            weights.mA[i] = static_cast<float>(state[eAy1]);
            weights.mB[i] = static_cast<float>(state[eBy1]);
        }
        state = advancePostWords(state, 0.0);
    }
    return weights;
}();

} // namespace DemoGain

#endif
