#include "Settings/Quality.h"

namespace varno {

std::optional<std::int32_t> qualityOption(const CommandLine& line) {
    const auto name = line.value(kQualityOption.name);
    return name ? qualityNamed(*name) : std::nullopt;
}

std::int32_t requiredQuality(const CommandLine& line, const Module& module, double rateHz) {
    const std::int32_t quality = qualityOption(line).value_or(1);
    if (const auto refusal = qualityRefusal(quality, module.options().sampleRates, rateHz)) {
        throw UsageError("option --quality: " + *refusal);
    }
    return quality;
}

std::string qualityText(const Oversampling& effect) {
    return "quality " + qualityText(qualityOf(effect));
}

} // namespace varno
