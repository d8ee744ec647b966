#include "LV2/Description/PortStatement.h"

#include "DemoGain_Oversampling.h"
#include "Host/Oversampling/Oversampling.h"
#include "LV2/Description/Turtle.h"
#include "LV2/PortTexts.h"
#include "Shared/GlidingValues.h"
#include "Surround/Settings/QualityText.h"

#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

namespace varno {

namespace {

// Levels that get a label, in dB.
constexpr int kLabelledLevelsDB[] = {-20, -15, -10, -6, -3, 0, 3, 6, 10, 15, 20};

constexpr auto kSwitchSteps = static_cast<int>(kDemoGain_SwitchSteps);

std::string scalePoint(const std::string& label, float value) {
    return "[ rdfs:label " + turtleText(label) + " ; rdf:value " + turtleDecimal(value) + " ]";
}

std::string levelLabel(int levelDB) {
    char label[16];
    std::snprintf(label, sizeof label, levelDB == 0 ? "%d dB" : "%+d dB", levelDB);
    return label;
}

std::vector<std::string> levelPoints(const SDemoGain_Unit& unit) {
    std::vector<std::string> points;
    for (const int levelDB : kLabelledLevelsDB) {
        const auto low = static_cast<float>(unit.mLow);
        const auto high = static_cast<float>(unit.mHigh);
        const float value = (static_cast<float>(levelDB) - low) / (high - low);
        points.push_back(scalePoint(levelLabel(levelDB), value));
    }
    return points;
}

// The curves by the numbers that the editor's keys have. The default's curve has its point at the default, as
// hosts expect of a list of choices; the others have the middle of their range.
std::vector<std::string> curvePoints(std::span<const char* const> curves, double usual) {
    const auto last = static_cast<double>(curves.size() - 1);
    const auto usualCurve = static_cast<std::size_t>(std::lround(usual * last));
    std::vector<std::string> points;
    for (std::size_t curve = 0; curve < curves.size(); ++curve) {
        const double value = curve == usualCurve ? usual : static_cast<double>(curve) / last;
        points.push_back(scalePoint(std::string("Curve ") + curves[curve], static_cast<float>(value)));
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
    subject.add("lv2:name", turtleText(parameter.name));
    addRange(subject, 0.0F, static_cast<float>(parameter.defaultNormalized), 1.0F);
    addSteps(subject, parameter.steps);
    const SDemoGain_Unit& unit = DemoGain_FindParameter(parameter.id)->mUnit;
    if (std::string_view(unit.mSymbol) == kDemoGain_Level.mSymbol) {
        subject.add("lv2:scalePoint", levelPoints(unit));
    } else if (unit.mConversion == EDemoGain_Conversion::kChoice && parameter.steps > kSwitchSteps) {
        subject.add("lv2:scalePoint", curvePoints(unit.mTexts, parameter.defaultNormalized));
    }
    subject.add("rdfs:comment", turtleText(portText(kParameterPorts, parameter.id).comment));
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

void addMeter(TurtleSubject& subject, const MeterDescription& meter) {
    subject.add("lv2:name", turtleText(meter.name));
    addRange(subject, 0.0F, 0.0F, 1.0F);
    subject.add("units:unit", "units:coef");
    subject.add("rdfs:comment", turtleText(portText(kMeterPorts, meter.name).comment));
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
    const std::int32_t most = oversampledLatency(kOversamplingFactors.back(), kDemoGain_LatencyFrames);
    addRange(subject, 0.0F, static_cast<float>(kDemoGain_LatencyFrames), static_cast<float>(most));
    subject.add("lv2:portProperty", {"lv2:reportsLatency", "lv2:integer", "pprops:notOnGUI"});
    subject.add("lv2:designation", "lv2:latency");
    subject.add("units:unit", "units:frame");
    subject.add("rdfs:comment", turtleText("Frames by which the sound comes out later than it went in."));
}

void addQuality(TurtleSubject& subject) {
    subject.add("lv2:name", turtleText("Quality"));
    const auto least = static_cast<float>(kOversamplingFactors.front());
    addRange(subject, least, least, static_cast<float>(kOversamplingFactors.back()));
    subject.add("lv2:portProperty",
                {"lv2:integer", "lv2:enumeration", "pprops:expensive", "pprops:notAutomatic"});
    std::vector<std::string> points;
    for (const std::int32_t factor : kOversamplingFactors) {
        points.push_back(scalePoint(qualityName(factor), static_cast<float>(factor)));
    }
    subject.add("lv2:scalePoint", points);
    subject.add(
        "rdfs:comment",
        turtleText("At how many times the sample rate the effect computes, 384 kHz at most: the more, "
                   "the fewer false tones. A change fades out and in, and changes the latency."));
}

std::string typesOf(PortKind kind) {
    const bool isOutput =
        kind == PortKind::kAudioOut || kind == PortKind::kMeter || kind == PortKind::kLatency;
    const bool isAudio = kind == PortKind::kAudioIn || kind == PortKind::kAudioOut;
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
        addMeter(subject, instance.effect().meters[port.item]);
        break;
    case PortKind::kLatency:
        addLatency(subject);
        break;
    case PortKind::kQuality:
        addQuality(subject);
        break;
    }
    return subject.object();
}

} // namespace varno
