#include "Host/Instance.h"
#include "LV2/Description/BundleFiles.h"
#include "LV2/Description/Turtle.h"
#include "LV2/PluginUris.h"
#include "LV2/Ports.h"

#include <lv2/log/log.h>
#include <lv2/options/options.h>
#include <lv2/urid/urid.h>
#include <vector>

namespace varno {

namespace {

// Hosts tell a window of input ports unasked, but not of output ports.
std::string notification(const PluginUri& plugin, const PortInfo& port) {
    TurtleSubject subject("[");
    subject.say("ui:plugin", turtleUri(plugin.uri));
    subject.say("lv2:symbol", turtleText(port.symbol));
    subject.say("ui:protocol", "ui:floatProtocol");
    return subject.object();
}

std::vector<std::string> notifications(const BundleContent& content) {
    std::vector<std::string> all;
    for (const PluginUri& plugin : kPluginUris) {
        InstanceSetup setup;
        setup.channels = plugin.channels;
        for (const PortInfo& port : portsOf(Instance(content.module, setup))) {
            if (port.kind == PortKind::Meter) {
                all.push_back(notification(plugin, port));
            }
        }
    }
    return all;
}

} // namespace

std::string windowText(const BundleContent& content) {
    TurtleSubject subject(turtleUri(kWindowUri));
    subject.say("a", "ui:X11UI");
    subject.say("lv2:optionalFeature",
                std::vector<std::string>{"ui:idleInterface", "ui:noUserResize", "ui:parent", "ui:touch",
                                         turtleUri(LV2_LOG__log), turtleUri(LV2_OPTIONS__options),
                                         turtleUri(LV2_URID__map)});
    subject.say("lv2:extensionData", std::vector<std::string>{"ui:idleInterface", "ui:showInterface"});
    subject.say("ui:portNotification", notifications(content));
    return turtlePrefixes() + subject.statement();
}

} // namespace varno
