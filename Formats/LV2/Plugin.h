/// One running plug-in of a host, with the host's bypass and the held meter values.
#ifndef VARNO_FORMATS_LV2_PLUGIN_H
#define VARNO_FORMATS_LV2_PLUGIN_H

#include "Host/Instance.h"
#include "Host/Module.h"
#include "LV2/ControlValues.h"
#include "LV2/InlineDisplay.h"
#include "LV2/Ports.h"
#include "Shared/RunningEffect.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace varno {

/// Connects the ports of a host with an instance of the module. An unconnected input is silent or has its
/// default; an unconnected output is discarded. Hosts call on one thread at a time.
class Plugin {
public:
    /// Throws HostError where the sample rate is refused. [main]
    /// @param display what the host offers to show in its mixer, borrowed; null for nothing
    Plugin(std::shared_ptr<Module> module, std::int32_t channels, double sampleRateHz,
           const LV2_Inline_Display* display);

    /// Connects a port to the host's memory (borrowed until connected anew) or, by null, to nothing; a number
    /// that is no port's is ignored. [audio]
    void connect(std::uint32_t port, void* data) noexcept;
    /// Resets everything: the next run is the first. [main]
    void activate();
    /// Processes `frames` frames, any number. Buffers may share memory if they begin at the same frame. No
    /// lock that another thread may hold, no allocation, no system call. [audio]
    void run(std::uint32_t frames) noexcept;

    /// What the host shows in its mixer. [main]
    InlineDisplay& display() noexcept { return mDisplay; }

    const Instance& instance() const { return mEffect.instance(); }

private:
    std::size_t firstPort(PortKind kind) const;
    void unconnect();
    void point(std::uint32_t offset) noexcept;
    void showMeters(std::int32_t frames) noexcept;
    void readQuality() noexcept;

    RunningEffect mEffect;
    std::vector<PortInfo> mPorts;
    ControlValues mValues;

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

    std::vector<bool> mIsReduction; ///< By meter: whether it shows a gain reduction.
    InlineDisplay mDisplay;
};

} // namespace varno

#endif
