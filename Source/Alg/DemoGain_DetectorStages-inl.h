// The detector: from input samples to the gain reduction in dB, stage by stage, a chunk at a time.
#if defined(DEMOGAIN_DETECTORSTAGES_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef DEMOGAIN_DETECTORSTAGES_INL_H
#undef DEMOGAIN_DETECTORSTAGES_INL_H
#else
#define DEMOGAIN_DETECTORSTAGES_INL_H
#endif

#include "Alg/DemoGain_AlgSettings.h"
#include "Alg/DemoGain_ChunkRows.h"
#include "Alg/DemoGain_Conversions-inl.h"
#include "Alg/DemoGain_Recursion-inl.h"
#include "DemoGain_Alg.h"

#include <hwy/highway.h>

#include <cstddef>

HWY_BEFORE_NAMESPACE();
namespace DemoGain {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// Replaces samples that cannot be processed by silence, and computes the feed-forward sum of the high-pass.
template<std::size_t kLanes, std::size_t kFrames>
HWY_INLINE void sanitiseInput(const SDemoGain_DetectorSection& highPass, std::size_t chunk,
                              ChunkRows<kLanes, kFrames>& rows) {
    const Samples d;
    const auto largest = hn::Set(d, kLargestInput);
    const auto b0 = hn::Set(d, highPass.b0);
    const auto b1 = hn::Set(d, highPass.b1);
    const float* raw = rows.mRaw[chunk];
    float* input = rows.mInput[chunk];
    float* lastBefore = rows.mInputHistory.v + kRowSize<kLanes, kFrames> - hn::Lanes(d);
    VectorsBefore<Samples> before{hn::Load(d, lastBefore), hn::Zero(d)};
    for (std::size_t i = 0; i < kRowSize<kLanes, kFrames>; i += hn::Lanes(d)) {
        const auto sample = hn::Load(d, raw + i);
        const auto x = hn::IfThenElseZero(hn::Le(hn::Abs(sample), largest), sample);
        hn::Store(x, d, input + i);
        const auto sum = hn::Add(hn::Mul(b0, x), hn::Mul(b1, delayed<kLanes, 1>(d, x, before)));
        hn::Store(sum, d, rows.mHighPassForward.v + i);
        before.push(x);
    }
    hn::Store(before.mLast, d, lastBefore);
    rows.mInput.close(chunk);
}

// First-order high-pass at 120 Hz: y = (b0*x + b1*x1 - a1*y1) * gain.
template<std::size_t kLanes>
class HighPass {
public:
    template<class LaneGroup>
    explicit HighPass(const LaneGroup& group)
        : mA1(hn::Set(Frame<kLanes>(), group.mStates[0]->mHp.a1)),
          mGain(hn::Set(Frame<kLanes>(), group.mStates[0]->mHp.gain)),
          mY1(loadFrame(group, y1)) {}

    template<std::size_t kFrames>
    static Row<kLanes, kFrames>& output(ChunkRows<kLanes, kFrames>& rows) {
        return rows.mHighPassed;
    }

    template<std::size_t kFrames>
    HWY_INLINE hn::Vec<Frame<kLanes>> step(const ChunkRows<kLanes, kFrames>& rows, std::size_t frame) {
        const auto forward = frameOf<kLanes>(rows.mHighPassForward.v, frame);
        mY1 = hn::Mul(hn::Sub(forward, hn::Mul(mA1, mY1)), mGain);
        return mY1;
    }

    // `x`: the last frame that went in.
    template<class LaneGroup>
    void store(const LaneGroup& group, const float* x) const {
        storeFrame(mY1, group, y1);
        storeFrame(x, group, [](SDemoGain_Alg_State& state, std::size_t channel) -> float& {
            return state.mDetector[channel].mHp.x1;
        });
    }

private:
    static float& y1(SDemoGain_Alg_State& state, std::size_t channel) {
        return state.mDetector[channel].mHp.y1;
    }

