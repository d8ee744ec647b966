#include "LV2/Description/PortStatement.h"

#include "LV2/BypassFade.h"
#include "LV2/ControlValues.h"
#include "LV2/Description/PortTexts.h"
#include "LV2/Description/Turtle.h"

#include <cstdio>
#include <vector>

namespace varno {

namespace {

constexpr int kSwitchSteps = 2;

std::string scalePoint(const std::string& label, float value) {
    return "[ rdfs:label " + turtleText(label) + " ; rdf:value " + turtleDecimal(value) + " ]";
}

std::string levelLabel(int levelDB) {
    char label[16];
    std::snprintf(label, sizeof label, levelDB == 0 ? "%d dB" : "%+d dB", levelDB);
    return label;
}

std::vector<std::string> levelPoints() {
    std::vector<std::string> points;
    for (const int levelDB : kLabelledLevelsDB) {
        const float value = (static_cast<float>(levelDB) - kLevelLowDB) / (kLevelHighDB - kLevelLowDB);
        points.push_back(scalePoint(levelLabel(levelDB), value));
    }
    return points;
}

// The curves by the numbers that the editor's keys have.
std::vector<std::string> curvePoints(int curves) {
    std::vector<std::string> points;
    for (int curve = 0; curve < curves; ++curve) {
        const float value = static_cast<float>(curve) / static_cast<float>(curves - 1);
        points.push_back(scalePoint("Curve " + std::to_string(curve + 1), value));
    }
    return points;
}

void sayRange(TurtleSubject& subject, float lowest, float usual, float highest) {
    subject.say("lv2:default", turtleDecimal(usual));
    subject.say("lv2:minimum", turtleDecimal(lowest));
    subject.say("lv2:maximum", turtleDecimal(highest));
}

void saySteps(TurtleSubject& subject, int steps) {
    if (steps == kSwitchSteps) {
        subject.say("lv2:portProperty", "lv2:toggled");
        subject.say("lv2:scalePoint", {scalePoint("Off", 0.0F), scalePoint("On", 1.0F)});
    } else if (steps <= kMostStepsOfAChoice) {
        subject.say("lv2:portProperty", "lv2:enumeration");
    } else {
        subject.say("pprops:rangeSteps", std::to_string(steps));
    }
}

void sayParameter(TurtleSubject& subject, const ParameterInfo& parameter) {
    const ParameterPortText& text = parameterPortText(parameter.id);
    subject.say("lv2:name", turtleText(parameter.name));
    sayRange(subject, 0.0F, static_cast<float>(parameter.defaultNormalized), 1.0F);
    saySteps(subject, parameter.steps);
    if (text.meaning == ValueMeaning::Level) {
        subject.say("lv2:scalePoint", levelPoints());
    } else if (text.meaning == ValueMeaning::Curve) {
        subject.say("lv2:scalePoint", curvePoints(parameter.steps));
    }
    subject.say("rdfs:comment", turtleText(text.comment));
}

void sayAudio(TurtleSubject& subject, const PortInfo& port, const PluginUri& plugin) {
    static constexpr const char* kSideNames[] = {"Left ", "Right "};
    static constexpr const char* kSides[] = {"pg:left", "pg:right"};
    const bool isMono = plugin.channels == 1;
    const bool isInput = port.kind == PortKind::AudioIn;
    const std::string side = isMono ? std::string() : kSideNames[port.item];
    subject.say("lv2:name", turtleText(side + (isInput ? "In" : "Out")));
    subject.say("lv2:designation", isMono ? "pg:center" : kSides[port.item]);
    subject.say("pg:group", turtleUri(groupUri(plugin, isInput ? kInputGroup : kOutputGroup)));
    subject.say("rdfs:comment", turtleText(isInput ? "Sound to be processed." : "Processed sound."));
}

void sayMeter(TurtleSubject& subject, const PortInfo& port, const MeterDescription& meter) {
    subject.say("lv2:name", turtleText(meter.name));
    sayRange(subject, 0.0F, 0.0F, 1.0F);
    subject.say("units:unit", "units:coef");
    subject.say("rdfs:comment", turtleText(meterComment(port.symbol)));
}

void sayEnabled(TurtleSubject& subject) {
    subject.say("lv2:name", turtleText("Enabled"));
    sayRange(subject, 0.0F, 1.0F, 1.0F);
    subject.say("lv2:portProperty", "lv2:toggled");
    subject.say("lv2:designation", "lv2:enabled");
    subject.say("rdfs:comment", turtleText("Passes the input through where it is off, as late as the "
                                           "processed sound and without a click."));
}

void sayLatency(TurtleSubject& subject) {
    subject.say("lv2:name", turtleText("Latency"));
    const auto frames = static_cast<float>(kLatencyFrames);
    sayRange(subject, 0.0F, frames, frames);
    subject.say("lv2:portProperty", {"lv2:reportsLatency", "lv2:integer", "pprops:notOnGUI"});
    subject.say("lv2:designation", "lv2:latency");
    subject.say("units:unit", "units:frame");
    subject.say("rdfs:comment", turtleText("Frames by which the sound comes out later than it went in."));
}

std::string typesOf(PortKind kind) {
    const bool isOutput = kind == PortKind::AudioOut || kind == PortKind::Meter || kind == PortKind::Latency;
    const bool isAudio = kind == PortKind::AudioIn || kind == PortKind::AudioOut;
    return std::string(isOutput ? "lv2:OutputPort" : "lv2:InputPort") +
           (isAudio ? " , lv2:AudioPort" : " , lv2:ControlPort");
}

} // namespace

std::string groupUri(const PluginUri& plugin, std::string_view symbol) {
    std::string uri = plugin.uri;
    return uri.append("-").append(symbol);
}

std::string portStatement(const Instance& instance, const PluginUri& plugin, const PortInfo& port) {
    TurtleSubject subject("[");
    subject.say("a", typesOf(port.kind));
    subject.say("lv2:index", std::to_string(port.index));
    subject.say("lv2:symbol", turtleText(port.symbol));
    switch (port.kind) {
    case PortKind::AudioIn:
    case PortKind::AudioOut:
        sayAudio(subject, port, plugin);
        break;
    case PortKind::Parameter:
        sayParameter(subject, instance.parameters()[port.item]);
        break;
    case PortKind::Enabled:
        sayEnabled(subject);
        break;
    case PortKind::Meter:
        sayMeter(subject, port, instance.effect().meters[port.item]);
        break;
    case PortKind::Latency:
        sayLatency(subject);
        break;
    }
    return subject.object();
}

} // namespace varno
