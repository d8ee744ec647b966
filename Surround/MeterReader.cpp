#include "Surround/MeterReader.h"

#include "DemoGain_MeterLaw.h"

#include <algorithm>
#include <cmath>

namespace varno {
namespace {

// -60 dB, where the bar's scale begins.
constexpr double kSilence = 1.0e-3;
constexpr double kDecibels = 20.0;

// A number on the bar has one decimal.
std::optional<double> decibelsOf(double linear) {
    if (!(linear > kSilence)) {
        return std::nullopt;
    }
    return std::round(kDecibels * std::log10(linear) * 10.0) / 10.0;
}

double reductionDB(double tap) {
    return -std::round(tap * double{DemoGain::kMeterRangeDB} * 10.0) / 10.0;
}

std::optional<std::size_t> tapOf(const EffectDescription& effect, std::int32_t kind) {
    for (std::size_t tap = 0; tap < effect.meters.size(); ++tap) {
        if (integerProperty(effect.meters[tap].properties, AAX_eProperty_Meter_Kind) == kind) {
            return tap;
        }
    }
    return std::nullopt;
}

double valueOf(const MeterBank& meters, const std::optional<std::size_t>& tap) {
    return tap && *tap < meters.ids().size() ? double{meters.value(*tap)} : 0.0;
}

} // namespace

double PeakHold::follow(double value, TimePoint now) {
    if (!mSince || value >= mPeak || now - *mSince > kHoldTime) {
        mPeak = value;
        mSince = now;
    }
    return mPeak;
}

MeterReader::MeterReader(const EffectDescription& effect)
    : mLevelTaps{tapOf(effect, AAX_eMeterKind_Input), tapOf(effect, AAX_eMeterKind_Output)},
      mReductionTap(tapOf(effect, AAX_eMeterKind_GainReduction)) {
}

BarMeters MeterReader::read(const MeterBank& meters, PeakHold::TimePoint now) {
    BarMeters shown;
    for (std::size_t i = 0; i < mLevelTaps.size(); ++i) {
        const double level = valueOf(meters, mLevelTaps.at(i));
        shown.levels.at(i) = {decibelsOf(level), decibelsOf(mLevels.at(i).follow(level, now))};
    }
    const double reduction = valueOf(meters, mReductionTap);
    shown.reductionNowDB = reductionDB(reduction);
    shown.reductionDB = reductionDB(mReduction.follow(reduction, now));
    return shown;
}

} // namespace varno
