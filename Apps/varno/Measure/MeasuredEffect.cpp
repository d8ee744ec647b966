#include "Measure/MeasuredEffect.h"

#include "CommandLine/Interruption.h"
#include "DemoGain_Oversampling.h"
#include "Host/Oversampling/Oversampling.h"
#include "Surround/Settings/TrueValue.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace varno {
namespace {

// Of a tap at 1, which is how much of the full scale one dB of reduction takes: see DemoGain_MeterLaw.h.
constexpr double kReductionRangeDB = 32.0;
// The tap of the left channel's gain reduction.
constexpr std::size_t kReductionTap = 0;
constexpr double kDBPerDecade = 20.0;

} // namespace

double magnitude(double levelDB) {
    return std::pow(10.0, levelDB / kDBPerDecade); // NOLINT(readability-magic-numbers): decades
}

Samples sine(double frequencyHz, double levelDB, double lengthS, double rateHz) {
    Samples samples(static_cast<std::size_t>(std::llround(lengthS * rateHz)));
    const double peak = magnitude(levelDB);
    for (std::size_t frame = 0; frame < samples.size(); ++frame) {
        const double turns = frequencyHz * static_cast<double>(frame) / rateHz;
        samples[frame] =
            static_cast<float>(peak * std::sin(2.0 * std::numbers::pi * (turns - std::floor(turns))));
    }
    return samples;
}

std::span<const float> lastSecond(const Samples& samples, double rateHz) {
    return std::span(samples).last(static_cast<std::size_t>(std::llround(rateHz)));
}

double rms(std::span<const float> samples) {
    double sum = 0.0;
    for (const double sample : samples) {
        sum += sample * sample;
    }
    return std::sqrt(sum / static_cast<double>(samples.size()));
}

EffectMaker::EffectMaker(std::shared_ptr<Module> module, const Settings& settings, double rateHz,
                         std::int32_t quality)
    : mModule(std::move(module)),
      mSettings(settings),
      mRateHz(rateHz),
      mQuality(quality) {
}

std::unique_ptr<Instance> EffectMaker::make(const std::vector<ParameterText>& changes) const {
    throwIfInterrupted();
    auto instance =
        std::make_unique<Instance>(mModule, InstanceSetup{.channels = 1, .sampleRateHz = mRateHz});
    mSettings.applyTo(*instance);
    for (const auto& change : changes) {
        instance->setNormalized(change.id, normalizedFromText(*instance, change, unitSettings(*instance),
                                                              "measure", kExitWrongUsage));
    }
    return instance;
}

Samples EffectMaker::processed(const std::vector<ParameterText>& changes, Samples samples) const {
    const auto instance = make(changes);
    Oversampling effect(*instance, {.routineLatencyFrames = kDemoGain_LatencyFrames, .factor = mQuality});
    float* channel = samples.data();
    effect.process(&channel, &channel, static_cast<std::int32_t>(samples.size()));
    return samples;
}

std::vector<double> reductionOfConstant(Instance& instance, float constant, std::size_t frames) {
    std::vector<double> reduction(frames);
    for (double& value : reduction) {
        float sample = constant;
        float* channel = &sample;
        // A tap shows the largest value since it was reset.
        instance.meters().reset();
        instance.process(&channel, &channel, 1);
        value = kReductionRangeDB * static_cast<double>(instance.meters().value(kReductionTap));
    }
    return reduction;
}

} // namespace varno
