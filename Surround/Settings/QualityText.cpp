#include "Surround/Settings/QualityText.h"

#include "Surround/Settings/NumberText.h"

#include <algorithm>

namespace varno {
namespace {

std::string hertz(double rateHz) {
    return textFromNumber(rateHz) + " Hz";
}

} // namespace

Quality qualityOf(const Oversampling& effect) {
    return {effect.wish(), effect.factor(), effect.instance().setup().sampleRateHz};
}

std::string qualityName(std::int32_t factor) {
    return std::to_string(factor) + 'x';
}

std::string qualityText(const Quality& quality) {
    const std::string used = qualityName(quality.used);
    return quality.used == quality.wish ? used
                                        : used + ", since " + qualityName(quality.wish) + " needs " +
                                              hertz(quality.wish * quality.rateHz);
}

std::optional<std::int32_t> qualityNamed(std::string_view name) {
    const auto found = std::ranges::find(kOversamplingFactors, name, qualityName);
    return found == kOversamplingFactors.end() ? std::nullopt : std::optional(*found);
}

std::optional<std::string> qualityRefusal(std::int32_t factor, const SampleRateRange& range, double rateHz) {
    const std::int32_t fitting = fittingFactor(factor, range, rateHz);
    if (fitting == factor) {
        return std::nullopt;
    }
    return "quality " + qualityName(factor) + " needs " + hertz(factor * rateHz) + "; expected at most " +
           hertz(range.highestHz) + ": " + qualityName(fitting) + " at the sample rate " + hertz(rateHz);
}

} // namespace varno
