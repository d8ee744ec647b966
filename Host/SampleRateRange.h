/// The sample rates at which a module is used.
#ifndef VARNO_HOST_SAMPLERATERANGE_H
#define VARNO_HOST_SAMPLERATERANGE_H

#include <optional>
#include <string>

namespace varno {

/// A range of sample rates in Hz, both ends included. The default range is wider than what audio devices
/// have: a front end that knows what its effect needs gives a narrower one.
struct SampleRateRange {
    double lowestHz = 1.0;
    double highestHz = 1.0e7;
};

/// One line that says why a rate is refused; nothing when it lies in the range. Every front end asks here, so
/// that all say the same. [any]
std::optional<std::string> sampleRateRefusal(const SampleRateRange& range, double sampleRateHz);

} // namespace varno

#endif
