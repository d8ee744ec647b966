/// The automatic volume matching: keeps the output about as loud as the input after a setting has changed.
#ifndef VARNO_SOURCE_GUI_DEMOGAIN_GUI_VST_DEMOGAIN_VOLUMEMATCH_H
#define VARNO_SOURCE_GUI_DEMOGAIN_GUI_VST_DEMOGAIN_VOLUMEMATCH_H

#include <array>
#include <cstdint>
#include <optional>

/// A gesture requests a series of measurements. Each takes kMeasurementMs of audible input and sets the
/// volume's target to the mean of the series so far; the volume glides there over ten ticks. After
/// kSeriesLength measurements the series is over. The caller owns parameters, meters and clock; it ticks at
/// the rate of its host's timer.
class DemoGain_VolumeMatch {
public:
    /// Audible input that a measurement takes, in milliseconds.
    static constexpr int32_t kMeasurementMs = 300;
    /// Measurements of a series.
    static constexpr int kSeriesLength = 5;

    /// Makes the next tick stop the current series and begin a new one. [main]
    void RequestRestart() { mIsRestartRequested = true; }
    /// Whether the next tick begins a series. [main]
    bool IsRestartRequested() const { return mIsRestartRequested; }

    /// One step. `ticksMs` is a clock in milliseconds that may wrap; the levels are those of the input and
    /// output meters, linear; `volume` is the current normalized volume. Returns the normalized volume to
    /// write, or nothing when it stays. [main]
    std::optional<double> Tick(uint32_t ticksMs, float inputLevel, float outputLevel, double volume);

private:
    /// Room for the targets of a series.
    static constexpr int kHistoryLength = 10;
    static_assert(kSeriesLength <= kHistoryLength);

    void Restart();
    void Listen(uint32_t ticksMs, float inputLevel, float outputLevel);
    void Measure(double volume);
    double MeanTarget() const;
    double Glide();

    bool mIsRestartRequested = false;
    bool mIsMeasuring = false;
    uint32_t mLastTicksMs = 0; ///< When mSignalMs was last added to.
    int32_t mSignalMs = 0;     ///< Time during which the input was audible.
    float mInputPeak = 0.0F;   ///< Since the last measurement, as the output's.
    float mOutputPeak = 0.0F;
    int mMeasurements = 0; ///< Taken in this series.
    std::array<double, kHistoryLength> mTargets{};
    bool mIsGliding = false;
    double mGlideStep = 0.0; ///< Signed, per tick.
    double mGlideTarget = 0.0;
    double mGlidePosition = 0.0;
};

#endif
