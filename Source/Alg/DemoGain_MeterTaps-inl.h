// The meter taps of one instance while a buffer is processed. The routine raises a tap and never lowers it;
// the host lowers it.
#if defined(DEMOGAIN_METERTAPS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef DEMOGAIN_METERTAPS_INL_H
#undef DEMOGAIN_METERTAPS_INL_H
#else
#define DEMOGAIN_METERTAPS_INL_H
#endif

#include "Alg/DemoGain_Recursion-inl.h"
#include "DemoGain_Alg.h"
#include "DemoGain_MeterLaw.h"

#include <hwy/highway.h>

#include <cfloat>
#include <cmath>
#include <cstddef>

HWY_BEFORE_NAMESPACE();
namespace DemoGain {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// The level averages are one-pole means of absolute samples at every sample rate: coefficient of the old
// average (fixed by definition; a time constant of 0.12 s at 48 kHz) and weight of a sample.
inline constexpr float kAverageCoef = 0.99983F;
inline constexpr float kAverageWeight = 1.0F - kAverageCoef;

// Stands for a tap that the host left non-finite: any value raises it.
inline constexpr float kNeverRaised = -FLT_MAX;

// A tap's value as the routine compares with it.
inline float loadTap(float tap) {
    return std::fabs(tap) <= FLT_MAX ? tap : kNeverRaised;
}

// A tap's value as the host finds it.
inline float storedTap(float tap) {
    return tap == kNeverRaised ? 0.0F : tap;
}

// A tap after a value: the larger of the two, or the tap where the value is not finite.
template<class V>
HWY_INLINE V raised(V tap, V value) {
    const hn::DFromV<V> d;
    const auto raises = hn::And(hn::Ge(value, tap), hn::Le(value, hn::Set(d, FLT_MAX)));
    return hn::IfThenElse(raises, value, tap);
}

// The gain reduction of the left (or only) channel.
template<std::size_t kChannels>
class ReductionTap {
public:
    explicit ReductionTap(const float* taps)
        : mHighest(hn::Set(mD, loadTap(taps[eMeterTap_GainReductionLeft]))) {}

    HWY_INLINE void raise(hn::Vec<Samples<kChannels>> reductionDB) {
        mHighest = raised(mHighest, hn::Mul(reductionDB, hn::Set(mD, kMeterPerDB)));
    }

    // The right tap shows the left channel's reduction, in stereo too; intended.
    void store(float* taps) const {
        HWY_ALIGN float highest[kRowSize<kChannels>];
        hn::Store(mHighest, mD, highest);
        float left = highest[0];
        for (std::size_t i = kChannels; i < hn::Lanes(mD); i += kChannels) {
            left = highest[i] > left ? highest[i] : left;
        }
        taps[eMeterTap_GainReductionLeft] = storedTap(left);
        taps[eMeterTap_GainReductionRight] = storedTap(left);
    }

private:
    static constexpr Samples<kChannels> mD{};
    hn::Vec<Samples<kChannels>> mHighest;
};

// Writes the terms that the first channel adds to the averages: per frame that of the input, then that of the
// output before volume.
template<std::size_t kChannels, class D>
HWY_INLINE void storeLevels(D d, hn::Vec<D> input, hn::Vec<D> sum, float* levels) {
    const auto weight = hn::Set(d, kAverageWeight);
    if constexpr (kChannels == 2) {
        hn::Store(hn::Mul(hn::Abs(hn::OddEven(hn::DupEven(sum), input)), weight), d, levels);
    } else {
        hn::StoreInterleaved2(hn::Mul(hn::Abs(input), weight), hn::Mul(hn::Abs(sum), weight), d, levels);
    }
}

// The level averages of input and output and their taps, side by side in one vector.
class LevelTaps {
public:
    LevelTaps(const SDemoGain_Alg_State& state, const float* taps)
        : mCoef(hn::Set(Pair(), kAverageCoef)),
          mAverages(pair(state.mInAvg, state.mOutAvg)),
          mBefore(pair(loadTap(taps[eMeterTap_Input]), loadTap(taps[eMeterTap_Output]))),
          mHighest(mBefore) {}

    template<std::size_t kChannels>
    HWY_INLINE hn::Vec<hn::FixedTag<float, 2>> step(const ChunkRows<kChannels>& rows, std::size_t frame) {
        mAverages = hn::Add(hn::Mul(mAverages, mCoef), frameOf<2>(rows.mLevels, frame));
        mHighest = hn::Max(mAverages, mHighest);
        return mAverages;
    }

    void store(SDemoGain_Alg_State& ioState, float* taps) const {
        float averages[2];
        float highest[2];
        hn::StoreU(mAverages, Pair(), averages);
        // A tap that broken coefficients have made non-finite keeps its value.
        hn::StoreU(raised(mBefore, mHighest), Pair(), highest);
        ioState.mInAvg = averages[0];
        ioState.mOutAvg = averages[1];
        taps[eMeterTap_Input] = storedTap(highest[0]);
        taps[eMeterTap_Output] = storedTap(highest[1]);
    }

private:
    using Pair = hn::FixedTag<float, 2>;

    static HWY_INLINE hn::Vec<Pair> pair(float first, float second) {
        const float values[2] = {first, second};
        return hn::LoadU(Pair(), values);
    }

    hn::Vec<Pair> mCoef;
    hn::Vec<Pair> mAverages;
    hn::Vec<Pair> mBefore; // The taps at the start of the buffer.
    hn::Vec<Pair> mHighest;
};

} // namespace HWY_NAMESPACE
} // namespace DemoGain
HWY_AFTER_NAMESPACE();

#endif
