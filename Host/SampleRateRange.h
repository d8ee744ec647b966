/// The sample rates at which effects are offered.
#ifndef VARNO_HOST_SAMPLERATERANGE_H
#define VARNO_HOST_SAMPLERATERANGE_H

#include <optional>
#include <string>

namespace varno {

/// Below 14 kHz the detector's 7 kHz all-pass is unstable; 16 kHz is the next rate in use. 384 kHz is the
/// highest rate of audio devices.
inline constexpr double kLowestSampleRateHz = 16000.0;
inline constexpr double kHighestSampleRateHz = 384000.0;

/// One line that says why a rate is refused; nothing when it is accepted. Every front end asks here, so that
/// all say the same. [any]
std::optional<std::string> sampleRateRefusal(double sampleRateHz);

} // namespace varno

#endif
