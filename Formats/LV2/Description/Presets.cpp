#include "LV2/Description/Presets.h"

#include "Host/Instance.h"
#include "LV2/Description/BundleFiles.h"
#include "LV2/Description/Turtle.h"
#include "LV2/Ports.h"

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <vector>

namespace varno {

namespace {

std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        throw std::runtime_error(file.string() + ": cannot be read");
    }
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::string labelOf(std::string name) {
    for (char& character : name) {
        character = character == '-' ? ' ' : character;
    }
    if (!name.empty() && name.front() >= 'a' && name.front() <= 'z') {
        name.front() = static_cast<char>(name.front() - 'a' + 'A');
    }
    return name;
}

// The lines after those of the values, as one.
std::string commentOf(const std::string& text) {
    std::size_t start = 0;
    std::size_t lines = 1; // of the header
    for (const DemoGain_PresetText::Item& item : DemoGain_PresetText::kItems) {
        lines += item.mEndsLine ? 1 : 0;
    }
    for (std::size_t line = 0; line < lines && start != std::string::npos; ++line) {
        start = text.find('\n', start);
        start = start == std::string::npos ? start : start + 1;
    }
    std::string comment = start == std::string::npos ? std::string() : text.substr(start);
    comment.erase(comment.find_last_not_of(" \n") + 1);
    return comment;
}

std::string portValue(const PortInfo& port, float value) {
    TurtleSubject subject("[");
    subject.add("lv2:symbol", turtleText(port.symbol));
    subject.add("pset:value", turtleDecimal(value));
    return subject.object();
}

std::string statementOf(const FactoryPreset& preset, const PluginUri& plugin,
                        std::span<const PortInfo> ports) {
    TurtleSubject subject(turtleUri(presetUri(plugin, preset)));
    subject.add("a", "pset:Preset");
    subject.add("lv2:appliesTo", turtleUri(plugin.uri));
    subject.add("rdfs:label", turtleText(preset.label));
    if (!preset.comment.empty()) {
        subject.add("rdfs:comment", turtleText(preset.comment));
    }
    std::vector<std::string> values;
    for (std::size_t i = 0; i < preset.values.size(); ++i) {
        const auto* const port = portOfParameter(ports, DemoGain_PresetText::kItems[i].mParameterID);
        values.push_back(portValue(*port, preset.values[i]));
    }
    subject.add("lv2:port", values);
    return subject.statement();
}

} // namespace

FactoryPreset readFactoryPreset(const std::filesystem::path& file) {
    const std::string text = contentOf(file);
    const auto values = DemoGain_PresetText::Parse(text);
    if (!values) {
        throw std::runtime_error(file.string() + ": holds no preset");
    }
    for (const float value : *values) {
        if (!(value >= 0.0F && value <= 1.0F)) {
            throw std::runtime_error(file.string() + ": found the value " + std::to_string(value) +
                                     ", expected 0 to 1");
        }
    }
    const std::string name = file.stem().string();
    return {name, labelOf(name), commentOf(text), *values};
}

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