    hn::Vec<Frame<kLanes>> mA1;
    hn::Vec<Frame<kLanes>> mGain;
    hn::Vec<Frame<kLanes>> mY1;
};

// Selects the detector input, and computes the feed-forward sum of the all-pass.
template<std::size_t kLanes, std::size_t kFrames>
HWY_INLINE void selectDetectorInput(const LaneSettings& settings, const SDemoGain_DetectorSection& allPass,
                                    std::size_t chunk, ChunkRows<kLanes, kFrames>& rows) {
    const Samples d;
    const auto b0 = hn::Set(d, allPass.b0);
    const auto b1 = hn::Set(d, allPass.b1);
    const auto b2 = hn::Set(d, allPass.b2);
    float* const input = rows.mDetectorIn[chunk];
    VectorsBefore<Samples> before{hn::Load(d, input - hn::Lanes(d)), hn::Load(d, input - 2 * hn::Lanes(d))};
    const auto isHighPassed = isOn(d, settings.mHighPass);
    for (std::size_t i = 0; i < kRowSize<kLanes, kFrames>; i += hn::Lanes(d)) {
        auto x = hn::Load(d, rows.mInput[chunk] + i);
        if (settings.mAnyHighPass) {
            x = hn::IfThenElse(isHighPassed, loadBlocks<kLanes>(d, rows.mHighPassed.v + i), x);
        }
        hn::Store(x, d, input + i);
        const auto sum = hn::Add(hn::Mul(b0, x), hn::Mul(b1, delayed<kLanes, 1>(d, x, before)));
        hn::Store(hn::Add(sum, hn::Mul(b2, delayed<kLanes, 2>(d, x, before))), d, rows.mAllPassForward.v + i);
        before.push(x);
    }
    rows.mDetectorIn.close(chunk);
}

// Second-order all-pass at 7 kHz: y = (b0*x + b1*x1 + b2*x2 - a1*y1 - a2*y2) * gain.
template<std::size_t kLanes>
class AllPass {
public:
    template<class LaneGroup>
    explicit AllPass(const LaneGroup& group)
        : mA1(hn::Set(Frame<kLanes>(), group.mStates[0]->mAp.a1)),
          mA2(hn::Set(Frame<kLanes>(), group.mStates[0]->mAp.a2)),
          mGain(hn::Set(Frame<kLanes>(), group.mStates[0]->mAp.gain)),
          mY1(loadFrame(group, word<&SDemoGain_SectionState::y1>)),
          mY2(loadFrame(group, word<&SDemoGain_SectionState::y2>)) {}

    template<std::size_t kFrames>
    static Row<kLanes, kFrames>& output(ChunkRows<kLanes, kFrames>& rows) {
        return rows.mAllPassed;
    }

    template<std::size_t kFrames>
    HWY_INLINE hn::Vec<Frame<kLanes>> step(const ChunkRows<kLanes, kFrames>& rows, std::size_t frame) {
        const auto forward = frameOf<kLanes>(rows.mAllPassForward.v, frame);
        const auto y = hn::Mul(hn::Sub(hn::Sub(forward, hn::Mul(mA1, mY1)), hn::Mul(mA2, mY2)), mGain);
        mY2 = mY1;
        mY1 = y;
        return y;
    }

    // `x1` and `x2`: the last frame that went in and the one before.
    template<class LaneGroup>
    void store(const LaneGroup& group, const float* x1, const float* x2) const {
        storeFrame(mY1, group, word<&SDemoGain_SectionState::y1>);
        storeFrame(mY2, group, word<&SDemoGain_SectionState::y2>);
        storeFrame(x1, group, word<&SDemoGain_SectionState::x1>);
        storeFrame(x2, group, word<&SDemoGain_SectionState::x2>);
    }

private:
    template<float SDemoGain_SectionState::*kMember>
    static float& word(SDemoGain_Alg_State& state, std::size_t channel) {
        return state.mDetector[channel].mAp.*kMember;
    }

