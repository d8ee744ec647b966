// The host's buffers of a group, chunk by chunk: from one buffer per lane to rows and back.
#if defined(DEMOGAIN_HOSTBUFFERS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef DEMOGAIN_HOSTBUFFERS_INL_H
#undef DEMOGAIN_HOSTBUFFERS_INL_H
#else
#define DEMOGAIN_HOSTBUFFERS_INL_H
#endif

#include "Alg/DemoGain_ChunkRows.h"
#include "DemoGain_Alg.h"

#include <hwy/highway.h>

#include <algorithm>
#include <cstddef>
#include <iterator>

HWY_BEFORE_NAMESPACE();
namespace DemoGain {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// The buffers of all lanes.
template<std::size_t kLanes, std::size_t kFrames>
class HostBuffers {
public:
    template<std::size_t kInstances>
    HostBuffers(const SDemoGain_Alg_Context* const (&contexts)[kInstances], std::size_t frames)
        : mFrames(frames) {
        constexpr std::size_t kChannels = kLanes / kInstances;
        for (std::size_t lane = 0; lane < kLanes; ++lane) {
            mInputs[lane] = contexts[lane / kChannels]->mAudioIn[lane % kChannels];
            mOutputs[lane] = contexts[lane / kChannels]->mAudioOut[lane % kChannels];
        }
    }

    std::size_t frames() const { return mFrames; }
    // Also of a chunk that the buffer's end has cut off.
    std::size_t chunks() const { return (mFrames + kFrames - 1) / kFrames; }
    std::size_t wholeChunks() const { return mFrames / kFrames; }
    // Frames of a chunk, kFrames or fewer.
    std::size_t framesOf(std::size_t chunk) const { return std::min(kFrames, mFrames - chunk * kFrames); }

    // Reads a chunk of every lane before anything of it is written: inputs and outputs of an instance may be
    // the same memory. Behind the last frame follows silence.
    HWY_INLINE void read(std::size_t chunk, float* row) const {
        const std::size_t frames = framesOf(chunk);
        const float* inputs[kLanes];
        float padded[kLanes][kFrames];
        for (std::size_t lane = 0; lane < kLanes; ++lane) {
            inputs[lane] = mInputs[lane] + chunk * kFrames;
            if (HWY_UNLIKELY(frames < kFrames)) {
                std::fill(std::copy_n(inputs[lane], frames, padded[lane]), std::end(padded[lane]), 0.0F);
                inputs[lane] = padded[lane];
            }
        }
        interleave(inputs, row);
    }

    HWY_INLINE void write(std::size_t chunk, const float* row) const {
        const std::size_t frames = framesOf(chunk);
        float* outputs[kLanes];
        float padded[kLanes][kFrames];
        for (std::size_t lane = 0; lane < kLanes; ++lane) {
            float* const whole = mOutputs[lane] + chunk * kFrames;
            outputs[lane] = HWY_UNLIKELY(frames < kFrames) ? padded[lane] : whole;
        }
        deinterleave(row, outputs);
        if (HWY_UNLIKELY(frames < kFrames)) {
            for (std::size_t lane = 0; lane < kLanes; ++lane) {
                std::copy_n(padded[lane], frames, mOutputs[lane] + chunk * kFrames);
            }
        }
    }

private:
    using LaneFrames = hn::CappedTag<float, kChunkFrames>;

    static HWY_INLINE void interleave(const float* const (&lanes)[kLanes], float* row) {
        const LaneFrames d;
        for (std::size_t i = 0; i < kFrames; i += hn::Lanes(d)) {
            const auto first = hn::LoadU(d, lanes[0] + i);
            if constexpr (kLanes == 1) {
                hn::StoreU(first, d, row + i);
            } else if constexpr (kLanes == 2) {
                hn::StoreInterleaved2(first, hn::LoadU(d, lanes[1] + i), d, row + 2 * i);
            } else {
                hn::StoreInterleaved4(first, hn::LoadU(d, lanes[1] + i), hn::LoadU(d, lanes[2] + i),
                                      hn::LoadU(d, lanes[3] + i), d, row + 4 * i);
            }
        }
    }

    static HWY_INLINE void deinterleave(const float* row, float* const (&lanes)[kLanes]) {
        const LaneFrames d;
        for (std::size_t i = 0; i < kFrames; i += hn::Lanes(d)) {
            hn::Vec<LaneFrames> v[kLanes];
            if constexpr (kLanes == 1) {
                v[0] = hn::LoadU(d, row + i);
            } else if constexpr (kLanes == 2) {
                hn::LoadInterleaved2(d, row + 2 * i, v[0], v[1]);
            } else {
                hn::LoadInterleaved4(d, row + 4 * i, v[0], v[1], v[2], v[3]);
            }
            for (std::size_t lane = 0; lane < kLanes; ++lane) {
                hn::StoreU(v[lane], d, lanes[lane] + i);
            }
        }
    }

    std::size_t mFrames;
    const float* mInputs[kLanes]{};
    float* mOutputs[kLanes]{};
};

} // namespace HWY_NAMESPACE
} // namespace DemoGain
HWY_AFTER_NAMESPACE();

#endif
