#include "Alg/DemoGain_Routine.h"

#include "Alg/DemoGain_AlgSettings.h"
#include "Alg/DemoGain_ChunkRows.h"
#include "Alg/DemoGain_DenormalMode.h"
#include "Alg/DemoGain_State.h"
#include "Simd/Processor.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string_view>

// This file is compiled once for each instruction set, each time with the stages.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Alg/DemoGain_Routine.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "Alg/DemoGain_DetectorStages-inl.h"
#include "Alg/DemoGain_DriveStages-inl.h"
#include "Alg/DemoGain_MeterTaps-inl.h"
#include "Alg/DemoGain_PostSections-inl.h"

HWY_BEFORE_NAMESPACE();
namespace DemoGain {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// The stages of the signal path, in their order. Each has a part without memory, which works on as many
// samples at once as a vector holds, and a recursion, which it is named after.
enum EStage : std::size_t {
    eStage_HighPass,  // Sanitised input and feed-forward sum; high-pass.
    eStage_AllPass,   // Detector input and feed-forward sum; all-pass.
    eStage_Followers, // Level and gain computer; gain-reduction followers.
    eStage_ClipGain,  // Drive and clip target; smoothing of the clip gain.
    eStage_DcBlocker, // Waveshaper; DC blocker.
    eStage_Levels,    // Mix and output; level meters.
    eStage_Count
};

// Processes one buffer. The stages form a pipeline: in a turn each stage works on the chunk before that of
// the previous stage. A recursion has to wait for the result of its last frame; since nothing in a turn
// depends on any other stage, the processor overlaps this waiting with the work of the other stages.
template<std::size_t kChannels>
class Pipeline {
public:
    Pipeline(const SDemoGain_Alg_Context& context, std::size_t frames)
        : mContext(context),
          mSettings(readSettings(context)),
          mHighPassSection(context.mState->mHp),
          mAllPassSection(context.mState->mAp),
          mClipRecovery(context.mState->mClipCoef),
          mFrames(frames),
          mHighPass(*context.mState),
          mAllPass(*context.mState),
          mFollowers(mSettings, *context.mState),
          mClipGain(*context.mState),
          mDcBlocker(*context.mState),
          mReductionTap(context.mMeters),
          mLevelTaps(*context.mState, context.mMeters) {
        const SDemoGain_Alg_State& state = *context.mState;
        constexpr std::size_t kLastFrame = kRowSize<kChannels> - kChannels;
        for (std::size_t channel = 0; channel < kChannels; ++channel) {
            mRows.mInput.history()[kChannels + channel] = state.mPrevIn[channel];
            mRows.mInputHistory.v[kLastFrame + channel] = state.mDetector[channel].mHp.x1;
            mRows.mDetectorIn.history()[channel] = state.mDetector[channel].mAp.x2;
            mRows.mDetectorIn.history()[kChannels + channel] = state.mDetector[channel].mAp.x1;
            mRows.mShaped.v[kLastFrame + channel] = state.mDc[channel].mDcX1;
        }
    }

    HWY_INLINE void run() {
        const std::size_t chunks = (mFrames + kChunkFrames - 1) / kChunkFrames;
        const std::size_t filled = std::min<std::size_t>(eStage_Count - 1, chunks);
        const std::size_t wholly = std::max(filled, mFrames / kChunkFrames);
        runPartly(0, filled, chunks);
        runWholly(filled, wholly, mHighPass, mAllPass, mFollowers, mClipGain, mDcBlocker, mLevelTaps);
        runPartly(wholly, chunks + eStage_Count - 1, chunks);
    }

    HWY_INLINE void store() const {
        SDemoGain_Alg_State& state = *mContext.mState;
        mFollowers.store(state);
        mClipGain.store(state);
        mReductionTap.store(mContext.mMeters);
        mLevelTaps.store(state, mContext.mMeters);
        const std::size_t lastChunk = (mFrames - 1) / kChunkFrames;
        const std::size_t lastFrame = (framesOf(lastChunk) - 1) * kChannels;
        const float* input = mRows.mInput[lastChunk] + lastFrame;
        mHighPass.store(state, input);
        mDcBlocker.store(state, mRows.mShaped.v + lastFrame);
        mAllPass.store(state, mRows.mDetectorIn[lastChunk] + lastFrame,
                       mRows.mDetectorIn.delayed(lastChunk) + lastFrame);
        // The mono routine writes its last input into both words.
        state.mPrevIn[0] = input[0];
        state.mPrevIn[1] = input[kChannels - 1];
        advancePostSections(mRows.mClipped, mFrames, state.mPost);
    }

private:
    using ChannelFrames = hn::CappedTag<float, kChunkFrames>;

    std::size_t framesOf(std::size_t chunk) const {
        return std::min(kChunkFrames, mFrames - chunk * kChunkFrames);
    }

    // The turns from `turn` to `end`, in which stages may have no chunk or a part of one.
    HWY_INLINE void runPartly(std::size_t turn, std::size_t end, std::size_t chunks) {
        for (; turn < end; ++turn) {
            runVectorStages(turn, [&](EStage stage) { return works(stage, turn, chunks); });
            runRecursions(turn, chunks);
        }
    }

