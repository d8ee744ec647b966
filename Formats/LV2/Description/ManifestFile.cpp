#include "LV2/Description/BundleFiles.h"
#include "LV2/Description/PresetUris.h"
#include "LV2/Description/Turtle.h"

namespace varno {

namespace {

void refer(std::string& text, const std::string& uri, const char* type, const char* binary,
           const char* description) {
    TurtleSubject subject(turtleUri(uri));
    subject.say("a", type);
    subject.say("lv2:binary", turtleUri(binary));
    subject.say("rdfs:seeAlso", turtleUri(description));
    text += subject.statement();
}

void referToPreset(std::string& text, const PluginUri& plugin, const FactoryPreset& preset) {
    TurtleSubject subject(turtleUri(presetUri(plugin, preset)));
    subject.say("a", "pset:Preset");
    subject.say("lv2:appliesTo", turtleUri(plugin.uri));
    subject.say("rdfs:label", turtleText(preset.label));
    subject.say("rdfs:seeAlso", turtleUri("presets.ttl"));
    text += subject.statement();
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

} // namespace varno
