/// One plug-in at work in a host.
#ifndef VARNO_FORMATS_LV2_PLUGIN_H
#define VARNO_FORMATS_LV2_PLUGIN_H

#include "Host/Instance.h"
#include "Host/Module.h"
#include "LV2/BypassFade.h"
#include "LV2/ControlValues.h"
#include "LV2/MeterHold.h"
#include "LV2/Ports.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace varno {

/// Longest buffer that the module is given; a run is cut into such ones. The buffers of both channels, before
/// and after, and the bypassed sound together lie in a processor's first cache.
inline constexpr std::int32_t kBufferFrames = 512;

/// What lies between the ports of a host and an instance of the module. Whatever is not connected counts as
/// silence or as its default, or goes nowhere. Hosts call from one thread at a time.
class Plugin {
public:
    /// Throws HostError where the module refuses the sample rate. [main]
    Plugin(std::shared_ptr<Module> module, std::int32_t channels, double sampleRateHz);

    /// Connects a port to the host's memory (borrowed until connected anew) or, by null, to nothing; a number
    /// that is no port's is ignored. [audio]
    void connect(std::uint32_t port, void* data) noexcept;
    /// Puts everything back to the start; the next run is the first. [main]
    void activate();
    /// Processes `frames` frames, any number. Buffers may be one another's memory in any way that begins
    /// at the same frame. No lock that another thread may have, no allocation, no system call. [audio]
    void run(std::uint32_t frames) noexcept;

    const Instance& instance() const { return mInstance; }

private:
    std::size_t firstPort(PortKind kind) const;
    void unconnect();
    void point(std::uint32_t offset) noexcept;
    void process(std::int32_t frames, bool isEnabled) noexcept;
    void tell(std::int32_t frames) noexcept;

    Instance mInstance;
    std::vector<PortInfo> mPorts;
    ControlValues mValues;
    BypassFade mBypass;
    std::vector<MeterHold> mMeters;

    std::vector<float*> mConnected;   ///< By port.
    std::vector<float*> mUnconnected; ///< What stands there for nothing: null for sound, else an own value.
    std::vector<float> mOwnValues;    ///< The defaults of inputs, and what outputs told.
    std::size_t mInputPort;           ///< The first of its kind, as all that follow.
    std::size_t mOutputPort;
    std::size_t mControlPort;
    std::size_t mEnabledPort;
    std::size_t mMeterPort;
    std::size_t mLatencyPort;

    std::vector<const float*> mInputs; ///< Of the present buffer.
    std::vector<float*> mOutputs;
    std::vector<float> mSilence; ///< In the place of inputs that are not there.
    std::vector<float> mNowhere; ///< In the place of outputs that are not there.
};

} // namespace varno

#endif