    // The turns from `turn` to `end`, in which every stage has a whole chunk. The recursions stay in
    // registers.
    template<class... Recursions>
    HWY_INLINE void runWholly(std::size_t turn, std::size_t end, Recursions&... ioRecursions) {
        const auto run = [&](auto... recursions) HWY_ATTR {
            for (; turn < end; ++turn) {
                runVectorStages(turn, [](EStage /*stage*/) { return true; });
                stepTogether(mRows, recursions...);
            }
            ((ioRecursions = recursions), ...);
        };
        run(ioRecursions...);
    }

    // Whether a stage has a chunk in this turn: the chunk turn - stage.
    static bool works(EStage stage, std::size_t turn, std::size_t chunks) {
        return turn >= stage && turn - stage < chunks;
    }

    // The last stage comes first, so that each row is read before the next chunk is written to it. But the
    // parts of the two longest stages, the followers' and the clip gain's, alternate: each is a chain of
    // dependent operations, longer than the processor can look ahead, and the two together take little more
    // time than one.
    template<class Works>
    HWY_INLINE void runVectorStages(std::size_t turn, const Works& isAtWork) {
        if (isAtWork(eStage_Levels)) {
            mixAndWrite(turn - eStage_Levels);
        }
        if (isAtWork(eStage_DcBlocker)) {
            shape(mSettings, turn - eStage_DcBlocker, mRows);
        }
        if (isAtWork(eStage_Followers)) {
            measureLevel(mSettings, turn - eStage_Followers, mRows);
        }
        if (isAtWork(eStage_ClipGain)) {
            drive(mSettings, turn - eStage_ClipGain, mReductionTap, mRows);
        }
        if (isAtWork(eStage_Followers)) {
            convertLevel(mRows);
        }
        if (isAtWork(eStage_ClipGain)) {
            computeClipTarget(mSettings, mClipRecovery, mRows);
        }
        if (isAtWork(eStage_Followers)) {
            computeGain(mSettings, mRows);
        }
        if (isAtWork(eStage_AllPass)) {
            selectDetectorInput(mSettings, mAllPassSection, turn - eStage_AllPass, mRows);
        }
        if (isAtWork(eStage_HighPass)) {
            readInput(turn - eStage_HighPass);
            sanitiseInput(mHighPassSection, turn - eStage_HighPass, mRows);
        }
    }

    HWY_INLINE void runRecursions(std::size_t turn, std::size_t chunks) {
        const auto run = [&](EStage stage, auto& recursion) HWY_ATTR {
            if (works(stage, turn, chunks)) {
                stepThrough(recursion, mRows, framesOf(turn - stage));
            }
        };
        run(eStage_HighPass, mHighPass);
        run(eStage_AllPass, mAllPass);
        run(eStage_Followers, mFollowers);
        run(eStage_ClipGain, mClipGain);
        run(eStage_DcBlocker, mDcBlocker);
        run(eStage_Levels, mLevelTaps);
    }

    HWY_INLINE void mixAndWrite(std::size_t chunk) {
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): mix() writes the whole row
        Row<kChannels> output;
        mix(mSettings, chunk, mRows, output);
        writeOutput(chunk, mSettings.mBypass ? mRows.mRaw[chunk] : output.v);
    }

    // Reads a chunk of every channel before anything of it is written: inputs and outputs may be the same
    // memory.
    HWY_INLINE void readInput(std::size_t chunk) {
        const std::size_t frames = framesOf(chunk);
        const float* inputs[kChannels];
        float padded[kChannels][kChunkFrames];
        for (std::size_t channel = 0; channel < kChannels; ++channel) {
            inputs[channel] = mContext.mAudioIn[channel] + chunk * kChunkFrames;
            if (HWY_UNLIKELY(frames < kChunkFrames)) {
                std::fill(std::copy_n(inputs[channel], frames, padded[channel]), std::end(padded[channel]),
                          0.0F);
                inputs[channel] = padded[channel];
            }
        }
        interleave(inputs, mRows.mRaw[chunk]);
    }

    HWY_INLINE void writeOutput(std::size_t chunk, const float* row) {
        const std::size_t frames = framesOf(chunk);
        float* outputs[kChannels];
        float padded[kChannels][kChunkFrames];
        for (std::size_t channel = 0; channel < kChannels; ++channel) {
            float* const whole = mContext.mAudioOut[channel] + chunk * kChunkFrames;
            outputs[channel] = HWY_UNLIKELY(frames < kChunkFrames) ? padded[channel] : whole;
        }
        deinterleave(row, outputs);
        if (HWY_UNLIKELY(frames < kChunkFrames)) {
            for (std::size_t channel = 0; channel < kChannels; ++channel) {
                std::copy_n(padded[channel], frames, mContext.mAudioOut[channel] + chunk * kChunkFrames);
            }
        }
    }

