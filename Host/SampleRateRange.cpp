#include "Host/SampleRateRange.h"

#include <cstdio>

namespace varno {

std::optional<std::string> sampleRateRefusal(double sampleRateHz) {
    if (sampleRateHz >= kLowestSampleRateHz && sampleRateHz <= kHighestSampleRateHz) {
        return std::nullopt;
    }
    char text[128];
    std::snprintf(text, sizeof text, "sample rate %g Hz is not supported: expected %.0f to %.0f Hz",
                  sampleRateHz, kLowestSampleRateHz, kHighestSampleRateHz);
    return text;
}

} // namespace varno
