#include "Settings/Quality.h"

#include "CommandLine/NumberText.h"

namespace varno {

std::optional<std::int32_t> qualityOption(const CommandLine& line) {
    const auto name = line.value(kQualityOption.name);
    for (const std::int32_t factor : kOversamplingFactors) {
        if (name == qualityName(factor)) {
            return factor;
        }
    }
    return std::nullopt;
}

std::string qualityText(const Oversampling& effect) {
    return "quality " + qualityText(qualityOf(effect));
}

std::optional<std::string> qualityRefusal(std::int32_t factor, const SampleRateRange& range, double rateHz) {
    const std::int32_t fitting = fittingFactor(factor, range, rateHz);
    if (fitting == factor) {
        return std::nullopt;
    }
    return "quality " + qualityName(factor) + " needs " + textFromNumber(factor * rateHz) +
           " Hz; expected at most " + textFromNumber(range.highestHz) + " Hz: " + qualityName(fitting) +
           " at the sample rate " + textFromNumber(rateHz) + " Hz";
}

} // namespace varno
