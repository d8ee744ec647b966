/// How an instance runs.
#ifndef VARNO_HOST_INSTANCESETUP_H
#define VARNO_HOST_INSTANCESETUP_H

#include <cstdint>
#include <string>

namespace varno {

/// How an instance runs.
struct InstanceSetup {
    std::int32_t channels = 2;        ///< Inputs and outputs: chooses the variant.
    double sampleRateHz = 48000.0;    ///< See HostOptions::sampleRates.
    std::int32_t maximumFrames = 512; ///< Largest buffer given to the routine, at least 1.
    bool offline = false;             ///< What the controller tells about rendering offline.
    std::string effectID{};           ///< Which effect of the module; empty for the first.
};

} // namespace varno

#endif
