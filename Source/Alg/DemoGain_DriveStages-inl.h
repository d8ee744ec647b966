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

// Stereo link: both channels get the mean of their gain reductions.
template<class D>
HWY_INLINE hn::Vec<D> linked(D d, hn::Vec<D> reduction) {
    return hn::Mul(hn::Add(reduction, hn::Shuffle2301(reduction)), hn::Set(d, 0.5F));
}

// From the gain reduction to the driven signal. The gain computed from a sample is applied to the sample
// before it: the detector looks ahead by one sample.
template<std::size_t kChannels>
HWY_INLINE void drive(const Settings& settings, std::size_t chunk, ReductionTap<kChannels>& ioTap,
                      ChunkRows<kChannels>& rows) {
    const Samples<kChannels> d;
    const float* delayedIn = rows.mInput.delayed(chunk);
    for (std::size_t i = 0; i < kRowSize<kChannels>; i += hn::Lanes(d)) {
        auto reduction = loadBlocks<kChannels>(d, rows.mReduction.v + i);
        if constexpr (kChannels == 2) {
            if (settings.mLink) {
                reduction = linked(d, reduction);
            }
        }
        ioTap.raise(reduction);
        const auto amplified = hn::Mul(hn::Set(d, settings.mGain), hn::LoadU(d, delayedIn + i));
        const auto driven = hn::Mul(hn::Mul(amplified, DbToLin(d, reduction)), hn::Set(d, settings.mDrive));
        hn::Store(driven, d, rows.mDriven.v + i);
    }
}

// From the driven signal to its clip target.
template<std::size_t kChannels>
HWY_INLINE void computeClipTarget(const Settings& settings, float recovery, ChunkRows<kChannels>& rows) {
    const Samples<kChannels> d;
    const auto rest = hn::Set(d, 1.0F - recovery);
    for (std::size_t i = 0; i < kRowSize<kChannels>; i += hn::Lanes(d)) {
        const auto driven = hn::Load(d, rows.mDriven.v + i);
        const auto target = clipTarget(d, ClipLevel(d, driven, hn::Set(d, settings.mBias)));
        hn::Store(target, d, rows.mClipTarget.v + i);
        hn::Store(hn::Mul(rest, target), d, rows.mClipTargetTerm.v + i);
    }
}

// Smoothing of the clip gain: instant attack, one-pole recovery.
template<std::size_t kChannels>
class ClipGain {
public:
    explicit ClipGain(const SDemoGain_Alg_State& state)
        : mCoef(hn::Set(Frame<kChannels>(), state.mClipCoef)),
          mGain(loadFrame<kChannels>(state.mClipGain, [](float gain) { return gain; })) {}

    static Row<kChannels>& output(ChunkRows<kChannels>& rows) { return rows.mClipGain; }

    HWY_INLINE hn::Vec<Frame<kChannels>> step(const ChunkRows<kChannels>& rows, std::size_t frame) {
        const auto target = frameOf<kChannels>(rows.mClipTarget.v, frame);
        const auto recovering =
            hn::Add(hn::Mul(mCoef, mGain), frameOf<kChannels>(rows.mClipTargetTerm.v, frame));
        mGain = hn::IfThenElse(hn::Lt(mGain, target), recovering, target);
        return mGain;
    }

    void store(SDemoGain_Alg_State& ioState) const {
        storeFrame<kChannels>(mGain, ioState.mClipGain, [](float& gain) -> float& { return gain; });
    }

private:
    hn::Vec<Frame<kChannels>> mCoef;
    hn::Vec<Frame<kChannels>> mGain;
};

// Cubic coefficient of the waveshaper, fixed by definition.
inline constexpr float kShaperCubic = -0.49611F;

