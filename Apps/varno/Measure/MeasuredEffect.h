/// The effect as measurements use it: mono instances, signals for them, and what comes out.
#ifndef VARNO_APPS_VARNO_MEASURE_MEASUREDEFFECT_H
#define VARNO_APPS_VARNO_MEASURE_MEASUREDEFFECT_H

#include "Host/Instance.h"
#include "Settings/Settings.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace varno {

/// Samples of one channel, 1.0 is full scale.
using Samples = std::vector<float>;

/// The magnitude of a level in dB; 0 dB is 1. [any]
double magnitude(double levelDB);

/// A sine that starts at 0. @param levelDB of its peak, dBFS [any]
Samples sine(double frequencyHz, double levelDB, double lengthS, double rateHz);

/// The last second of at least one. [any]
std::span<const float> lastSecond(const Samples& samples, double rateHz);

/// Root mean square. [any]
double rms(std::span<const float> samples);

/// Makes instances at the settings of a command line. [main]
class EffectMaker {
public:
    /// @param settings outlives this object
    /// @param quality factor of oversampling of `processed`, which fits the rate
    EffectMaker(std::shared_ptr<Module> module, const Settings& settings, double rateHz,
                std::int32_t quality = 1);

    double rateHz() const { return mRateHz; }

    /// A mono instance at its start. @param changes made after the settings of the command line, in order
    /// @throws HostError where the rate is refused; UsageError as Settings::applyTo(); Interrupted
    std::unique_ptr<Instance> make(const std::vector<ParameterText>& changes) const;

    /// What a new instance makes of samples at the quality: as many.
    Samples processed(const std::vector<ParameterText>& changes, Samples samples) const;

private:
    std::shared_ptr<Module> mModule;
    const Settings& mSettings;
    double mRateHz;
    std::int32_t mQuality;
};

/// The gain reduction in dB, 0 and more, after each of the next frames of a constant input. [main]
std::vector<double> reductionOfConstant(Instance& instance, float constant, std::size_t frames);

} // namespace varno

#endif
