#include "ParameterText.h"

#include "ParameterValue.h"
#include "TextTable.h"

#include <nlohmann/json.hpp>

#include <cstdio>

namespace varno {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kJsonIndent = 2;

const char* typeName(AAX_EParameterType type) {
    return type == AAX_eParameterType_Discrete ? "discrete" : "continuous";
}

std::string numberText(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.6f", value);
    return text;
}

std::string valueText(const std::string& text, double normalized) {
    return text + " (" + numberText(normalized) + ')';
}

Json toJson(const Instance& instance, const ParameterInfo& parameter) {
    return {{"index", parameter.index},
            {"id", parameter.id},
            {"name", parameter.name},
            {"type", typeName(parameter.type)},
            {"steps", parameter.steps},
            {"automatable", parameter.isAutomatable},
            {"default", parameter.defaultNormalized},
            {"default_text", parameter.defaultText},
            {"value", instance.normalized(parameter.id)},
            {"text", instance.text(parameter.id)}};
}

} // namespace

std::string parametersText(const Instance& instance) {
    TextTable table({{"INDEX", Align::kRight},
                     {"ID", Align::kLeft},
                     {"NAME", Align::kLeft},
                     {"TYPE", Align::kLeft},
                     {"STEPS", Align::kRight},
                     {"DEFAULT", Align::kLeft},
                     {"VALUE", Align::kLeft}});
    for (const auto& parameter : instance.parameters()) {
        table.addRow({std::to_string(parameter.index), parameter.id, parameter.name, typeName(parameter.type),
                      std::to_string(parameter.steps), parameter.defaultText, instance.text(parameter.id)});
    }
    return table.text();
}

std::string parametersJson(const Instance& instance) {
    Json array = Json::array();
    for (const auto& parameter : instance.parameters()) {
        array.push_back(toJson(instance, parameter));
    }
    return array.dump(kJsonIndent) + '\n';
}

std::string parameterText(const Instance& instance, const ParameterInfo& parameter) {
    TextTable facts({{"", Align::kLeft}, {"", Align::kLeft}});
    facts.addRow({"id", parameter.id});
    facts.addRow({"name", parameter.name});
    facts.addRow({"index", std::to_string(parameter.index)});
    facts.addRow({"type", typeName(parameter.type)});
    facts.addRow({"automatable", parameter.isAutomatable ? "yes" : "no"});
    facts.addRow({"default", valueText(parameter.defaultText, parameter.defaultNormalized)});
    facts.addRow({"value", valueText(instance.text(parameter.id), instance.normalized(parameter.id))});
    facts.addRow({"steps", std::to_string(parameter.steps)});
    TextTable steps({{"STEP", Align::kRight}, {"VALUE", Align::kLeft}, {"TEXT", Align::kLeft}});
    for (int step = 0; step < parameter.steps; ++step) {
        const double normalized = normalizedOfStep(step, parameter.steps);
        steps.addRow(
            {std::to_string(step), numberText(normalized), instance.textOf(parameter.id, normalized)});
    }
    return facts.text() + '\n' + steps.text();
}

std::string parameterJson(const Instance& instance, const ParameterInfo& parameter) {
    Json json = toJson(instance, parameter);
    json["step_table"] = Json::array();
    for (int step = 0; step < parameter.steps; ++step) {
        const double normalized = normalizedOfStep(step, parameter.steps);
        json["step_table"].push_back(
            {{"step", step}, {"value", normalized}, {"text", instance.textOf(parameter.id, normalized)}});
    }
    return json.dump(kJsonIndent) + '\n';
}

} // namespace varno
