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
template<std::size_t kChannels>
HWY_INLINE void sanitiseInput(const SDemoGain_DetectorSection& highPass, std::size_t chunk,
                              ChunkRows<kChannels>& rows) {
    const Samples<kChannels> d;
    const auto largest = hn::Set(d, kLargestInput);
    const auto b0 = hn::Set(d, highPass.b0);
    const auto b1 = hn::Set(d, highPass.b1);
    const float* raw = rows.mRaw[chunk];
    float* input = rows.mInput[chunk];
    float* lastBefore = rows.mInputHistory.v + kRowSize<kChannels> - hn::Lanes(d);
    auto before = hn::Load(d, lastBefore);
    for (std::size_t i = 0; i < kRowSize<kChannels>; i += hn::Lanes(d)) {
        const auto sample = hn::Load(d, raw + i);
        const auto x = hn::IfThenElseZero(hn::Le(hn::Abs(sample), largest), sample);
        hn::Store(x, d, input + i);
        const auto sum = hn::Add(hn::Mul(b0, x), hn::Mul(b1, delayed<kChannels, 1>(d, x, before)));
        hn::Store(sum, d, rows.mHighPassForward.v + i);
        before = x;
    }
    hn::Store(before, d, lastBefore);
    rows.mInput.close(chunk);
}

// First-order high-pass at 120 Hz: y = (b0*x + b1*x1 - a1*y1) * gain.
template<std::size_t kChannels>
class HighPass {
public:
    explicit HighPass(const SDemoGain_Alg_State& state)
        : mA1(hn::Set(Frame<kChannels>(), state.mHp.a1)),
          mGain(hn::Set(Frame<kChannels>(), state.mHp.gain)),
          mY1(loadFrame<kChannels>(state.mDetector, [](const auto& channel) { return channel.mHp.y1; })) {}

    static Row<kChannels>& output(ChunkRows<kChannels>& rows) { return rows.mHighPassed; }

    HWY_INLINE hn::Vec<Frame<kChannels>> step(const ChunkRows<kChannels>& rows, std::size_t frame) {
        const auto forward = frameOf<kChannels>(rows.mHighPassForward.v, frame);
        mY1 = hn::Mul(hn::Sub(forward, hn::Mul(mA1, mY1)), mGain);
        return mY1;
    }

    // `x`: the last frame that went in.
    void store(SDemoGain_Alg_State& ioState, const float* x) const {
        storeFrame<kChannels>(mY1, ioState.mDetector, [](auto& channel) -> float& { return channel.mHp.y1; });
        for (std::size_t channel = 0; channel < kChannels; ++channel) {
            ioState.mDetector[channel].mHp.x1 = x[channel];
        }
    }

private:
    hn::Vec<Frame<kChannels>> mA1;
    hn::Vec<Frame<kChannels>> mGain;
    hn::Vec<Frame<kChannels>> mY1;
};

// Selects the detector input, and computes the feed-forward sum of the all-pass.
template<std::size_t kChannels>
HWY_INLINE void selectDetectorInput(const Settings& settings, const SDemoGain_DetectorSection& allPass,
                                    std::size_t chunk, ChunkRows<kChannels>& rows) {
    const Samples<kChannels> d;
    const auto b0 = hn::Set(d, allPass.b0);
    const auto b1 = hn::Set(d, allPass.b1);
    const auto b2 = hn::Set(d, allPass.b2);
    float* const input = rows.mDetectorIn[chunk];
    auto before = hn::Load(d, input - hn::Lanes(d));
    for (std::size_t i = 0; i < kRowSize<kChannels>; i += hn::Lanes(d)) {
        const auto x = settings.mHighPass ? loadBlocks<kChannels>(d, rows.mHighPassed.v + i)
                                          : hn::Load(d, rows.mInput[chunk] + i);
        hn::Store(x, d, input + i);
        const auto sum = hn::Add(hn::Mul(b0, x), hn::Mul(b1, delayed<kChannels, 1>(d, x, before)));
        hn::Store(hn::Add(sum, hn::Mul(b2, delayed<kChannels, 2>(d, x, before))), d,
                  rows.mAllPassForward.v + i);
        before = x;
    }
    rows.mDetectorIn.close(chunk);
}

