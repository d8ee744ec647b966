#include "GUI/DemoGain_GUI_VST/DemoGain_VolumeMatch.h"

#include "DemoGain_ParameterTable.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

// Linear level. Input below it is no signal; output below it is taken as this level.
constexpr double kAudibleLevel = 0.01;
// Limits of the ratio of input to output: 20 dB in both directions.
constexpr double kLeastRatio = 0.1;
constexpr double kGreatestRatio = 10.0;
// The normalized volume is linear in dB.
constexpr double kLowestDB = kDemoGain_Level.mLow;
constexpr double kVolumePerDB = 1.0 / (kDemoGain_Level.mHigh - kDemoGain_Level.mLow);
constexpr double kDBPerDecade = 20.0;
// Share of the distance that a glide covers per tick.
constexpr double kGlideShare = 0.1;

// The normalized volume that compensates the difference between two peaks.
double TargetVolume(float inputPeak, float outputPeak) {
    const double outputAtLeast = std::fmax(outputPeak, kAudibleLevel);
    const double ratio = std::fmax(std::fmin(inputPeak / outputAtLeast, kGreatestRatio), kLeastRatio);
    return (kDBPerDecade * std::log10(ratio) - kLowestDB) * kVolumePerDB;
}

} // namespace

std::optional<double> DemoGain_VolumeMatch::Tick(uint32_t ticksMs, float inputLevel, float outputLevel,
                                                 double volume) {
    if (mIsRestartRequested) {
        Restart();
    }
    if (mIsMeasuring) {
        Listen(ticksMs, inputLevel, outputLevel);
        if (mSignalMs >= kMeasurementMs) {
            Measure(volume);
        }
    }
    return mIsGliding ? std::optional(Glide()) : std::nullopt;
}

// The last reading of the clock is kept: it belongs to the signal, not to the series.
void DemoGain_VolumeMatch::Restart() {
    mIsRestartRequested = false;
    mIsMeasuring = true;
    mMeasurements = 0;
    mSignalMs = 0;
    mInputPeak = 0.0F;
    mOutputPeak = 0.0F;
    mIsGliding = false;
}

// The clock is read only while there is signal, so the first tick after a pause adds the whole pause, and the
// first one of a new object the whole clock: the first measurement after a silence comes at once.
void DemoGain_VolumeMatch::Listen(uint32_t ticksMs, float inputLevel, float outputLevel) {
    if (mInputPeak > kAudibleLevel) {
        mSignalMs = static_cast<int32_t>(static_cast<uint32_t>(mSignalMs) + (ticksMs - mLastTicksMs));
        mLastTicksMs = ticksMs;
    }
    mInputPeak = std::fmax(inputLevel, mInputPeak);
    mOutputPeak = std::fmax(outputLevel, mOutputPeak);
}

void DemoGain_VolumeMatch::Measure(double volume) {
    mTargets[static_cast<std::size_t>(mMeasurements)] = TargetVolume(mInputPeak, mOutputPeak);
    ++mMeasurements;
    mGlidePosition = volume;
    mGlideTarget = MeanTarget();
    mGlideStep = (mGlideTarget - mGlidePosition) * kGlideShare;
    mIsGliding = true;
    mSignalMs = 0;
    mInputPeak = 0.0F;
    mOutputPeak = 0.0F;
    mIsMeasuring = mMeasurements < kSeriesLength;
}

double DemoGain_VolumeMatch::MeanTarget() const {
    return std::accumulate(mTargets.begin(), mTargets.begin() + mMeasurements, 0.0) / mMeasurements;
}

double DemoGain_VolumeMatch::Glide() {
    const bool isUpwards = mGlideStep > 0.0;
    const double next = mGlidePosition + mGlideStep;
    mGlidePosition = isUpwards ? std::min(mGlideTarget, next) : std::max(mGlideTarget, next);
    mIsGliding = isUpwards ? mGlidePosition < mGlideTarget : mGlidePosition > mGlideTarget;
    return mGlidePosition;
}
