#include "Validate/Lv2/Ports.h"

#include "Validate/Lv2/HostSide.h"

#include <algorithm>
#include <cmath>
#include <lv2/atom/atom.h>
#include <lv2/core/lv2.h>
#include <lv2/port-props/port-props.h>
#include <memory>

namespace varno::validate {
namespace {

struct FreesNode {
    void operator()(LilvNode* node) const { lilv_node_free(node); }
};
using Node = std::unique_ptr<LilvNode, FreesNode>;

// Questions about one port.
class PortReader {
public:
    PortReader(LilvWorld* world, const LilvPlugin* plugin, const LilvPort* port)
        : mWorld(world),
          mPlugin(plugin),
          mPort(port) {}

    bool is(const char* portClass) const { return lilv_port_is_a(mPlugin, mPort, uri(portClass).get()); }
    bool has(const char* property) const {
        return lilv_port_has_property(mPlugin, mPort, uri(property).get());
    }
    bool isDesignated(const char* designation) const {
        const Node found(lilv_port_get(mPlugin, mPort, uri(LV2_CORE__designation).get()));
        return found != nullptr && lilv_node_equals(found.get(), uri(designation).get());
    }
    std::string symbol() const { return lilv_node_as_string(lilv_port_get_symbol(mPlugin, mPort)); }
    std::string name() const {
        const Node name(lilv_port_get_name(mPlugin, mPort));
        return name == nullptr ? symbol() : lilv_node_as_string(name.get());
    }
    PortKind kind() const {
        return is(LV2_CORE__AudioPort)     ? PortKind::kAudio
               : is(LV2_CORE__ControlPort) ? PortKind::kControl
               : is(LV2_CORE__CVPort)      ? PortKind::kModulation
               : is(LV2_ATOM__AtomPort)    ? PortKind::kEvents
                                           : PortKind::kOther;
    }

private:
    Node uri(const char* text) const { return Node(lilv_new_uri(mWorld, text)); }

    LilvWorld* mWorld;
    const LilvPlugin* mPlugin;
    const LilvPort* mPort;
};

// As readPorts() reads them for all ports: not a number where a port states none.
struct Range {
    float minimum;
    float maximum;
    float defaultValue;
};

// Bounds that are not stated, or infinite, are those that hosts show: 0 and 1, or what holds the default.
Range completed(Range range, double factor) {
    const auto scaled = [&](float value) { return static_cast<float>(static_cast<double>(value) * factor); };
    const float given = std::isfinite(range.defaultValue) ? range.defaultValue : 0.0F;
    const float minimum = std::isfinite(range.minimum) ? range.minimum : std::min(0.0F, given);
    const float maximum = std::isfinite(range.maximum) ? range.maximum : std::max(1.0F, given);
    const float start = std::isfinite(range.defaultValue) ? given : minimum;
    return {scaled(minimum), scaled(std::max(minimum, maximum)),
            scaled(std::clamp(start, minimum, std::max(minimum, maximum)))};
}

Parameter parameterOf(const PortReader& reader, const Range& range) {
    Parameter parameter{.id = reader.symbol(),
                        .name = reader.name(),
                        .minimum = static_cast<double>(range.minimum),
                        .maximum = static_cast<double>(range.maximum),
                        .defaultValue = static_cast<double>(range.defaultValue),
                        .isBypass = reader.isDesignated(LV2_CORE__enabled),
                        .isAutomatable = !reader.has(LV2_PORT_PROPS__notAutomatic) &&
                                         !reader.has(LV2_PORT_PROPS__expensive)};
    constexpr double kMostSteps = 100000.0;
    const double span = parameter.maximum - parameter.minimum;
    if (reader.has(LV2_CORE__toggled)) {
        parameter.steps = 2;
    } else if ((reader.has(LV2_CORE__integer) || reader.has(LV2_CORE__enumeration)) && span < kMostSteps) {
        parameter.steps = static_cast<int>(std::lround(span)) + 1;
    }
    return parameter;
}

// The first required feature that is not offered, empty where all are.
std::string missingFeature(const LilvPlugin* plugin) {
    std::string missing;
    LilvNodes* const required = lilv_plugin_get_required_features(plugin);
    LILV_FOREACH(nodes, i, required) {
        const std::string feature = lilv_node_as_uri(lilv_nodes_get(required, i));
        if (missing.empty() && !HostSide::offers(feature)) {
            missing = feature;
        }
    }
    lilv_nodes_free(required);
    return missing;
}

} // namespace

int PortList::count(PortKind kind, bool isInput) const {
    return static_cast<int>(std::ranges::count_if(
        ports, [&](const Port& port) { return port.kind == kind && port.isInput == isInput; }));
}

PortList readPorts(LilvWorld* world, const LilvPlugin* plugin, double rateHz) {
    PortList list;
    const std::uint32_t count = lilv_plugin_get_num_ports(plugin);
    std::vector<float> minimums(count);
    std::vector<float> maximums(count);
    std::vector<float> defaults(count);
    lilv_plugin_get_port_ranges_float(plugin, minimums.data(), maximums.data(), defaults.data());
    for (std::uint32_t index = 0; index < count; ++index) {
        const PortReader reader(world, plugin, lilv_plugin_get_port_by_index(plugin, index));
        Port port{.index = index,
                  .symbol = reader.symbol(),
                  .kind = reader.kind(),
                  .isInput = reader.is(LV2_CORE__InputPort)};
        const Range range = completed({minimums[index], maximums[index], defaults[index]},
                                      reader.has(LV2_CORE__sampleRate) ? rateHz : 1.0);
        if (port.kind == PortKind::kControl && port.isInput) {
            port.defaultValue = range.defaultValue;
            list.parameters.push_back(parameterOf(reader, range));
            list.parameterPorts.push_back(index);
        }
        port.isLatency = port.kind == PortKind::kControl && !port.isInput &&
                         (reader.has(LV2_CORE__reportsLatency) || reader.isDesignated(LV2_CORE__latency));
        if (port.kind == PortKind::kOther && !reader.has(LV2_CORE__connectionOptional)) {
            list.obstacle = "it needs a port of an unknown kind, " + port.symbol;
        }
        list.ports.push_back(port);
    }
    if (const std::string feature = missingFeature(plugin); !feature.empty()) {
        list.obstacle = "it needs a host with " + feature;
    }
    return list;
}

} // namespace varno::validate
