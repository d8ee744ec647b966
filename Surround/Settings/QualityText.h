/// The quality of the sound as people read it. Pure functions.
#ifndef VARNO_SURROUND_SETTINGS_QUALITYTEXT_H
#define VARNO_SURROUND_SETTINGS_QUALITYTEXT_H

#include "Host/Oversampling/Oversampling.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace varno {

/// A factor of oversampling that was chosen, and what the sample rate allows of it. Plain data.
struct Quality {
    std::int32_t wish = 1; ///< Of kOversamplingFactors.
    std::int32_t used = 1; ///< The highest that fits, at most the wish.
    double rateHz = kDefaultSampleRateHz;

    bool operator==(const Quality&) const = default;
};

/// That of a running effect. [any]
Quality qualityOf(const Oversampling& effect);

/// A factor as people write it: "4x". [any]
std::string qualityName(std::int32_t factor);

/// The factor with this name; nothing where none has it. [any]
std::optional<std::int32_t> qualityNamed(std::string_view name);

/// What is used of a wish: "4x", or "2x, since 8x needs 768000 Hz". [any]
std::string qualityText(const Quality& quality);

/// Why a quality is not possible at a sample rate, in one line; nothing where it is. [any]
std::optional<std::string> qualityRefusal(std::int32_t factor, const SampleRateRange& range, double rateHz);

} // namespace varno

#endif
