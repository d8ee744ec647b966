#include "LV2/Description/BundleFiles.h"

#include "Host/Instance.h"
#include "LV2/Description/PortStatement.h"
#include "LV2/Description/Presets.h"
#include "LV2/Description/Turtle.h"
#include "LV2/InlineDisplay.h"
#include "LV2/Ports.h"

#include <lv2/log/log.h>
#include <lv2/options/options.h>
#include <lv2/urid/urid.h>
#include <vector>

namespace varno {

namespace {

void refer(std::string& text, const std::string& uri, const char* type, const char* binary,
           const char* description) {
    TurtleSubject subject(turtleUri(uri));
    subject.add("a", type);
    subject.add("lv2:binary", turtleUri(binary));
    subject.add("rdfs:seeAlso", turtleUri(description));
    text += subject.statement();
}

void referToPreset(std::string& text, const PluginUri& plugin, const FactoryPreset& preset) {
    TurtleSubject subject(turtleUri(presetUri(plugin, preset)));
    subject.add("a", "pset:Preset");
    subject.add("lv2:appliesTo", turtleUri(plugin.uri));
    subject.add("rdfs:label", turtleText(preset.label));
    subject.add("rdfs:seeAlso", turtleUri("presets.ttl"));
    text += subject.statement();
}

constexpr const char* kProjectUri = "urn:morvak:varno-s";
// Counted by the rule of LV2: they rise with every change that hosts should notice; releases are even.
constexpr const char* kMinorVersion = "2";
constexpr const char* kMicroVersion = "0";
constexpr const char* kLicence = "http://opensource.org/licenses/mit";

const char* shapeOf(const PluginUri& plugin) {
    return plugin.channels == 1 ? "Mono" : "Stereo";
}

std::string projectStatement(const ModuleDescription& module, const EffectDescription& effect) {
    TurtleSubject maintainer("[");
    maintainer.add("a", "foaf:Organization");
    maintainer.add("foaf:name", turtleText(module.manufacturerName));
    TurtleSubject project(turtleUri(kProjectUri));
    project.add("a", "doap:Project");
    project.add("doap:name", turtleText(effect.names.front()));
    project.add("doap:license", turtleUri(kLicence));
    project.add("doap:maintainer", maintainer.object());
    project.add("doap:shortdesc", turtleText("Saturation and overdrive with dynamics"));
    return project.statement();
}

std::string groupStatements(const PluginUri& plugin) {
    const std::string shape = std::string("pg:") + shapeOf(plugin) + "Group";
    TurtleSubject input(turtleUri(groupUri(plugin, kInputGroup)));
    input.add("a", shape + " , pg:InputGroup");
    input.add("lv2:symbol", turtleText(kInputGroup));
    input.add("lv2:name", turtleText("Input"));
    TurtleSubject output(turtleUri(groupUri(plugin, kOutputGroup)));
    output.add("a", shape + " , pg:OutputGroup");
    output.add("lv2:symbol", turtleText(kOutputGroup));
    output.add("lv2:name", turtleText("Output"));
    output.add("pg:source", turtleUri(groupUri(plugin, kInputGroup)));
    return input.statement() + output.statement();
}

std::string pluginStatement(const BundleContent& content, const PluginUri& plugin) {
    InstanceSetup setup;
    setup.channels = plugin.channels;
    const Instance instance(content.module, setup);
    TurtleSubject subject(turtleUri(plugin.uri));
    subject.add("a", "lv2:Plugin , lv2:DistortionPlugin , lv2:CompressorPlugin");
    subject.add("doap:name", turtleText(instance.effect().names.front() + ' ' + shapeOf(plugin)));
    subject.add("doap:license", turtleUri(kLicence));
    subject.add("doap:shortdesc", turtleText("Saturation and overdrive with dynamics"));
    subject.add("rdfs:comment",
                turtleText("A gain reduction with eight curves drives a soft clipper and a waveshaper; what "
                           "they add can be mixed with the dry signal."));
    subject.add("lv2:project", turtleUri(kProjectUri));
    subject.add("lv2:minorVersion", kMinorVersion);
    subject.add("lv2:microVersion", kMicroVersion);
    subject.add("lv2:optionalFeature",
                std::vector<std::string>{"lv2:hardRTCapable", turtleUri(LV2_INLINEDISPLAY__queue_draw)});
    subject.add("lv2:extensionData", turtleUri(LV2_INLINEDISPLAY__interface));
    if (content.hasWindow) {
        subject.add("ui:ui", turtleUri(kWindowUri));
    }
    subject.add("pg:mainInput", turtleUri(groupUri(plugin, kInputGroup)));
    subject.add("pg:mainOutput", turtleUri(groupUri(plugin, kOutputGroup)));
    std::vector<std::string> ports;
    for (const PortInfo& port : portsOf(instance)) {
        ports.push_back(portStatement(instance, plugin, port));
    }
    subject.add("lv2:port", ports);
    return subject.statement();
}

// Hosts notify a window of input ports by default, but not of output ports.
std::string notification(const PluginUri& plugin, const PortInfo& port) {
    TurtleSubject subject("[");
    subject.add("ui:plugin", turtleUri(plugin.uri));
    subject.add("lv2:symbol", turtleText(port.symbol));
    subject.add("ui:protocol", "ui:floatProtocol");
    return subject.object();
}

std::vector<std::string> notifications(const BundleContent& content) {
    std::vector<std::string> all;
    for (const PluginUri& plugin : kPluginUris) {
        InstanceSetup setup;
        setup.channels = plugin.channels;
        for (const PortInfo& port : portsOf(Instance(content.module, setup))) {
            if (port.kind == PortKind::kMeter) {
                all.push_back(notification(plugin, port));
            }
        }
    }
    return all;
}

// Of what is no part of the specification's own bundles, so that checkers know what it is.
std::string displayStatements() {
    TurtleSubject feature(turtleUri(LV2_INLINEDISPLAY__queue_draw));
    feature.add("a", "lv2:Feature");
    TurtleSubject data(turtleUri(LV2_INLINEDISPLAY__interface));
    data.add("a", "lv2:ExtensionData");
    return feature.statement() + data.statement();
}

} // namespace

std::string manifestText(const BundleContent& content) {
    std::string text = turtlePrefixes();
    for (const PluginUri& plugin : kPluginUris) {
        refer(text, plugin.uri, "lv2:Plugin", "varno-s.so", "varno-s.ttl");
    }
    if (content.hasWindow) {
        refer(text, kWindowUri, "ui:X11UI", "varno-s-ui.so", "ui.ttl");
    }
    for (const PluginUri& plugin : kPluginUris) {
        for (const FactoryPreset& preset : content.presets) {
            referToPreset(text, plugin, preset);
        }
    }
    return text;
}

std::string pluginsText(const BundleContent& content) {
    const ModuleDescription& module = content.module->description();
    std::string text =
        turtlePrefixes() + projectStatement(module, module.effects.front()) + displayStatements();
    for (const PluginUri& plugin : kPluginUris) {
        text += groupStatements(plugin) + pluginStatement(content, plugin);
    }
    return text;
}

std::string windowText(const BundleContent& content) {
    TurtleSubject subject(turtleUri(kWindowUri));
    subject.add("a", "ui:X11UI");
    subject.add("lv2:optionalFeature",
                std::vector<std::string>{"ui:idleInterface", "ui:noUserResize", "ui:parent", "ui:touch",
                                         turtleUri(LV2_LOG__log), turtleUri(LV2_OPTIONS__options),
                                         turtleUri(LV2_URID__map)});
    subject.add("lv2:extensionData", std::vector<std::string>{"ui:idleInterface", "ui:showInterface"});
    subject.add("ui:portNotification", notifications(content));
    return turtlePrefixes() + subject.statement();
}

} // namespace varno
