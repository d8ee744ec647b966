/// Connects the host's ports with the window's instance of the effect.
#ifndef VARNO_FORMATS_LV2_UI_HOSTPORTS_H
#define VARNO_FORMATS_LV2_UI_HOSTPORTS_H

#include "Host/HostAutomation.h"
#include "Host/Instance.h"
#include "LV2/Ports.h"

#include <lv2/ui/ui.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace varno {

/// How a window reaches its host. Everything is borrowed.
struct HostCalls {
    LV2UI_Write_Function write = nullptr; ///< May be null: the host then receives no value.
    LV2UI_Controller controller = nullptr;
    const LV2UI_Touch* touch = nullptr; ///< Null where the host does not offer it.
};

/// Writes the editor's requests to the host's ports, at once and once for each change, and gives the values
/// of the host's ports to the instance, which has a data model and meters but processes nothing. A value
/// received from the host is not written back. One that arrives for a parameter under a gesture waits for the
/// end of the gesture: a host that repeats what it received would otherwise move the control back.
///
/// The bypass is the port `enabled`; the module's own one has no port. The quality is the port `quality`. The
/// window does not use `latency`. [main]
class HostPorts : public AutomationListener {
public:
    /// @param instance outlives this object and reports the editor's requests to it
    HostPorts(Instance& instance, const HostCalls& calls);
    HostPorts(const HostPorts&) = delete;
    HostPorts& operator=(const HostPorts&) = delete;
    ~HostPorts() override;

    /// Receives a port's value from the host, at any time, also within a write of the window. Unknown ports
    /// and values that are no numbers are ignored, others limited to 0 to 1.
    void arrived(std::uint32_t index, float value);
    /// Gives the received values to the instance.
    void apply();

    /// Whether the port `enabled` bypasses the effect, as host or window wrote it last; at first it does not.
    bool isBypassed() const;
    void setBypassed(bool isBypassed);
    /// The factor of oversampling that the port `quality` chooses, as host or window wrote it last; at
    /// first 1.
    std::int32_t quality() const;
    void setQuality(std::int32_t factor);

    void valueRequested(const std::string& id, double normalized) override;
    void touched(const std::string& id) override;
    void released(const std::string& id) override;

private:
    struct Port {
        PortInfo info;
        std::optional<float> known{};   ///< The value last written by host or window.
        std::optional<float> arrived{}; ///< What the instance is still to receive.
        int touches = 0;                ///< Open gestures.
    };

    Port* portOf(const std::string& parameterID);
    void write(Port& port, float value) const;
    void reportTouch(const Port& port, bool isTouched) const;
    void showMeter(std::uint32_t tap, float value);

    Instance& mInstance;
    HostCalls mCalls;
    std::vector<Port> mPorts; ///< By their indices.
    std::size_t mEnabled = 0; ///< Index of the port of the bypass.
    std::size_t mQuality = 0; ///< Of that of the quality.
};

} // namespace varno

#endif
