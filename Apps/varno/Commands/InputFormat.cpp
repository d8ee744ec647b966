#include "InputFormat.h"

#include "CommandError.h"
#include "Host/HostOptions.h"

namespace varno {

void requireVariantFor(const Module& module, const AudioReader& reader) {
    const auto& format = reader.format();
    const auto* effect = module.description().effect({});
    if (effect == nullptr || effect->variantFor(format.channels) == nullptr) {
        throw WorkError(reader.name() + ": has " + std::to_string(format.channels) +
                        " channels; expected 1 (mono) or 2 (stereo)");
    }
    if (const auto refusal = sampleRateRefusal(module.options().sampleRates, format.rateHz)) {
        throw WorkError(reader.name() + ": " + *refusal);
    }
}

} // namespace varno
