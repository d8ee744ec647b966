#ifndef VARNO_APPS_VARNO_SETTINGS_QUALITY_H
#define VARNO_APPS_VARNO_SETTINGS_QUALITY_H

#include "CommandLine/CommandLine.h"
#include "Host/Module.h"
#include "Surround/Settings/QualityText.h"

#include <cstdint>
#include <optional>
#include <string>

namespace varno {

/// The factor of oversampling.
inline constexpr OptionEntry kQualityOption = {
    .name = "--quality",
    .value = "FACTOR",
    .kind = ValueKind::kChoice,
    .choices = "1x 2x 4x 8x",
    .group = "Settings",
    .help =
        "Compute at so many times the sample rate, 384 kHz at most: 1x (the default), 2x, 4x or 8x. "
        "Harmonics above half the sample rate then fold less into the sound. The latency is 1, 41, 46 or 48 "
        "frames. Presets and states do not hold it."};

/// The factor that --quality names; nothing where the option was not given. @throws nothing: a choice not
/// offered is refused with the command line
std::optional<std::int32_t> qualityOption(const CommandLine& line);

/// The factor for a sample rate: that of --quality, or 1. @throws UsageError where it does not fit the rate
std::int32_t requiredQuality(const CommandLine& line, const Module& module, double rateHz);

/// What is used of a wish: "quality 4x", or "quality 2x, since 8x needs 768000 Hz".
std::string qualityText(const Oversampling& effect);

} // namespace varno

#endif
