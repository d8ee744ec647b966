// The main path: from the delayed input and the gain reduction to the output, stage by stage, a chunk at a
// time.
#if defined(DEMOGAIN_DRIVESTAGES_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef DEMOGAIN_DRIVESTAGES_INL_H
#undef DEMOGAIN_DRIVESTAGES_INL_H
#else
#define DEMOGAIN_DRIVESTAGES_INL_H
#endif

#include "Alg/DemoGain_AlgSettings.h"
#include "Alg/DemoGain_ChunkRows.h"
#include "Alg/DemoGain_Conversions-inl.h"
#include "Alg/DemoGain_MeterTaps-inl.h"
#include "Alg/DemoGain_Recursion-inl.h"
#include "DemoGain_Alg.h"

#include <hwy/highway.h>

#include <cfloat>
#include <cstddef>

HWY_BEFORE_NAMESPACE();
namespace DemoGain {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// Clip level at which the shoulder of the clipper begins; above 1 it clips.
inline constexpr float kShoulderStart = 0.5F;
// pi / 2 to eight digits: w at the end of the shoulder.
inline constexpr float kShoulderEnd = 1.5707964F;
// The shoulder over w: (kShoulderCubic * w^3 + kShoulderSlope * w + 1) / 2. Fixed by definition.
inline constexpr float kShoulderCubic = -0.554926F;
inline constexpr float kShoulderSlope = 1.55F;

// Clip target at a clip level: 1 up to the shoulder, on the shoulder a cubic over w from 0 to kShoulderEnd,
// above it the gain that brings the level to 1. It steps from 0.642 to 1 at the end of the shoulder;
// intended.
template<class D>
HWY_INLINE hn::Vec<D> clipTarget(D d, hn::Vec<D> level) {
    const auto half = hn::Set(d, 0.5F);
    const auto start = hn::Set(d, kShoulderStart);
    const auto one = hn::Set(d, 1.0F);
    const auto above = hn::Sub(level, start);
    const auto w = hn::Mul(hn::Add(above, above), hn::Set(d, kShoulderEnd));
    const auto cubic = hn::Mul(hn::Mul(hn::Mul(w, hn::Set(d, kShoulderCubic)), w), w);
    const auto shoulder =
        hn::Add(hn::Mul(hn::Add(cubic, hn::Mul(w, hn::Set(d, kShoulderSlope))), half), half);
    const auto limited = hn::Div(hn::IfThenElse(hn::Gt(level, one), one, shoulder), level);
    return hn::IfThenElse(hn::Le(level, start), one, limited);
}

// Stereo link: both channels of an instance get the mean of their gain reductions.
template<class D>
HWY_INLINE hn::Vec<D> linked(D d, hn::Vec<D> reduction) {
    return hn::Mul(hn::Add(reduction, hn::Shuffle2301(reduction)), hn::Set(d, 0.5F));
}

// From the gain reduction to the driven signal. The gain computed from a sample is applied to the sample
// before it: the detector looks ahead by one sample.
template<std::size_t kInstances, std::size_t kChannels, std::size_t kFrames>
HWY_INLINE void drive(const LaneSettings& settings, std::size_t chunk,
                      ReductionTap<kInstances, kChannels>& ioTap,
                      ChunkRows<kInstances * kChannels, kFrames>& rows) {
    constexpr std::size_t kLanes = kInstances * kChannels;
    const Samples d;
    const float* delayedIn = rows.mInput.delayed(chunk);
    for (std::size_t i = 0; i < kRowSize<kLanes, kFrames>; i += hn::Lanes(d)) {
        auto reduction = loadBlocks<kLanes>(d, rows.mReduction.v + i);
        if constexpr (kChannels == 2) {
            if (settings.mAnyLink) {
                reduction = hn::IfThenElse(isOn(d, settings.mLink), linked(d, reduction), reduction);
            }
        }
        ioTap.raise(reduction);
        const auto amplified = hn::Mul(lanes(d, settings.mGain), hn::LoadU(d, delayedIn + i));
        const auto driven = hn::Mul(hn::Mul(amplified, DbToLin(d, reduction)), lanes(d, settings.mDrive));
        hn::Store(driven, d, rows.mDriven.v + i);
    }
}

// From the driven signal to its clip target.
template<std::size_t kLanes, std::size_t kFrames>
HWY_INLINE void computeClipTarget(const LaneSettings& settings, float recovery,
                                  ChunkRows<kLanes, kFrames>& rows) {
    const Samples d;
    const auto rest = hn::Set(d, 1.0F - recovery);
    for (std::size_t i = 0; i < kRowSize<kLanes, kFrames>; i += hn::Lanes(d)) {
        const auto driven = hn::Load(d, rows.mDriven.v + i);
        const auto target = clipTarget(d, ClipLevel(d, driven, lanes(d, settings.mBias)));
        hn::Store(target, d, rows.mClipTarget.v + i);
        hn::Store(hn::Mul(rest, target), d, rows.mClipTargetTerm.v + i);
    }
}

// Smoothing of the clip gain: instant attack, one-pole recovery.
template<std::size_t kLanes>
class ClipGain {
public:
    template<class LaneGroup>
    explicit ClipGain(const LaneGroup& group)
        : mCoef(hn::Set(Frame<kLanes>(), group.mStates[0]->mClipCoef)),
          mGain(loadFrame(group, gain)) {}

