// The signal path of a group of instances over one buffer, stage by stage.
#if defined(DEMOGAIN_PIPELINE_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef DEMOGAIN_PIPELINE_INL_H
#undef DEMOGAIN_PIPELINE_INL_H
#else
#define DEMOGAIN_PIPELINE_INL_H
#endif

#include "Alg/DemoGain_AlgSettings.h"
#include "Alg/DemoGain_ChunkRows.h"
#include "Alg/DemoGain_DetectorStages-inl.h"
#include "Alg/DemoGain_DriveStages-inl.h"
#include "Alg/DemoGain_HostBuffers-inl.h"
#include "Alg/DemoGain_LaneSettings-inl.h"
#include "Alg/DemoGain_Lanes.h"
#include "Alg/DemoGain_MeterTaps-inl.h"
#include "Alg/DemoGain_PostSections-inl.h"
#include "DemoGain_Alg.h"

#include <hwy/highway.h>

#include <algorithm>
#include <cstddef>

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

// Processes one buffer of a group. The stages form a pipeline: in a turn each stage works on the chunk before
// that of the previous stage. A recursion has to wait for the result of its last frame; since nothing in a
// turn depends on any other stage, the processor overlaps this waiting with the work of the other stages.
//
// The instances of a group have equal filters and buffers of the same number of frames. A chunk has kFrames
// frames.
template<std::size_t kInstances, std::size_t kChannels, std::size_t kFrames = kChunkFrames>
class Pipeline {
public:
    explicit Pipeline(const SDemoGain_Alg_Context* const (&contexts)[kInstances])
        : mGroup(groupOf(contexts)),
          mBuffers(contexts, static_cast<std::size_t>(*contexts[0]->mBufferSize)),
          mSettings(settingsOf(contexts)),
          mHighPassSection(mGroup.mStates[0]->mHp),
          mAllPassSection(mGroup.mStates[0]->mAp),
          mClipRecovery(mGroup.mStates[0]->mClipCoef),
          mHighPass(mGroup),
          mAllPass(mGroup),
          mFollowers(mSettings, mGroup),
          mClipGain(mGroup),
          mDcBlocker(mGroup),
          mReductionTap(mGroup),
          mLevelTaps(mGroup) {
        constexpr std::size_t kLastFrame = kRowSize<kLanes, kFrames> - kLanes;
        for (std::size_t lane = 0; lane < kLanes; ++lane) {
            const SDemoGain_Alg_State& state = mGroup.stateOf(lane);
            const std::size_t channel = mGroup.channelOf(lane);
            mRows.mInput.history()[kLanes + lane] = state.mPrevIn[channel];
            mRows.mInputHistory.v[kLastFrame + lane] = state.mDetector[channel].mHp.x1;
            mRows.mDetectorIn.history()[lane] = state.mDetector[channel].mAp.x2;
            mRows.mDetectorIn.history()[kLanes + lane] = state.mDetector[channel].mAp.x1;
            mRows.mShaped.v[kLastFrame + lane] = state.mDc[channel].mDcX1;
        }
    }

    HWY_INLINE void run() {
        const std::size_t chunks = mBuffers.chunks();
        const std::size_t filled = std::min<std::size_t>(eStage_Count - 1, chunks);
        const std::size_t wholly = std::max(filled, mBuffers.wholeChunks());
        runPartly(0, filled, chunks);
        if (filled < wholly) {
            runWholly(filled, wholly, mHighPass, mAllPass, mFollowers, mClipGain, mDcBlocker, mLevelTaps);
        }
        runPartly(wholly, chunks + eStage_Count - 1, chunks);
    }

    HWY_INLINE void store() const {
        mFollowers.store(mGroup);
        mClipGain.store(mGroup);
        mReductionTap.store(mGroup);
        mLevelTaps.store(mGroup);
        const std::size_t lastChunk = mBuffers.chunks() - 1;
        const std::size_t lastFrame = (mBuffers.framesOf(lastChunk) - 1) * kLanes;
        const float* input = mRows.mInput[lastChunk] + lastFrame;
        mHighPass.store(mGroup, input);
        mDcBlocker.store(mGroup, mRows.mShaped.v + lastFrame);
        mAllPass.store(mGroup, mRows.mDetectorIn[lastChunk] + lastFrame,
                       mRows.mDetectorIn.delayed(lastChunk) + lastFrame);
        for (std::size_t instance = 0; instance < kInstances; ++instance) {
            // The mono routine writes its last input into both words.
            mGroup.mStates[instance]->mPrevIn[0] = input[instance * kChannels];
            mGroup.mStates[instance]->mPrevIn[1] = input[instance * kChannels + kChannels - 1];
        }
        advancePostSections(mRows.mClipped, mBuffers.frames(), mGroup);
    }

private:
    static constexpr std::size_t kLanes = kInstances * kChannels;

    static Group<kInstances, kChannels> groupOf(const SDemoGain_Alg_Context* const (&contexts)[kInstances]) {
        Group<kInstances, kChannels> group{};
        for (std::size_t instance = 0; instance < kInstances; ++instance) {
            group.mStates[instance] = contexts[instance]->mState;
            group.mTaps[instance] = contexts[instance]->mMeters;
        }
        return group;
    }

    static LaneSettings settingsOf(const SDemoGain_Alg_Context* const (&contexts)[kInstances]) {
        Settings each[kInstances];
        for (std::size_t instance = 0; instance < kInstances; ++instance) {
            each[instance] = readSettings<kChannels>(*contexts[instance]);
        }
        return spread<kChannels>(each);
    }

    // The turns from `turn` to `end`, in which stages may have no chunk or a part of one. Not inlined: it is
    // called twice, and holds every stage.
    HWY_NOINLINE void runPartly(std::size_t turn, std::size_t end, std::size_t chunks) {
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
            mBuffers.read(turn - eStage_HighPass, mRows.mRaw[turn - eStage_HighPass]);
            sanitiseInput(mHighPassSection, turn - eStage_HighPass, mRows);
        }
    }

    HWY_INLINE void runRecursions(std::size_t turn, std::size_t chunks) {
        const auto run = [&](EStage stage, auto& recursion) HWY_ATTR {
            if (works(stage, turn, chunks)) {
                stepThrough(recursion, mRows, mBuffers.framesOf(turn - stage));
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
        Row<kLanes, kFrames> output;
        mix<kChannels>(mSettings, chunk, mRows, output);
        mBuffers.write(chunk, output.v);
    }

    const Group<kInstances, kChannels> mGroup;
    const HostBuffers<kLanes, kFrames> mBuffers;
    const LaneSettings mSettings;
    const SDemoGain_DetectorSection mHighPassSection;
    const SDemoGain_DetectorSection mAllPassSection;
    const float mClipRecovery;
    HighPass<kLanes> mHighPass;
    AllPass<kLanes> mAllPass;
    Followers<kLanes> mFollowers;
    ClipGain<kLanes> mClipGain;
    DcBlocker<kLanes> mDcBlocker;
    ReductionTap<kInstances, kChannels> mReductionTap;
    LevelTaps<kInstances> mLevelTaps;
    ChunkRows<kLanes, kFrames> mRows;
};

} // namespace HWY_NAMESPACE
} // namespace DemoGain
HWY_AFTER_NAMESPACE();

#endif
