#include "Host/Instance.h"
#include "LV2/Description/BundleFiles.h"
#include "LV2/Description/PresetUris.h"
#include "LV2/Description/Turtle.h"
#include "LV2/Ports.h"

#include <iterator>
#include <vector>

namespace varno {

namespace {

std::string portValue(const PortInfo& port, float value) {
    TurtleSubject subject("[");
    subject.say("lv2:symbol", turtleText(port.symbol));
    subject.say("pset:value", turtleDecimal(value));
    return subject.object();
}

std::string statementOf(const FactoryPreset& preset, const PluginUri& plugin,
                        std::span<const PortInfo> ports) {
    TurtleSubject subject(turtleUri(presetUri(plugin, preset)));
    subject.say("a", "pset:Preset");
    subject.say("lv2:appliesTo", turtleUri(plugin.uri));
    subject.say("rdfs:label", turtleText(preset.label));
    if (!preset.comment.empty()) {
        subject.say("rdfs:comment", turtleText(preset.comment));
    }
    std::vector<std::string> values;
    for (std::size_t i = 0; i < preset.values.size(); ++i) {
        const auto* const port = portOfParameter(ports, DemoGain_PresetText::kItems[i].mParameterID);
        values.push_back(portValue(*port, preset.values[i]));
    }
    subject.say("lv2:port", values);
    return subject.statement();
}

} // namespace

std::string presetsText(const BundleContent& content) {
    std::string text = turtlePrefixes();
    for (const PluginUri& plugin : kPluginUris) {
        InstanceSetup setup;
        setup.channels = plugin.channels;
        const std::vector<PortInfo> ports = portsOf(Instance(content.module, setup));
        for (const FactoryPreset& preset : content.presets) {
            text += statementOf(preset, plugin, ports);
        }
    }
    return text;
}

} // namespace varno
