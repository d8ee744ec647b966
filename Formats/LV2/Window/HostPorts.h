/// The host's ports, between the host and the window's instance of the effect.
#ifndef VARNO_FORMATS_LV2_WINDOW_HOSTPORTS_H
#define VARNO_FORMATS_LV2_WINDOW_HOSTPORTS_H

#include "Host/AutomationListener.h"
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
    LV2UI_Write_Function write = nullptr; ///< May be null: the host then hears of no value.
    LV2UI_Controller controller = nullptr;
    const LV2UI_Touch* touch = nullptr; ///< Null where the host does not want to know.
};

/// Writes what the editor asks for to the host's ports, at once and once for each change, and brings what the
/// host tells of its ports to the instance, which has a data model and meters but processes nothing. A value
/// that the host has told is not told back, and one that the host tells of a parameter in a hand waits until
/// the hand lets go: a host that repeats what it was told would else pull the control back.
///
/// `enabled` and `latency` are no matter of the window: the editor shows no bypass, and the module's own one
/// has no port. [main]
class HostPorts : public AutomationListener {
public:
    /// @param instance outlives this object and tells it of the editor's requests from here on
    HostPorts(Instance& instance, const HostCalls& calls);
    HostPorts(const HostPorts&) = delete;
    HostPorts& operator=(const HostPorts&) = delete;
    ~HostPorts() override;

    /// The host tells a port's value, at any time, within a write of the window's too. Unknown ports and
    /// values that are no numbers are passed over, others brought into the range of 0 to 1.
    void arrived(std::uint32_t index, float value);
    /// Brings to the instance what has arrived.
    void apply();

    void valueRequested(const std::string& id, double normalized) override;
    void touched(const std::string& id) override;
    void released(const std::string& id) override;

private:
    struct Port {
        PortInfo info;
        std::optional<float> known{};   ///< The value that host or window told last.
        std::optional<float> arrived{}; ///< What the instance is still to get.
        int touches = 0;                ///< Open gestures.
    };

    Port* portOf(const std::string& parameterID);
    void tellTouch(const Port& port, bool isTouched) const;
    void showMeter(std::uint32_t tap, float value);

    Instance& mInstance;
    HostCalls mCalls;
    std::vector<Port> mPorts; ///< By their indices.
};

} // namespace varno

#endif