    static HWY_INLINE void interleave(const float* const (&channels)[kChannels], float* row) {
        const ChannelFrames d;
        for (std::size_t i = 0; i < kChunkFrames; i += hn::Lanes(d)) {
            const auto first = hn::LoadU(d, channels[0] + i);
            if constexpr (kChannels == 2) {
                hn::StoreInterleaved2(first, hn::LoadU(d, channels[1] + i), d, row + 2 * i);
            } else {
                hn::StoreU(first, d, row + i);
            }
        }
    }

    static HWY_INLINE void deinterleave(const float* row, float* const (&channels)[kChannels]) {
        const ChannelFrames d;
        for (std::size_t i = 0; i < kChunkFrames; i += hn::Lanes(d)) {
            if constexpr (kChannels == 2) {
                hn::Vec<ChannelFrames> left;
                hn::Vec<ChannelFrames> right;
                hn::LoadInterleaved2(d, row + 2 * i, left, right);
                hn::StoreU(left, d, channels[0] + i);
                hn::StoreU(right, d, channels[1] + i);
            } else {
                hn::StoreU(hn::LoadU(d, row + i), d, channels[0] + i);
            }
        }
    }

    const SDemoGain_Alg_Context& mContext;
    const Settings mSettings;
    const SDemoGain_DetectorSection mHighPassSection;
    const SDemoGain_DetectorSection mAllPassSection;
    const float mClipRecovery;
    const std::size_t mFrames;
    HighPass<kChannels> mHighPass;
    AllPass<kChannels> mAllPass;
    Followers<kChannels> mFollowers;
    ClipGain<kChannels> mClipGain;
    DcBlocker<kChannels> mDcBlocker;
    ReductionTap<kChannels> mReductionTap;
    LevelTaps mLevelTaps;
    ChunkRows<kChannels> mRows;
};

template<std::size_t kChannels>
HWY_INLINE void processBuffer(const SDemoGain_Alg_Context& context, std::size_t frames) {
    Pipeline<kChannels> pipeline(context, frames);
    pipeline.run();
    pipeline.store();
}

void processMono(const SDemoGain_Alg_Context& context, std::size_t frames) {
    processBuffer<1>(context, frames);
}

void processStereo(const SDemoGain_Alg_Context& context, std::size_t frames) {
    processBuffer<2>(context, frames);
}

} // namespace HWY_NAMESPACE
} // namespace DemoGain
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace {

constexpr SDemoGain_Routine kRoutines[] = {
#if HWY_TARGETS & HWY_AVX3
    {"avx512", HWY_AVX3, {&DemoGain::N_AVX3::processMono, &DemoGain::N_AVX3::processStereo}},
#endif
#if HWY_TARGETS & HWY_AVX2
    {"avx2", HWY_AVX2, {&DemoGain::N_AVX2::processMono, &DemoGain::N_AVX2::processStereo}},
#endif
#if HWY_TARGETS & HWY_SSSE3
    {"baseline", HWY_SSSE3, {&DemoGain::N_SSSE3::processMono, &DemoGain::N_SSSE3::processStereo}},
#endif
#if HWY_TARGETS & HWY_NEON
    {"neon", HWY_NEON, {&DemoGain::N_NEON::processMono, &DemoGain::N_NEON::processStereo}},
#endif
#if HWY_TARGETS & HWY_EMU128
    {"emulated", HWY_EMU128, {&DemoGain::N_EMU128::processMono, &DemoGain::N_EMU128::processStereo}},
#endif
};

// One buffer of one instance.
void processInstance(DemoGain_ProcessBuffer process, const SDemoGain_Alg_Context& context) {
    const int32_t bufferFrames = *context.mBufferSize;
    if (bufferFrames < 1) {
        return;
    }
    process(context, static_cast<std::size_t>(bufferFrames));
    if (!DemoGain_IsStateFinite(*context.mState)) {
        DemoGain_RecoverState(*context.mState);
    }
}

} // namespace

std::span<const SDemoGain_Routine> DemoGain_Routines() {
    return kRoutines;
}

bool DemoGain_CanRun(const SDemoGain_Routine& routine) {
    return (varno::processorTargets() & routine.mTarget) != 0;
}

void DemoGain_ProcessInstances(const SDemoGain_Routine& routine, std::size_t channels,
                               SDemoGain_Alg_Context* const* begin, SDemoGain_Alg_Context* const* end) {
    // Called through a pointer, so that the compiler cannot move arithmetic out of the audio mode.
    const DemoGain_DenormalMode audioMode;
    const DemoGain_ProcessBuffer process = routine.mProcess[channels - 1];
    for (SDemoGain_Alg_Context* const* instance = begin; instance != end; ++instance) {
        processInstance(process, **instance);
    }
}

const SDemoGain_Routine& DemoGain_ChooseRoutine() {
    const char* const variable = std::getenv("VARNO_SIMD");
    const std::string_view name = variable != nullptr ? variable : "";
    const auto isRequested = [&](const SDemoGain_Routine& routine) {
        return routine.mName == name && DemoGain_CanRun(routine);
    };
    const auto* const end = std::end(kRoutines);
    const auto* const requested = std::find_if(std::begin(kRoutines), end, isRequested);
    return requested != end ? *requested : *std::find_if(std::begin(kRoutines), end, DemoGain_CanRun);
}

#endif