// Applies the clip gain, then the waveshaper y + kShaperCubic * y^3, which also compensates the drive.
template<std::size_t kChannels>
HWY_INLINE void shape(const Settings& settings, std::size_t chunk, ChunkRows<kChannels>& rows) {
    const Samples<kChannels> d;
    const auto cubic = hn::Set(d, kShaperCubic);
    const auto invDrive = hn::Set(d, settings.mInvDrive);
    float* clipped = rows.mClipped[chunk];
    auto before = hn::Load(d, rows.mShaped.v + kRowSize<kChannels> - hn::Lanes(d));
    for (std::size_t i = 0; i < kRowSize<kChannels>; i += hn::Lanes(d)) {
        const auto y =
            hn::Mul(hn::Load(d, rows.mDriven.v + i), loadBlocks<kChannels>(d, rows.mClipGain.v + i));
        hn::Store(y, d, clipped + i);
        const auto bent = hn::Add(hn::Mul(hn::Mul(hn::Mul(y, y), y), cubic), y);
        const auto shaped = hn::Mul(bent, invDrive);
        hn::Store(shaped, d, rows.mShaped.v + i);
        hn::Store(hn::Sub(shaped, delayed<kChannels, 1>(d, shaped, before)), d, rows.mShapedDifference.v + i);
        before = shaped;
    }
}

// DC blocker: o = o1*coef + (z - z1).
template<std::size_t kChannels>
class DcBlocker {
public:
    explicit DcBlocker(const SDemoGain_Alg_State& state)
        : mCoef(loadFrame<kChannels>(state.mDc, [](const auto& blocker) { return blocker.mDcCoef; })),
          mY1(loadFrame<kChannels>(state.mDc, [](const auto& blocker) { return blocker.mDcY1; })) {}

    static Row<kChannels>& output(ChunkRows<kChannels>& rows) { return rows.mDcBlocked; }

    HWY_INLINE hn::Vec<Frame<kChannels>> step(const ChunkRows<kChannels>& rows, std::size_t frame) {
        mY1 = hn::Add(hn::Mul(mY1, mCoef), frameOf<kChannels>(rows.mShapedDifference.v, frame));
        return mY1;
    }

    // `x`: the last frame that went in.
    void store(SDemoGain_Alg_State& ioState, const float* x) const {
        for (std::size_t channel = 0; channel < kChannels; ++channel) {
            ioState.mDc[channel].mDcX1 = x[channel];
        }
        storeFrame<kChannels>(mY1, ioState.mDc, [](auto& blocker) -> float& { return blocker.mDcY1; });
        storeFrame<kChannels>(mY1, ioState.mLastOut, [](float& last) -> float& { return last; });
    }

private:
    hn::Vec<Frame<kChannels>> mCoef;
    hn::Vec<Frame<kChannels>> mY1;
};

// Mixes dry (the delayed input) and wet, applies the volume and writes the level meters' terms. An output
// sample that broken coefficients have made non-finite is replaced by silence.
template<std::size_t kChannels>
HWY_INLINE void mix(const Settings& settings, std::size_t chunk, ChunkRows<kChannels>& rows,
                    Row<kChannels>& output) {
    const Samples<kChannels> d;
    const float* input = rows.mInput[chunk];
    const float* delayedIn = rows.mInput.delayed(chunk);
    for (std::size_t i = 0; i < kRowSize<kChannels>; i += hn::Lanes(d)) {
        const auto dry = hn::Mul(hn::LoadU(d, delayedIn + i), hn::Set(d, settings.mDry));
        const auto sum =
            hn::Add(dry, hn::Mul(hn::Set(d, settings.mWet), loadBlocks<kChannels>(d, rows.mDcBlocked.v + i)));
        const auto sample = hn::Mul(hn::Set(d, settings.mVolume), sum);
        const auto isFinite = hn::Le(hn::Abs(sample), hn::Set(d, FLT_MAX));
        hn::Store(hn::IfThenElseZero(isFinite, sample), d, output.v + i);
        storeLevels<kChannels>(d, hn::Load(d, input + i), sum, rows.mLevels + i / kChannels * 2);
    }
}

} // namespace HWY_NAMESPACE
} // namespace DemoGain
HWY_AFTER_NAMESPACE();

#endif
