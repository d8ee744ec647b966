#include "DemoGain_Alg.h"

#include "DemoGain_AlgSettings.h"
#include "DemoGain_DenormalMode.h"
#include "DemoGain_DetectorStages.h"
#include "DemoGain_DriveStages.h"
#include "DemoGain_MeterTaps.h"
#include "DemoGain_State.h"

#include <algorithm>
#include <cstddef>

namespace DemoGain {
namespace {

/// Frames that a stage processes before the next one takes over: few enough to stay in the first-level cache.
constexpr std::size_t kChunkFrames = 64;
using Chunk = float[kChunkFrames];

/// What the stages of one channel hand to each other.
struct ChannelChunk {
    Chunk mRaw;       ///< Input as it came.
    Chunk mInput;     ///< Input as it is processed.
    Chunk mReduction; ///< Gain reduction, dB.
    Chunk mSum;       ///< Output before volume.
};

/// From the input to the gain reduction.
void detect(const Settings& settings, SDemoGain_Alg_State& state, std::size_t channel, ChannelChunk& chunk,
            std::size_t frames) {
    SDemoGain_DetectorStates& filters = state.mDetector[channel];
    Chunk highPassed;
    Chunk allPassed;
    Chunk detector;
    Chunk gain;
    highPass(state.mHp, filters.mHp, chunk.mInput, highPassed, frames);
    const float* heard = settings.mHighPass ? highPassed : chunk.mInput;
    secondOrder(state.mAp, filters.mAp, heard, allPassed, frames);
    weightBands(settings, heard, allPassed, detector, frames);
    computeGain(settings.mCurve, detector, gain, frames);
    follow(settings, state.mFollowers[channel], gain, chunk.mReduction, frames);
}

/// From the input and the gain reduction to the output before volume.
void distort(const Settings& settings, SDemoGain_Alg_State& state, std::size_t channel, ChannelChunk& chunk,
             std::size_t frames) {
    Chunk delayed;
    Chunk driven;
    Chunk target;
    Chunk clipped;
    Chunk shaped;
    Chunk scratch;
    delayByOne(state.mPrevIn[channel], chunk.mInput, delayed, frames);
    drive(settings, delayed, chunk.mReduction, driven, frames);
    clipTarget(settings.mBias, driven, target, frames);
    clip(state.mClipCoef, state.mClipGain[channel], driven, target, clipped, frames);
    postSections(state, state.mPost[channel], clipped, scratch, frames);
    shape(settings, clipped, shaped, frames);
    blockDc(state.mDc[channel], shaped, shaped, frames);
    mix(settings, delayed, shaped, chunk.mSum, frames);
}

/// One buffer of one instance, chunk by chunk. Every channel's input is read before any output is written,
/// since they may be the same memory.
template<std::size_t kNumChannels>
void processBuffer(const SDemoGain_Alg_Context& context, std::size_t bufferFrames) {
    const Settings settings = readSettings(context);
    SDemoGain_Alg_State& state = *context.mState;
    MeterTaps taps(context.mMeters);
    ChannelChunk chunks[kNumChannels];

    for (std::size_t start = 0; start < bufferFrames; start += kChunkFrames) {
        const std::size_t frames = std::min(kChunkFrames, bufferFrames - start);
        for (std::size_t channel = 0; channel < kNumChannels; ++channel) {
            ChannelChunk& chunk = chunks[channel];
            std::copy_n(context.mAudioIn[channel] + start, frames, chunk.mRaw);
            admitInput(chunk.mRaw, chunk.mInput, frames);
            detect(settings, state, channel, chunk, frames);
        }
        if constexpr (kNumChannels == 2) {
            if (settings.mLink) {
                link(chunks[0].mReduction, chunks[1].mReduction, frames);
            }
        }
        taps.reduction(chunks[0].mReduction, frames);
        for (std::size_t channel = 0; channel < kNumChannels; ++channel) {
            ChannelChunk& chunk = chunks[channel];
            float* output = context.mAudioOut[channel] + start;
            distort(settings, state, channel, chunk, frames);
            if (settings.mBypass) {
                std::copy_n(chunk.mRaw, frames, output);
            } else {
                writeOutput(settings.mVolume, chunk.mSum, output, frames);
            }
        }
        taps.levels(state, chunks[0].mInput, chunks[0].mSum, frames);
    }
    taps.store(context.mMeters);
}

/// One buffer of one instance, and what its state keeps of it.
template<std::size_t kNumChannels>
void processInstance(const SDemoGain_Alg_Context& context) {
    const int32_t bufferFrames = *context.mBufferSize;
    if (bufferFrames < 1) {
        return;
    }
    processBuffer<kNumChannels>(context, static_cast<std::size_t>(bufferFrames));

    SDemoGain_Alg_State& state = *context.mState;
    for (std::size_t channel = 0; channel < kNumChannels; ++channel) {
        state.mLastOut[channel] = state.mDc[channel].mDcY1;
    }
    if constexpr (kNumChannels == 1) {
        state.mPrevIn[1] = state.mPrevIn[0];
    }
    if (!DemoGain_IsStateFinite(state)) {
        DemoGain_RecoverState(state);
    }
}

/// Not inlined, so that all its arithmetic stays within the mode its caller has set.
template<std::size_t kNumChannels>
[[gnu::noinline]] void processInstances(SDemoGain_Alg_Context* const* begin,
                                        SDemoGain_Alg_Context* const* end) {
    for (SDemoGain_Alg_Context* const* instance = begin; instance != end; ++instance) {
        processInstance<kNumChannels>(**instance);
    }
}

} // namespace
} // namespace DemoGain

template<int kNumInputs, int kNumOutputs>
void DemoGain_AlgorithmProcessFunction(SDemoGain_Alg_Context* const inInstancesBegin[],
                                       const void* inInstancesEnd) {
    static_assert(kNumInputs == kNumOutputs && (kNumInputs == 1 || kNumInputs == 2));
    const DemoGain_DenormalMode audioMode;
    DemoGain::processInstances<kNumInputs>(inInstancesBegin,
                                           static_cast<SDemoGain_Alg_Context* const*>(inInstancesEnd));
}

template void DemoGain_AlgorithmProcessFunction<1, 1>(SDemoGain_Alg_Context* const[], const void*);
template void DemoGain_AlgorithmProcessFunction<2, 2>(SDemoGain_Alg_Context* const[], const void*);
