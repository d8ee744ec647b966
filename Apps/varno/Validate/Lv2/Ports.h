/// What the description of an LV2 plug-in states of its ports.
#ifndef VARNO_APPS_VARNO_VALIDATE_LV2_PORTS_H
#define VARNO_APPS_VARNO_VALIDATE_LV2_PORTS_H

#include "Validate/Plugin.h"

#include <cstdint>
#include <lilv/lilv.h>
#include <string>
#include <vector>

namespace varno::validate {

/// What runs through a port.
enum class PortKind {
    kAudio,
    kControl,
    kModulation, ///< A control value by sample.
    kEvents,
    kOther, ///< May be left unconnected, and is.
};

struct Port {
    std::uint32_t index = 0;
    std::string symbol;
    PortKind kind = PortKind::kOther;
    bool isInput = false;
    bool isLatency = false;
    float defaultValue = 0.0F;
};

/// The ports of one plug-in, and its control inputs as parameters.
struct PortList {
    std::vector<Port> ports;
    std::vector<Parameter> parameters;
    std::vector<std::uint32_t> parameterPorts; ///< The port of each parameter.
    /// Why the plug-in cannot be run here, empty where it can.
    std::string obstacle;

    int count(PortKind kind, bool isInput) const;
};

/// @param rateHz what bounds that are stated as parts of the rate are multiplied by
PortList readPorts(LilvWorld* world, const LilvPlugin* plugin, double rateHz);

} // namespace varno::validate

#endif