    template<std::size_t kFrames>
    static Row<kLanes, kFrames>& output(ChunkRows<kLanes, kFrames>& rows) {
        return rows.mClipGain;
    }

    template<std::size_t kFrames>
    HWY_INLINE hn::Vec<Frame<kLanes>> step(const ChunkRows<kLanes, kFrames>& rows, std::size_t frame) {
        const auto target = frameOf<kLanes>(rows.mClipTarget.v, frame);
        const auto recovering =
            hn::Add(hn::Mul(mCoef, mGain), frameOf<kLanes>(rows.mClipTargetTerm.v, frame));
        mGain = hn::IfThenElse(hn::Lt(mGain, target), recovering, target);
        return mGain;
    }

    template<class LaneGroup>
    void store(const LaneGroup& group) const {
        storeFrame(mGain, group, gain);
    }

private:
    static float& gain(SDemoGain_Alg_State& state, std::size_t channel) { return state.mClipGain[channel]; }

    hn::Vec<Frame<kLanes>> mCoef;
    hn::Vec<Frame<kLanes>> mGain;
};

// Cubic coefficient of the waveshaper, fixed by definition.
inline constexpr float kShaperCubic = -0.49611F;

// Applies the clip gain, then the waveshaper y + kShaperCubic * y^3, which also compensates the drive.
template<std::size_t kLanes, std::size_t kFrames>
HWY_INLINE void shape(const LaneSettings& settings, std::size_t chunk, ChunkRows<kLanes, kFrames>& rows) {
    const Samples d;
    const auto cubic = hn::Set(d, kShaperCubic);
    const auto invDrive = lanes(d, settings.mInvDrive);
    float* clipped = rows.mClipped[chunk];
    VectorsBefore<Samples> before{hn::Load(d, rows.mShaped.v + kRowSize<kLanes, kFrames> - hn::Lanes(d)),
                                  hn::Zero(d)};
    for (std::size_t i = 0; i < kRowSize<kLanes, kFrames>; i += hn::Lanes(d)) {
        const auto y = hn::Mul(hn::Load(d, rows.mDriven.v + i), loadBlocks<kLanes>(d, rows.mClipGain.v + i));
        hn::Store(y, d, clipped + i);
        const auto bent = hn::Add(hn::Mul(hn::Mul(hn::Mul(y, y), y), cubic), y);
        const auto shaped = hn::Mul(bent, invDrive);
        hn::Store(shaped, d, rows.mShaped.v + i);
        hn::Store(hn::Sub(shaped, delayed<kLanes, 1>(d, shaped, before)), d, rows.mShapedDifference.v + i);
        before.push(shaped);
    }
}

// DC blocker: o = o1*coef + (z - z1).
template<std::size_t kLanes>
class DcBlocker {
public:
    template<class LaneGroup>
    explicit DcBlocker(const LaneGroup& group)
        : mCoef(loadFrame(group, word<&SDemoGain_DcBlocker::mDcCoef>)),
          mY1(loadFrame(group, word<&SDemoGain_DcBlocker::mDcY1>)) {}