// Second-order all-pass at 7 kHz: y = (b0*x + b1*x1 + b2*x2 - a1*y1 - a2*y2) * gain.
template<std::size_t kChannels>
class AllPass {
public:
    explicit AllPass(const SDemoGain_Alg_State& state)
        : mA1(hn::Set(Frame<kChannels>(), state.mAp.a1)),
          mA2(hn::Set(Frame<kChannels>(), state.mAp.a2)),
          mGain(hn::Set(Frame<kChannels>(), state.mAp.gain)),
          mY1(load(state, &SDemoGain_SectionState::y1)),
          mY2(load(state, &SDemoGain_SectionState::y2)) {}

    static Row<kChannels>& output(ChunkRows<kChannels>& rows) { return rows.mAllPassed; }

    HWY_INLINE hn::Vec<Frame<kChannels>> step(const ChunkRows<kChannels>& rows, std::size_t frame) {
        const auto forward = frameOf<kChannels>(rows.mAllPassForward.v, frame);
        const auto y = hn::Mul(hn::Sub(hn::Sub(forward, hn::Mul(mA1, mY1)), hn::Mul(mA2, mY2)), mGain);
        mY2 = mY1;
        mY1 = y;
        return y;
    }

    // `x1` and `x2`: the last frame that went in and the one before.
    void store(SDemoGain_Alg_State& ioState, const float* x1, const float* x2) const {
        storeFrame<kChannels>(mY1, ioState.mDetector, [](auto& channel) -> float& { return channel.mAp.y1; });
        storeFrame<kChannels>(mY2, ioState.mDetector, [](auto& channel) -> float& { return channel.mAp.y2; });
        for (std::size_t channel = 0; channel < kChannels; ++channel) {
            ioState.mDetector[channel].mAp.x1 = x1[channel];
            ioState.mDetector[channel].mAp.x2 = x2[channel];
        }
    }

private:
    static HWY_INLINE hn::Vec<Frame<kChannels>> load(const SDemoGain_Alg_State& state,
                                                     float SDemoGain_SectionState::*word) {
        return loadFrame<kChannels>(state.mDetector,
                                    [word](const auto& channel) { return channel.mAp.*word; });
    }

    hn::Vec<Frame<kChannels>> mA1;
    hn::Vec<Frame<kChannels>> mA2;
    hn::Vec<Frame<kChannels>> mGain;
    hn::Vec<Frame<kChannels>> mY1;
    hn::Vec<Frame<kChannels>> mY2;
};

// Detector signal: the band above 7 kHz is weighted, then the input gain applied. The sum of the detector
// input `x` and the all-passed signal `a` is twice the low band, their difference twice the high band.
template<class D>
HWY_INLINE hn::Vec<D> emphasiseBand(D d, const Settings& settings, hn::Vec<D> x, hn::Vec<D> a) {
    const auto high = hn::Mul(hn::Sub(x, a), hn::Set(d, settings.mBandGain));
    return hn::Mul(hn::Mul(hn::Add(high, hn::Add(x, a)), hn::Set(d, 0.5F)), hn::Set(d, settings.mGain));
}

// Gain computer: the gain in dB at a level in dB.
template<class D>
HWY_INLINE hn::Vec<D> curveGain(D d, const GainCurve& curve, hn::Vec<D> level) {
    const auto threshold = hn::Set(d, curve.mThreshold);
    const auto least = hn::Set(d, kLeastReductionDB);
    const auto t = hn::Mul(hn::Sub(level, threshold), hn::Set(d, kPerKnee));
    const auto u = hn::Mul(t, t);
    auto sum = hn::Add(hn::Mul(hn::Set(d, curve.mC[3]), u), hn::Set(d, curve.mC[2]));
    sum = hn::Add(hn::Mul(sum, u), hn::Set(d, curve.mC[1]));
    sum = hn::Add(hn::Mul(sum, u), hn::Set(d, curve.mC[0]));
    const auto knee = hn::Sub(hn::Mul(sum, hn::Mul(t, hn::Set(d, -kKneeDB))), least);
    const auto bent = hn::IfThenElse(hn::Gt(level, threshold), knee, hn::Neg(least));
    return hn::IfThenElse(hn::Gt(level, hn::Set(d, curve.mTop)), hn::Set(d, curve.mTopGain), bent);
}

