// The meter taps of a group while a buffer is processed. The routine raises a tap and never lowers it;
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

// Weight of a sample in the level averages.
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

// The gain reduction of each instance's left (or only) channel.
template<std::size_t kInstances, std::size_t kChannels>
class ReductionTap {
public:
    explicit ReductionTap(const Group<kInstances, kChannels>& group) {
        LaneValues highest{};
        for (std::size_t i = 0; i < kMostSamples; ++i) {
            highest.v[i] = loadTap(group.mTaps[i / kChannels % kInstances][eMeterTap_GainReductionLeft]);
        }
        mHighest = lanes(mD, highest);
    }

    HWY_INLINE void raise(hn::Vec<Samples> reductionDB) {
        mHighest = raised(mHighest, hn::Mul(reductionDB, hn::Set(mD, kMeterPerDB)));
    }

    // The right tap shows the left channel's reduction, in stereo too; intended.
    void store(const Group<kInstances, kChannels>& group) const {
        HWY_ALIGN float highest[kMostSamples];
        hn::Store(mHighest, mD, highest);
        for (std::size_t instance = 0; instance < kInstances; ++instance) {
            float left = highest[instance * kChannels];
            for (std::size_t i = instance * kChannels; i < hn::Lanes(mD); i += kInstances * kChannels) {
                left = highest[i] > left ? highest[i] : left;
            }
            group.mTaps[instance][eMeterTap_GainReductionLeft] = storedTap(left);
            group.mTaps[instance][eMeterTap_GainReductionRight] = storedTap(left);
        }
    }

private:
    static constexpr Samples mD{};
    hn::Vec<Samples> mHighest;
};

// Writes the terms that each instance's first channel adds to its averages: per frame that of the input, then
// that of the output before volume.
template<std::size_t kChannels, class D>
HWY_INLINE void storeLevels(D d, hn::Vec<D> input, hn::Vec<D> sum, float* levels) {
    const auto weight = hn::Set(d, kAverageWeight);
    if constexpr (kChannels == 2) {
        hn::Store(hn::Mul(hn::Abs(hn::OddEven(hn::DupEven(sum), input)), weight), d, levels);
    } else {
        hn::StoreInterleaved2(hn::Mul(hn::Abs(input), weight), hn::Mul(hn::Abs(sum), weight), d, levels);
    }
}

// The level averages of input and output and their taps, side by side in one vector for all instances.
template<std::size_t kInstances>
class LevelTaps {
public:
    template<std::size_t kChannels>
    explicit LevelTaps(const Group<kInstances, kChannels>& group)
        : mCoef(hn::Set(Pairs(), kAverageCoef)),
          mAverages(collect<2 * kInstances>([&](std::size_t i) HWY_ATTR {
              const SDemoGain_Alg_State& state = *group.mStates[i / 2];
              return i % 2 == 0 ? state.mInAvg : state.mOutAvg;
          })),
          mBefore(collect<2 * kInstances>([&](std::size_t i) HWY_ATTR {
              return loadTap(group.mTaps[i / 2][i % 2 == 0 ? eMeterTap_Input : eMeterTap_Output]);
          })),
          mHighest(mBefore) {}

    template<std::size_t kLanes, std::size_t kFrames>
    HWY_INLINE hn::Vec<hn::FixedTag<float, 2 * kInstances>> step(const ChunkRows<kLanes, kFrames>& rows,
                                                                 std::size_t frame) {
        mAverages = hn::Add(hn::Mul(mAverages, mCoef), frameOf<2 * kInstances>(rows.mLevels, frame));
        mHighest = hn::Max(mAverages, mHighest);
        return mAverages;
    }

    template<std::size_t kChannels>
    void store(const Group<kInstances, kChannels>& group) const {
        float averages[2 * kInstances];
        float highest[2 * kInstances];
        hn::StoreU(mAverages, Pairs(), averages);
        // A tap that broken coefficients have made non-finite keeps its value.
        hn::StoreU(raised(mBefore, mHighest), Pairs(), highest);
        for (std::size_t i = 0; i < kInstances; ++i) {
            group.mStates[i]->mInAvg = averages[2 * i];
            group.mStates[i]->mOutAvg = averages[2 * i + 1];
            group.mTaps[i][eMeterTap_Input] = storedTap(highest[2 * i]);
            group.mTaps[i][eMeterTap_Output] = storedTap(highest[2 * i + 1]);
        }
    }

private:
    using Pairs = hn::FixedTag<float, 2 * kInstances>;

    hn::Vec<Pairs> mCoef;
    hn::Vec<Pairs> mAverages;
    hn::Vec<Pairs> mBefore; // The taps at the start of the buffer.
    hn::Vec<Pairs> mHighest;
};

} // namespace HWY_NAMESPACE
} // namespace DemoGain
HWY_AFTER_NAMESPACE();

#endif
