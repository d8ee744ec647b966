// The settings of a group, for each lane those of its instance.
#if defined(DEMOGAIN_LANESETTINGS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef DEMOGAIN_LANESETTINGS_INL_H
#undef DEMOGAIN_LANESETTINGS_INL_H
#else
#define DEMOGAIN_LANESETTINGS_INL_H
#endif

#include "Alg/DemoGain_AlgSettings.h"
#include "Alg/DemoGain_Lanes.h"
#include "Alg/DemoGain_Recursion-inl.h"

#include <hwy/highway.h>

#include <cstddef>

HWY_BEFORE_NAMESPACE();
namespace DemoGain {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// Which of several instances, numbered from 0, the lanes belong to.
template<std::size_t kInstances, std::size_t kChannels>
inline constexpr LaneValues kInstanceOfLane = [] {
    LaneValues instances{};
    for (std::size_t i = 0; i < kMostSamples; ++i) {
        instances.v[i] = static_cast<float>(i / kChannels % kInstances);
    }
    return instances;
}();

// Gives each lane the value of its instance. Whole vectors are stored, because vectors are loaded soon after.
template<std::size_t kChannels, std::size_t kInstances>
HWY_INLINE LaneValues spread(const float (&values)[kInstances]) {
    const Samples d;
    LaneValues result{};
    for (std::size_t i = 0; i < kMostSamples; i += hn::Lanes(d)) {
        auto all = hn::Set(d, values[0]);
        for (std::size_t instance = 1; instance < kInstances; ++instance) {
            const auto instances = hn::Load(d, kInstanceOfLane<kInstances, kChannels>.v + i);
            const auto isThis = hn::Eq(instances, hn::Set(d, static_cast<float>(instance)));
            all = hn::IfThenElse(isThis, hn::Set(d, values[instance]), all);
        }
        hn::Store(all, d, result.v + i);
    }
    return result;
}

// One setting of all instances.
template<std::size_t kChannels, std::size_t kInstances, class Value>
HWY_INLINE LaneValues spread(const Settings (&each)[kInstances], Value Settings::*member) {
    float values[kInstances];
    for (std::size_t instance = 0; instance < kInstances; ++instance) {
        values[instance] = static_cast<float>(each[instance].*member);
    }
    return spread<kChannels>(values);
}

// One part of all gain curves.
template<std::size_t kChannels, std::size_t kInstances>
HWY_INLINE LaneValues spread(const Settings (&each)[kInstances], float GainCurve::*member) {
    float values[kInstances];
    for (std::size_t instance = 0; instance < kInstances; ++instance) {
        values[instance] = each[instance].mCurve.*member;
    }
    return spread<kChannels>(values);
}

// Whether a switch is on in any instance.
template<std::size_t kInstances>
HWY_INLINE bool isAnyOn(const Settings (&each)[kInstances], bool Settings::*member) {
    bool isOn = false;
    for (const Settings& settings : each) {
        isOn = isOn || settings.*member;
    }
    return isOn;
}

// All settings of all instances.
template<std::size_t kChannels, std::size_t kInstances>
HWY_INLINE LaneSettings spread(const Settings (&each)[kInstances]) {
    const auto curveCoef = [&](std::size_t power) HWY_ATTR {
        float values[kInstances];
        for (std::size_t instance = 0; instance < kInstances; ++instance) {
            values[instance] = each[instance].mCurve.mC[power];
        }
        return spread<kChannels>(values);
    };
    return {.mAnyBypass = isAnyOn(each, &Settings::mBypass),
            .mAnyHighPass = isAnyOn(each, &Settings::mHighPass),
            .mAnyLink = isAnyOn(each, &Settings::mLink),
            .mBypass = spread<kChannels>(each, &Settings::mBypass),
            .mHighPass = spread<kChannels>(each, &Settings::mHighPass),
            .mLink = spread<kChannels>(each, &Settings::mLink),
            .mGain = spread<kChannels>(each, &Settings::mGain),
            .mVolume = spread<kChannels>(each, &Settings::mVolume),
            .mDrive = spread<kChannels>(each, &Settings::mDrive),
            .mInvDrive = spread<kChannels>(each, &Settings::mInvDrive),
            .mBandGain = spread<kChannels>(each, &Settings::mBandGain),
            .mBias = spread<kChannels>(each, &Settings::mBias),
            .mDry = spread<kChannels>(each, &Settings::mDry),
            .mWet = spread<kChannels>(each, &Settings::mWet),
            .mAttack = spread<kChannels>(each, &Settings::mAttack),
            .mRelease = spread<kChannels>(each, &Settings::mRelease),
            .mSlow = spread<kChannels>(each, &Settings::mSlow),
            .mThreshold = spread<kChannels>(each, &GainCurve::mThreshold),
            .mTop = spread<kChannels>(each, &GainCurve::mTop),
            .mTopGain = spread<kChannels>(each, &GainCurve::mTopGain),
            .mC = {curveCoef(0), curveCoef(1), curveCoef(2), curveCoef(3)}};
}

} // namespace HWY_NAMESPACE
} // namespace DemoGain
HWY_AFTER_NAMESPACE();

#endif