// Level of the detector signal, linear.
template<std::size_t kChannels>
HWY_INLINE void measureLevel(const Settings& settings, std::size_t chunk, ChunkRows<kChannels>& rows) {
    const Samples<kChannels> d;
    const float* input = rows.mDetectorIn[chunk];
    for (std::size_t i = 0; i < kRowSize<kChannels>; i += hn::Lanes(d)) {
        const auto detector = emphasiseBand(d, settings, hn::Load(d, input + i),
                                            loadBlocks<kChannels>(d, rows.mAllPassed.v + i));
        hn::Store(Level(d, detector), d, rows.mLevel.v + i);
    }
}

// The same level in dB.
template<std::size_t kChannels>
HWY_INLINE void convertLevel(ChunkRows<kChannels>& rows) {
    const Samples<kChannels> d;
    for (std::size_t i = 0; i < kRowSize<kChannels>; i += hn::Lanes(d)) {
        hn::Store(LinToDb(d, hn::Load(d, rows.mLevel.v + i)), d, rows.mLevel.v + i);
    }
}

// From the level to the output of the gain computer.
template<std::size_t kChannels>
HWY_INLINE void computeGain(const Settings& settings, ChunkRows<kChannels>& rows) {
    const Samples<kChannels> d;
    for (std::size_t i = 0; i < kRowSize<kChannels>; i += hn::Lanes(d)) {
        hn::Store(curveGain(d, settings.mCurve, hn::Load(d, rows.mLevel.v + i)), d, rows.mGain.v + i);
    }
}

// Both gain-reduction followers: the one with attack and release in the lower half of a vector, the slow one,
// which has one coefficient for both directions, in the upper half. Their sum is the gain reduction in dB.
// Attack is where the gain lies below the envelope: the reduction grows.
template<std::size_t kChannels>
class Followers {
public:
    Followers(const Settings& settings, const SDemoGain_Alg_State& state)
        : mAttackCoefs(join(hn::Set(Frame<kChannels>(), settings.mAttack),
                            hn::Set(Frame<kChannels>(), settings.mSlow))),
          mReleaseCoefs(join(hn::Set(Frame<kChannels>(), settings.mRelease),
                             hn::Set(Frame<kChannels>(), settings.mSlow))),
          mEnvelopes(join(loadFrame<kChannels>(state.mFollowers,
                                               [](const auto& followers) { return followers.mGrEnvAR; }),
                          loadFrame<kChannels>(state.mFollowers,
                                               [](const auto& followers) { return followers.mGrEnvSlow; }))) {
    }

    static Row<kChannels>& output(ChunkRows<kChannels>& rows) { return rows.mReduction; }

    HWY_INLINE hn::Vec<Frame<kChannels>> step(const ChunkRows<kChannels>& rows, std::size_t frame) {
        const Frame<kChannels> d;
        const auto one = frameOf<kChannels>(rows.mGain.v, frame);
        const auto gain = join(one, one);
        const auto coef = hn::IfThenElse(hn::Lt(gain, mEnvelopes), mAttackCoefs, mReleaseCoefs);
        mEnvelopes = hn::Add(hn::Mul(hn::Sub(mEnvelopes, gain), coef), gain);
        return hn::Add(hn::LowerHalf(d, mEnvelopes), hn::UpperHalf(d, mEnvelopes));
    }

    void store(SDemoGain_Alg_State& ioState) const {
        const Frame<kChannels> d;
        storeFrame<kChannels>(hn::LowerHalf(d, mEnvelopes), ioState.mFollowers,
                              [](auto& followers) -> float& { return followers.mGrEnvAR; });
        storeFrame<kChannels>(hn::UpperHalf(d, mEnvelopes), ioState.mFollowers,
                              [](auto& followers) -> float& { return followers.mGrEnvSlow; });
    }

private:
    using Both = hn::FixedTag<float, 2 * kChannels>;

    static HWY_INLINE hn::Vec<Both> join(hn::Vec<Frame<kChannels>> lower, hn::Vec<Frame<kChannels>> upper) {
        return hn::Combine(Both(), upper, lower);
    }

    hn::Vec<Both> mAttackCoefs;
    hn::Vec<Both> mReleaseCoefs;
    hn::Vec<Both> mEnvelopes;
};

} // namespace HWY_NAMESPACE
} // namespace DemoGain
HWY_AFTER_NAMESPACE();

#endif
