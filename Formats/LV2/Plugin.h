/// One running plug-in of a host, with the host's bypass and the held meter values.
#ifndef VARNO_FORMATS_LV2_PLUGIN_H
#define VARNO_FORMATS_LV2_PLUGIN_H

#include "Host/Bypass.h"
#include "Host/Instance.h"
#include "Host/Module.h"
#include "LV2/ControlValues.h"
#include "LV2/Ports.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <vector>

namespace varno {

/// Least time for which a peak stays: windows of hosts read meters about 25 times a second.
inline constexpr double kMeterHoldSeconds = 0.040;

/// Holds a meter's peaks. A higher value shows at once; a lower one, from the meter's own fall, once the peak
/// has been shown for kMeterHoldSeconds. [audio]
class MeterHold {
public:
    explicit MeterHold(double sampleRateHz);

    /// What to show after a buffer of `frames` frames at whose end the meter stood at `value`: 0 to 1, the
    /// declared range of the port.
    float show(float value, std::int32_t frames) noexcept {
        mFramesLeft -= frames;
        if (value >= mShown || mFramesLeft <= 0) {
            mShown = std::clamp(value, 0.0F, 1.0F);
            mFramesLeft = mHoldFrames;
        }
        return mShown;
    }
    /// Shows 0 again, and holds nothing.
    void restart() noexcept;

private:
    std::int32_t mHoldFrames;
    std::int32_t mFramesLeft = 0;
    float mShown = 0.0F;
};

/// Longest buffer that the module receives; a longer run is divided. The buffers of both channels, before and
/// after, and the bypassed sound together lie in a processor's first cache.
inline constexpr std::int32_t kBufferFrames = 512;

/// Connects the ports of a host with an instance of the module. An unconnected input is silent or has its
/// default; an unconnected output is discarded. Hosts call on one thread at a time.
class Plugin {
public:
    /// Throws HostError where the sample rate is refused. [main]
    Plugin(std::shared_ptr<Module> module, std::int32_t channels, double sampleRateHz);

    /// Connects a port to the host's memory (borrowed until connected anew) or, by null, to nothing; a number
    /// that is no port's is ignored. [audio]
    void connect(std::uint32_t port, void* data) noexcept;
    /// Resets everything: the next run is the first. [main]
    void activate();
    /// Processes `frames` frames, any number. Buffers may share memory if they begin at the same frame. No
    /// lock that another thread may hold, no allocation, no system call. [audio]
    void run(std::uint32_t frames) noexcept;

    const Instance& instance() const { return mInstance; }

private:
    std::size_t firstPort(PortKind kind) const;
    void unconnect();
    void point(std::uint32_t offset) noexcept;
    void showMeters(std::int32_t frames) noexcept;
    void readQuality() noexcept;

    Instance mInstance;
    std::vector<PortInfo> mPorts;
    ControlValues mValues;
    Oversampling mEffect;
    Bypass mBypass;
    std::vector<MeterHold> mMeters;

    std::vector<float*> mConnected;   ///< By port.
    std::vector<float*> mUnconnected; ///< Without a connection: null for sound, else an own value.
    std::vector<float> mOwnValues;    ///< The defaults of inputs, and the values of outputs.
    std::size_t mInputPort;           ///< The first of its kind, as all that follow.
    std::size_t mOutputPort;
    std::size_t mControlPort;
    std::size_t mEnabledPort;
    std::size_t mMeterPort;
    std::size_t mLatencyPort;
    std::size_t mQualityPort;
    float mSeenQuality = 1.0F; ///< The last value of its port that was given to the effect.

    std::vector<const float*> mInputs; ///< Of the present buffer.
    std::vector<float*> mOutputs;
    std::vector<float> mSilence; ///< Replaces unconnected inputs.
    std::vector<float> mNowhere; ///< Replaces unconnected outputs.
};

} // namespace varno

#endif
