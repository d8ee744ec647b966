#include "LV2/Description/PortStatement.h"

#include "LV2/ControlValues.h"
#include "LV2/Description/Turtle.h"
#include "LV2/Plugin.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

namespace varno {

namespace {

using enum ValueMeaning;

constexpr ParameterPortText kParameters[] = {
    {"Gain", kLevel, "Input gain, from -20 dB at 0 over 0 dB at 0.5 to +20 dB at 1."},
    {"HP", kPlain, "Keeps what lies below 120 Hz from driving the gain reduction."},
    {"Band", kPlain, "Lets high frequencies drive the gain reduction harder."},
    {"Atk", kPlain, "Attack of the gain reduction: fast at 0, slow at 1."},
    {"Rls", kPlain, "Release of the gain reduction: fast at 0, slow at 1."},
    {"ASw", kPlain,
     "Lets the editor match the output volume to the input level; without the editor it does nothing."},
    {"UK", kPlain, "Changes the release of the gain reduction."},
    {"Volume", kLevel, "Output volume, from -20 dB at 0 over 0 dB at 0.5 to +20 dB at 1."},
    {"Hot", kPlain, "Drive into the clipper and shaper."},
    {"Ratio", kCurve, "Chooses one of eight gain reduction curves."},
    {"Mix", kPlain, "Share of the dry signal: none at 0, nothing else at 1."},
    {"HSw", kPlain, "Biases the clipper, for more harmonics."},
    {"LinkSw", kPlain, "Both stereo channels share one gain reduction."},
};

struct MeterText {
    const char* symbol;
    const char* comment;
};

constexpr MeterText kMeters[] = {
    {"grl", "Gain reduction: 1 is a reduction by 32 dB. A peak stays for 40 ms at least."},
    {"grr", "Gain reduction, the same as that of the left channel. A peak stays for 40 ms at least."},
    {"inrms", "Averaged input level of the first channel, linear: 1 is full scale."},
    {"outrms", "Averaged output level of the first channel before the volume, linear: 1 is full scale."},
};

template<class Row, class Key>
const Row& requireRow(std::span<const Row> rows, std::string_view name, Key key) {
    const auto found = std::ranges::find(rows, name, key);
    if (found == rows.end()) {
        throw std::out_of_range("there is no text about the port of " + std::string(name));
    }
    return *found;
}

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

void addRange(TurtleSubject& subject, float lowest, float usual, float highest) {
    subject.add("lv2:default", turtleDecimal(usual));
    subject.add("lv2:minimum", turtleDecimal(lowest));
    subject.add("lv2:maximum", turtleDecimal(highest));
}

void addSteps(TurtleSubject& subject, int steps) {
    if (steps == kSwitchSteps) {
        subject.add("lv2:portProperty", "lv2:toggled");
        subject.add("lv2:scalePoint", {scalePoint("Off", 0.0F), scalePoint("On", 1.0F)});
    } else if (steps <= kMostStepsOfAChoice) {
        subject.add("lv2:portProperty", "lv2:enumeration");
    } else {
        subject.add("pprops:rangeSteps", std::to_string(steps));
    }
}

void addParameter(TurtleSubject& subject, const ParameterInfo& parameter) {
    const ParameterPortText& text = parameterPortText(parameter.id);
    subject.add("lv2:name", turtleText(parameter.name));
    addRange(subject, 0.0F, static_cast<float>(parameter.defaultNormalized), 1.0F);
    addSteps(subject, parameter.steps);
    if (text.meaning == ValueMeaning::kLevel) {
        subject.add("lv2:scalePoint", levelPoints());
    } else if (text.meaning == ValueMeaning::kCurve) {
        subject.add("lv2:scalePoint", curvePoints(parameter.steps));
    }
    subject.add("rdfs:comment", turtleText(text.comment));
}

void addAudio(TurtleSubject& subject, const PortInfo& port, const PluginUri& plugin) {
    static constexpr const char* kSideNames[] = {"Left ", "Right "};
    static constexpr const char* kSides[] = {"pg:left", "pg:right"};
    const bool isMono = plugin.channels == 1;
    const bool isInput = port.kind == PortKind::kAudioIn;
    const std::string side = isMono ? std::string() : kSideNames[port.item];
    subject.add("lv2:name", turtleText(side + (isInput ? "In" : "Out")));
    subject.add("lv2:designation", isMono ? "pg:center" : kSides[port.item]);
    subject.add("pg:group", turtleUri(groupUri(plugin, isInput ? kInputGroup : kOutputGroup)));
    subject.add("rdfs:comment", turtleText(isInput ? "Sound to be processed." : "Processed sound."));
}

void addMeter(TurtleSubject& subject, const PortInfo& port, const MeterDescription& meter) {
    subject.add("lv2:name", turtleText(meter.name));
    addRange(subject, 0.0F, 0.0F, 1.0F);
    subject.add("units:unit", "units:coef");
    subject.add("rdfs:comment", turtleText(meterComment(port.symbol)));
}

void addEnabled(TurtleSubject& subject) {
    subject.add("lv2:name", turtleText("Enabled"));
    addRange(subject, 0.0F, 1.0F, 1.0F);
    subject.add("lv2:portProperty", "lv2:toggled");
    subject.add("lv2:designation", "lv2:enabled");
    subject.add("rdfs:comment", turtleText("Passes the input through where it is off, as late as the "
                                           "processed sound and without a click."));
}

void addLatency(TurtleSubject& subject) {
    subject.add("lv2:name", turtleText("Latency"));
    const auto frames = static_cast<float>(kLatencyFrames);
    addRange(subject, 0.0F, frames, frames);
    subject.add("lv2:portProperty", {"lv2:reportsLatency", "lv2:integer", "pprops:notOnGUI"});
    subject.add("lv2:designation", "lv2:latency");
    subject.add("units:unit", "units:frame");
    subject.add("rdfs:comment", turtleText("Frames by which the sound comes out later than it went in."));
}

std::string typesOf(PortKind kind) {
    const bool isOutput =
        kind == PortKind::kAudioOut || kind == PortKind::kMeter || kind == PortKind::kLatency;
    const bool isAudio = kind == PortKind::kAudioIn || kind == PortKind::kAudioOut;
    return std::string(isOutput ? "lv2:OutputPort" : "lv2:InputPort") +
           (isAudio ? " , lv2:AudioPort" : " , lv2:ControlPort");
}

} // namespace

std::span<const ParameterPortText> parameterPortTexts() {
    return kParameters;
}

const ParameterPortText& parameterPortText(std::string_view parameterID) {
    return requireRow(parameterPortTexts(), parameterID, &ParameterPortText::parameterID);
}

const char* meterComment(std::string_view symbol) {
    return requireRow(std::span<const MeterText>(kMeters), symbol, &MeterText::symbol).comment;
}

std::string groupUri(const PluginUri& plugin, std::string_view symbol) {
    std::string uri = plugin.uri;
    return uri.append("-").append(symbol);
}

std::string portStatement(const Instance& instance, const PluginUri& plugin, const PortInfo& port) {
    TurtleSubject subject("[");
    subject.add("a", typesOf(port.kind));
    subject.add("lv2:index", std::to_string(port.index));
    subject.add("lv2:symbol", turtleText(port.symbol));
    switch (port.kind) {
    case PortKind::kAudioIn:
    case PortKind::kAudioOut:
        addAudio(subject, port, plugin);
        break;
    case PortKind::kParameter:
        addParameter(subject, instance.parameters()[port.item]);
        break;
    case PortKind::kEnabled:
        addEnabled(subject);
        break;
    case PortKind::kMeter:
        addMeter(subject, port, instance.effect().meters[port.item]);
        break;
    case PortKind::kLatency:
        addLatency(subject);
        break;
    }
    return subject.object();
}

} // namespace varno
