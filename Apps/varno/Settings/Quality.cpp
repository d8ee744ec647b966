#include "Settings/Quality.h"

namespace varno {

std::optional<std::int32_t> qualityOption(const CommandLine& line) {
    const auto name = line.value(kQualityOption.name);
    return name ? qualityNamed(*name) : std::nullopt;
}

std::string qualityText(const Oversampling& effect) {
    return "quality " + qualityText(qualityOf(effect));
}

} // namespace varno
