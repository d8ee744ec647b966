#include "Host/HostOptions.h"

#include <algorithm>
#include <cstdio>

namespace varno {

std::optional<std::string> sampleRateRefusal(const SampleRateRange& range, double sampleRateHz) {
    if (sampleRateHz >= range.lowestHz && sampleRateHz <= range.highestHz) {
        return std::nullopt;
    }
    char text[128];
    std::snprintf(text, sizeof text, "sample rate %g Hz is not supported: expected %.0f to %.0f Hz",
                  sampleRateHz, range.lowestHz, range.highestHz);
    return text;
}

bool HostOptions::withholds(const acfIID& iid) const {
    return std::any_of(withheld.begin(), withheld.end(), [&](const acfIID& entry) { return entry == iid; });
}

} // namespace varno