    hn::Vec<Frame<kLanes>> mA1;
    hn::Vec<Frame<kLanes>> mA2;
    hn::Vec<Frame<kLanes>> mGain;
    hn::Vec<Frame<kLanes>> mY1;
    hn::Vec<Frame<kLanes>> mY2;
};

// Detector signal: the band above 7 kHz is weighted, then the input gain applied. The sum of the detector
// input `x` and the all-passed signal `a` is twice the low band, their difference twice the high band.
template<class D>
HWY_INLINE hn::Vec<D> emphasiseBand(D d, const LaneSettings& settings, hn::Vec<D> x, hn::Vec<D> a) {
    const auto high = hn::Mul(hn::Sub(x, a), lanes(d, settings.mBandGain));
    return hn::Mul(hn::Mul(hn::Add(high, hn::Add(x, a)), hn::Set(d, 0.5F)), lanes(d, settings.mGain));
}

// Gain computer: the gain in dB at a level in dB.
template<class D>
HWY_INLINE hn::Vec<D> curveGain(D d, const LaneSettings& settings, hn::Vec<D> level) {
    const auto threshold = lanes(d, settings.mThreshold);
    const auto least = hn::Set(d, kLeastReductionDB);
    const auto t = hn::Mul(hn::Sub(level, threshold), hn::Set(d, kPerKnee));
    const auto u = hn::Mul(t, t);
    auto sum = hn::Add(hn::Mul(lanes(d, settings.mC[3]), u), lanes(d, settings.mC[2]));
    sum = hn::Add(hn::Mul(sum, u), lanes(d, settings.mC[1]));
    sum = hn::Add(hn::Mul(sum, u), lanes(d, settings.mC[0]));
    const auto knee = hn::Sub(hn::Mul(sum, hn::Mul(t, hn::Set(d, -kKneeDB))), least);
    const auto bent = hn::IfThenElse(hn::Gt(level, threshold), knee, hn::Neg(least));
    return hn::IfThenElse(hn::Gt(level, lanes(d, settings.mTop)), lanes(d, settings.mTopGain), bent);
}

// Level of the detector signal, linear.
template<std::size_t kLanes, std::size_t kFrames>
HWY_INLINE void measureLevel(const LaneSettings& settings, std::size_t chunk,
                             ChunkRows<kLanes, kFrames>& rows) {
    const Samples d;
    const float* input = rows.mDetectorIn[chunk];
    for (std::size_t i = 0; i < kRowSize<kLanes, kFrames>; i += hn::Lanes(d)) {
        const auto detector =
            emphasiseBand(d, settings, hn::Load(d, input + i), loadBlocks<kLanes>(d, rows.mAllPassed.v + i));
        hn::Store(Level(d, detector), d, rows.mLevel.v + i);
    }
}

// The same level in dB.
template<std::size_t kLanes, std::size_t kFrames>
HWY_INLINE void convertLevel(ChunkRows<kLanes, kFrames>& rows) {
    const Samples d;
    for (std::size_t i = 0; i < kRowSize<kLanes, kFrames>; i += hn::Lanes(d)) {
        hn::Store(LinToDb(d, hn::Load(d, rows.mLevel.v + i)), d, rows.mLevel.v + i);
    }
}

// From the level to the output of the gain computer.
template<std::size_t kLanes, std::size_t kFrames>
HWY_INLINE void computeGain(const LaneSettings& settings, ChunkRows<kLanes, kFrames>& rows) {
    const Samples d;
    for (std::size_t i = 0; i < kRowSize<kLanes, kFrames>; i += hn::Lanes(d)) {
        hn::Store(curveGain(d, settings, hn::Load(d, rows.mLevel.v + i)), d, rows.mGain.v + i);
    }
}

// Both gain-reduction followers: one with attack and release, and a slow one, which has one coefficient for
// both directions. Their sum is the gain reduction in dB. Attack is where the gain lies below the envelope:
// the reduction grows.
template<std::size_t kLanes>
class Followers {
public:
    template<class LaneGroup>
    Followers(const LaneSettings& settings, const LaneGroup& group)
        : mAttack(lanes(Frame<kLanes>(), settings.mAttack)),
          mRelease(lanes(Frame<kLanes>(), settings.mRelease)),
          mSlow(lanes(Frame<kLanes>(), settings.mSlow)),
          mEnvelope(loadFrame(group, word<&SDemoGain_Followers::mGrEnvAR>)),
          mSlowEnvelope(loadFrame(group, word<&SDemoGain_Followers::mGrEnvSlow>)) {}

    template<std::size_t kFrames>
    static Row<kLanes, kFrames>& output(ChunkRows<kLanes, kFrames>& rows) {
        return rows.mReduction;
    }

    template<std::size_t kFrames>
    HWY_INLINE hn::Vec<Frame<kLanes>> step(const ChunkRows<kLanes, kFrames>& rows, std::size_t frame) {
        const auto gain = frameOf<kLanes>(rows.mGain.v, frame);
        const auto coef = hn::IfThenElse(hn::Lt(gain, mEnvelope), mAttack, mRelease);
        mEnvelope = hn::Add(hn::Mul(hn::Sub(mEnvelope, gain), coef), gain);
        mSlowEnvelope = hn::Add(hn::Mul(hn::Sub(mSlowEnvelope, gain), mSlow), gain);
        return hn::Add(mEnvelope, mSlowEnvelope);
    }

    template<class LaneGroup>
    void store(const LaneGroup& group) const {
        storeFrame(mEnvelope, group, word<&SDemoGain_Followers::mGrEnvAR>);
        storeFrame(mSlowEnvelope, group, word<&SDemoGain_Followers::mGrEnvSlow>);
    }

private:
    template<float SDemoGain_Followers::*kMember>
    static float& word(SDemoGain_Alg_State& state, std::size_t channel) {
        return state.mFollowers[channel].*kMember;
    }

    hn::Vec<Frame<kLanes>> mAttack;
    hn::Vec<Frame<kLanes>> mRelease;
    hn::Vec<Frame<kLanes>> mSlow;
    hn::Vec<Frame<kLanes>> mEnvelope;
    hn::Vec<Frame<kLanes>> mSlowEnvelope;
};

} // namespace HWY_NAMESPACE
} // namespace DemoGain
HWY_AFTER_NAMESPACE();

#endif