    template<std::size_t kFrames>
    static Row<kLanes, kFrames>& output(ChunkRows<kLanes, kFrames>& rows) {
        return rows.mDcBlocked;
    }

    template<std::size_t kFrames>
    HWY_INLINE hn::Vec<Frame<kLanes>> step(const ChunkRows<kLanes, kFrames>& rows, std::size_t frame) {
        mY1 = hn::Add(hn::Mul(mY1, mCoef), frameOf<kLanes>(rows.mShapedDifference.v, frame));
        return mY1;
    }

    // `x`: the last frame that went in.
    template<class LaneGroup>
    void store(const LaneGroup& group, const float* x) const {
        storeFrame(x, group, word<&SDemoGain_DcBlocker::mDcX1>);
        storeFrame(mY1, group, word<&SDemoGain_DcBlocker::mDcY1>);
        storeFrame(mY1, group, [](SDemoGain_Alg_State& state, std::size_t channel) -> float& {
            return state.mLastOut[channel];
        });
    }

private:
    template<float SDemoGain_DcBlocker::*kMember>
    static float& word(SDemoGain_Alg_State& state, std::size_t channel) {
        return state.mDc[channel].*kMember;
    }

    hn::Vec<Frame<kLanes>> mCoef;
    hn::Vec<Frame<kLanes>> mY1;
};

// Mixes dry (the delayed input) and wet, applies the volume and writes the level meters' terms. An output
// sample that broken coefficients have made non-finite is replaced by silence. Output that is bypassed is the
// input as it came.
template<std::size_t kChannels, std::size_t kLanes, std::size_t kFrames>
HWY_INLINE void mix(const LaneSettings& settings, std::size_t chunk, ChunkRows<kLanes, kFrames>& rows,
                    Row<kLanes, kFrames>& output) {
    const Samples d;
    const float* input = rows.mInput[chunk];
    const float* delayedIn = rows.mInput.delayed(chunk);
    for (std::size_t i = 0; i < kRowSize<kLanes, kFrames>; i += hn::Lanes(d)) {
        const auto dry = hn::Mul(hn::LoadU(d, delayedIn + i), lanes(d, settings.mDry));
        const auto sum =
            hn::Add(dry, hn::Mul(lanes(d, settings.mWet), loadBlocks<kLanes>(d, rows.mDcBlocked.v + i)));
        const auto sample = hn::Mul(lanes(d, settings.mVolume), sum);
        const auto isFinite = hn::Le(hn::Abs(sample), hn::Set(d, FLT_MAX));
        hn::Store(hn::IfThenElseZero(isFinite, sample), d, output.v + i);
        storeLevels<kChannels>(d, hn::Load(d, input + i), sum, rows.mLevels + i / kChannels * 2);
    }
    if (HWY_UNLIKELY(settings.mAnyBypass)) {
        const auto isBypassed = isOn(d, settings.mBypass);
        for (std::size_t i = 0; i < kRowSize<kLanes, kFrames>; i += hn::Lanes(d)) {
            const auto raw = hn::Load(d, rows.mRaw[chunk] + i);
            hn::Store(hn::IfThenElse(isBypassed, raw, hn::Load(d, output.v + i)), d, output.v + i);
        }
    }
}

} // namespace HWY_NAMESPACE
} // namespace DemoGain
HWY_AFTER_NAMESPACE();

#endif
