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
#include "Alg/DemoGain_MeterTaps-inl.h"
#include "Alg/DemoGain_Recursion-inl.h"
#include "Alg/DemoGain_VectorConversions-inl.h"
#include "DemoGain_Alg.h"

#include <hwy/highway.h>

#include <cfloat>
#include <cstddef>

HWY_BEFORE_NAMESPACE();
namespace DemoGain {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// Clip gain that a clip level asks for: 1 up to 0.5, then a cubic over w = 0 to pi/2, then what brings the
// level to 1. It steps from 0.642 to 1 where the last two meet; intended.
template<class D>
HWY_INLINE hn::Vec<D> clipTarget(D d, hn::Vec<D> level) {
    const auto half = hn::Set(d, 0.5F);
    const auto one = hn::Set(d, 1.0F);
    const auto above = hn::Sub(level, half);
    const auto w = hn::Mul(hn::Add(above, above), hn::Set(d, 1.5707964F));
    const auto cubic = hn::Mul(hn::Mul(hn::Mul(w, hn::Set(d, -0.554926F)), w), w);
    const auto shoulder = hn::Add(hn::Mul(hn::Add(cubic, hn::Mul(w, hn::Set(d, 1.55F))), half), half);
    const auto limited = hn::Div(hn::IfThenElse(hn::Gt(level, one), one, shoulder), level);
    return hn::IfThenElse(hn::Le(level, half), one, limited);
}

// Gives both channels the mean of their reductions.
template<class D>
HWY_INLINE hn::Vec<D> linked(D d, hn::Vec<D> reduction) {
    return hn::Mul(hn::Add(reduction, hn::Shuffle2301(reduction)), hn::Set(d, 0.5F));
}

// From the gain reduction to the driven signal. The gain computed from a sample meets the sample before it.
template<std::size_t kChannels>
HWY_INLINE void drive(const Settings& settings, std::size_t chunk, ReductionTap<kChannels>& ioTap,
                      ChunkRows<kChannels>& rows) {
    const Samples<kChannels> d;
    const float* late = rows.mInput.late(chunk);
    for (std::size_t i = 0; i < kRowSize<kChannels>; i += hn::Lanes(d)) {
        auto reduction = loadBlocks<kChannels>(d, rows.mReduction.v + i);
        if constexpr (kChannels == 2) {
            if (settings.mLink) {
                reduction = linked(d, reduction);
            }
        }
        ioTap.raise(reduction);
        const auto amplified = hn::Mul(hn::Set(d, settings.mGain), hn::LoadU(d, late + i));
        const auto driven = hn::Mul(hn::Mul(amplified, DbToLin(d, reduction)), hn::Set(d, settings.mDrive));
        hn::Store(driven, d, rows.mDriven.v + i);
    }
}

// From the driven signal to the clip gain that its level asks for.
template<std::size_t kChannels>
HWY_INLINE void aimClipGain(const Settings& settings, float recovery, ChunkRows<kChannels>& rows) {
    const Samples<kChannels> d;
    const auto rest = hn::Set(d, 1.0F - recovery);
    for (std::size_t i = 0; i < kRowSize<kChannels>; i += hn::Lanes(d)) {
        const auto driven = hn::Load(d, rows.mDriven.v + i);
        const auto target = clipTarget(d, ClipLevel(d, driven, hn::Set(d, settings.mBias)));
        hn::Store(target, d, rows.mClipTarget.v + i);
        hn::Store(hn::Mul(rest, target), d, rows.mClipShare.v + i);
    }
}

// The clip gain: it falls to its target at once and recovers slowly.
template<std::size_t kChannels>
class ClipGain {
public:
    explicit ClipGain(const SDemoGain_Alg_State& state)
        : mKeep(hn::Set(Frame<kChannels>(), state.mClipCoef)),
          mGain(loadFrame<kChannels>(state.mClipGain, [](float gain) { return gain; })) {}

    static Row<kChannels>& output(ChunkRows<kChannels>& rows) { return rows.mClipGain; }

    HWY_INLINE hn::Vec<Frame<kChannels>> step(const ChunkRows<kChannels>& rows, std::size_t frame) {
        const auto target = frameOf<kChannels>(rows.mClipTarget.v, frame);
        const auto recovering = hn::Add(hn::Mul(mKeep, mGain), frameOf<kChannels>(rows.mClipShare.v, frame));
        mGain = hn::IfThenElse(hn::Lt(mGain, target), recovering, target);
        return mGain;
    }

    void store(SDemoGain_Alg_State& ioState) const {
        storeFrame<kChannels>(mGain, ioState.mClipGain, [](float& gain) -> float& { return gain; });
    }

private:
    hn::Vec<Frame<kChannels>> mKeep;
    hn::Vec<Frame<kChannels>> mGain;
};

// Applies the clip gain; then the cubic waveshaper, which also takes the drive back.
template<std::size_t kChannels>
HWY_INLINE void shape(const Settings& settings, std::size_t chunk, ChunkRows<kChannels>& rows) {
    const Samples<kChannels> d;
    const auto cubic = hn::Set(d, -0.49611F);
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
        hn::Store(hn::Sub(shaped, late<kChannels, 1>(d, shaped, before)), d, rows.mShapedSteps.v + i);
        before = shaped;
    }
}

// Takes the constant part out: o = o1*coef + (z - z1).
template<std::size_t kChannels>
class DcBlocker {
public:
    explicit DcBlocker(const SDemoGain_Alg_State& state)
        : mCoef(loadFrame<kChannels>(state.mDc, [](const auto& blocker) { return blocker.mDcCoef; })),
          mY1(loadFrame<kChannels>(state.mDc, [](const auto& blocker) { return blocker.mDcY1; })) {}

    static Row<kChannels>& output(ChunkRows<kChannels>& rows) { return rows.mBlocked; }

    HWY_INLINE hn::Vec<Frame<kChannels>> step(const ChunkRows<kChannels>& rows, std::size_t frame) {
        mY1 = hn::Add(hn::Mul(mY1, mCoef), frameOf<kChannels>(rows.mShapedSteps.v, frame));
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

// Adds the delayed input as the dry part, and leaves the output at its volume in `output`. A sample that
// broken coefficients have made non-finite leaves as silence.
template<std::size_t kChannels>
HWY_INLINE void mix(const Settings& settings, std::size_t chunk, ChunkRows<kChannels>& rows,
                    Row<kChannels>& output) {
    const Samples<kChannels> d;
    const float* input = rows.mInput[chunk];
    const float* late = rows.mInput.late(chunk);
    for (std::size_t i = 0; i < kRowSize<kChannels>; i += hn::Lanes(d)) {
        const auto dry = hn::Mul(hn::LoadU(d, late + i), hn::Set(d, settings.mDry));
        const auto sum =
            hn::Add(dry, hn::Mul(hn::Set(d, settings.mWet), loadBlocks<kChannels>(d, rows.mBlocked.v + i)));
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
