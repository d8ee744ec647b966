#include "Host/Instance.h"
#include "LV2/Description/BundleFiles.h"
#include "LV2/Description/PortStatement.h"
#include "LV2/Description/Turtle.h"
#include "LV2/PluginUris.h"

namespace varno {

namespace {

constexpr const char* kProjectUri = "urn:morvak:varno-s";
// Counted as LV2 wants it: they rise with every change that hosts should notice; even ones are released.
constexpr const char* kMinorVersion = "2";
constexpr const char* kMicroVersion = "0";
constexpr const char* kLicence = "http://opensource.org/licenses/mit";

const char* shapeOf(const PluginUri& plugin) {
    return plugin.channels == 1 ? "Mono" : "Stereo";
}

std::string projectStatement(const ModuleDescription& module, const EffectDescription& effect) {
    TurtleSubject maintainer("[");
    maintainer.say("a", "foaf:Organization");
    maintainer.say("foaf:name", turtleText(module.manufacturerName));
    TurtleSubject project(turtleUri(kProjectUri));
    project.say("a", "doap:Project");
    project.say("doap:name", turtleText(effect.names.front()));
    project.say("doap:license", turtleUri(kLicence));
    project.say("doap:maintainer", maintainer.object());
    project.say("doap:shortdesc", turtleText("Saturation and overdrive with dynamics"));
    return project.statement();
}

std::string groupStatements(const PluginUri& plugin) {
    const std::string shape = std::string("pg:") + shapeOf(plugin) + "Group";
    TurtleSubject input(turtleUri(groupUri(plugin, kInputGroup)));
    input.say("a", shape + " , pg:InputGroup");
    input.say("lv2:symbol", turtleText(kInputGroup));
    input.say("lv2:name", turtleText("Input"));
    TurtleSubject output(turtleUri(groupUri(plugin, kOutputGroup)));
    output.say("a", shape + " , pg:OutputGroup");
    output.say("lv2:symbol", turtleText(kOutputGroup));
    output.say("lv2:name", turtleText("Output"));
    output.say("pg:source", turtleUri(groupUri(plugin, kInputGroup)));
    return input.statement() + output.statement();
}

std::string pluginStatement(const BundleContent& content, const PluginUri& plugin) {
    InstanceSetup setup;
    setup.channels = plugin.channels;
    const Instance instance(content.module, setup);
    TurtleSubject subject(turtleUri(plugin.uri));
    subject.say("a", "lv2:Plugin , lv2:DistortionPlugin , lv2:CompressorPlugin");
    subject.say("doap:name", turtleText(instance.effect().names.front() + ' ' + shapeOf(plugin)));
    subject.say("doap:license", turtleUri(kLicence));
    subject.say("doap:shortdesc", turtleText("Saturation and overdrive with dynamics"));
    subject.say("rdfs:comment",
                turtleText("A gain reduction with eight curves drives a soft clipper and a waveshaper; what "
                           "they add can be mixed with the dry signal."));
    subject.say("lv2:project", turtleUri(kProjectUri));
    subject.say("lv2:minorVersion", kMinorVersion);
    subject.say("lv2:microVersion", kMicroVersion);
    subject.say("lv2:optionalFeature", "lv2:hardRTCapable");
    if (content.hasWindow) {
        subject.say("ui:ui", turtleUri(kWindowUri));
    }
    subject.say("pg:mainInput", turtleUri(groupUri(plugin, kInputGroup)));
    subject.say("pg:mainOutput", turtleUri(groupUri(plugin, kOutputGroup)));
    std::vector<std::string> ports;
    for (const PortInfo& port : portsOf(instance)) {
        ports.push_back(portStatement(instance, plugin, port));
    }
    subject.say("lv2:port", ports);
    return subject.statement();
}

} // namespace

std::string pluginsText(const BundleContent& content) {
    const ModuleDescription& module = content.module->description();
    std::string text = turtlePrefixes() + projectStatement(module, module.effects.front());
    for (const PluginUri& plugin : kPluginUris) {
        text += groupStatements(plugin) + pluginStatement(content, plugin);
    }
    return text;
}

} // namespace varno
