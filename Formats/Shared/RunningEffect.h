/// The effect as a plug-in of a host runs it.
#ifndef VARNO_FORMATS_SHARED_RUNNINGEFFECT_H
#define VARNO_FORMATS_SHARED_RUNNINGEFFECT_H

#include "Host/Bypass.h"
#include "Host/Instance.h"
#include "Host/Module.h"
#include "Host/Oversampling/Oversampling.h"
#include "Shared/GlidingValues.h"
#include "Shared/MeterHold.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace varno {

/// Longest buffer that the module receives; a longer run is divided. The buffers of both channels, before and
/// after, and the bypassed sound together lie in a processor's first cache.
inline constexpr std::int32_t kBufferFrames = 512;

/// What a RunningEffect is made for.
struct RunSetup {
    std::int32_t channels = 2;
    double sampleRateHz = kDefaultSampleRateHz;
    std::int32_t quality = 1;      ///< The factor of oversampling at the start.
    bool canChangeQuality = false; ///< While it processes.
    bool isOffline = false;        ///< What the module's host reports.
};

/// An instance of the module with gliding values, oversampling, a bypass without clicks and held meters.
class RunningEffect {
public:
    /// @throws HostError where the sample rate is refused [main]
    RunningEffect(std::shared_ptr<Module> module, const RunSetup& setup);

    const Instance& instance() const noexcept { return mInstance; }
    /// Where its values are moved. [audio]
    GlidingValues& values() noexcept { return mValues; }
    const GlidingValues& values() const noexcept { return mValues; }
    Bypass& bypass() noexcept { return mBypass; }
    Oversampling& oversampling() noexcept { return mOversampling; }
    const Oversampling& oversampling() const noexcept { return mOversampling; }

    /// Clears the sound so far and the meters; values stay. While nothing processes. [main]
    void reset();
    /// Gives the values for the next buffer. @param most 1 or more
    /// @return the frames that the buffer may have, 1 to `most` [audio]
    std::int32_t begin(std::int32_t most) noexcept;
    /// Processes a buffer that was begun. Output may be input. No lock that another thread may hold, no
    /// allocation, no system call. [audio]
    void process(const float* const* inputs, float* const* outputs, std::int32_t frames) noexcept;
    /// What to show of a meter after a buffer, 0 to 1. @param tap below the number of the instance's meters
    /// [audio]
    float showMeter(std::size_t tap, std::int32_t frames) noexcept {
        return mMeters[tap].show(mInstance.meters().value(tap), frames);
    }
    /// How many meters there are. [any]
    std::size_t meters() const noexcept { return mMeters.size(); }

private:
    Instance mInstance;
    GlidingValues mValues;
    Oversampling mOversampling;
    Bypass mBypass;
    std::vector<MeterHold> mMeters;
};

} // namespace varno

#endif
