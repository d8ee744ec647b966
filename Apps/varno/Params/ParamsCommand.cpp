#include "Commands.h"

#include "CommandLine/CommandError.h"
#include "CommandLine/CommandLine.h"
#include "CommandLine/Console.h"
#include "CommandLine/Json.h"
#include "CommandLine/TextLayout.h"
#include "Settings/ModuleLoading.h"
#include "Settings/ParameterValue.h"
#include "Settings/Settings.h"
#include "Surround/Settings/NumberText.h"

namespace varno {
namespace {

constexpr std::string_view kParamsUsage[] = {"[OPTIONS]", "[OPTIONS] ID"};
constexpr std::string_view kParamsDescription[] = {
    "Lists the parameters: index, identifier, name, number of steps, default and present value: the "
    "normalized value, the text that a host shows, and the value in units. With an ID it shows that one "
    "parameter and each of its steps. The present value is the default unless a setting is given. Times are "
    "those of the present curve (Ratio) and UK."};
constexpr ArgumentEntry kParamsArguments[] = {
    {.name = "ID", .kind = ValueKind::kParameter, .help = "Identifier of a parameter, for instance Hot."}};
constexpr OptionEntry kParamsOptions[] = {
    kSetOption,
    kPresetOption,
    kStateOption,
    kJsonOption,
    {.name = "--ids", .group = "Reports", .help = "Print the identifiers alone, one per line."},
    kModuleOption,
    kHelpOption,
};
constexpr ExampleEntry kParamsExamples[] = {
    {"varno params Ratio", "The eight curves and the values that choose them."},
    {"varno params Atk --set 'Ratio=#8'", "The attack times of curve 8."},
    {"varno params --preset bus.txt", "What a preset holds."},
};

// Of a normalized value; fewer in the list, so that its lines fit a terminal.
constexpr int kValueDecimals = 6;
constexpr int kListDecimals = 4;

const char* typeName(AAX_EParameterType type) {
    return type == AAX_eParameterType_Discrete ? "discrete" : "continuous";
}

// "0.50 (0.500000), 0.0 dB"
std::string valueText(const Instance& instance, const ParameterInfo& parameter, double normalized) {
    const std::string inUnits = trueText(parameter.id, normalized, unitSettings(instance));
    return instance.textOf(parameter.id, normalized) + " (" + decimalText(normalized, kValueDecimals) + ')' +
           (inUnits.empty() ? "" : ", " + inUnits);
}

Json::Object parameterSummary(const Instance& instance, const ParameterInfo& parameter) {
    return {{"index", parameter.index},
            {"id", parameter.id},
            {"name", parameter.name},
            {"type", typeName(parameter.type)},
            {"steps", parameter.steps},
            {"automatable", parameter.isAutomatable},
            {"default", parameter.defaultNormalized},
            {"default_text", parameter.defaultText},
            {"value", instance.normalized(parameter.id)},
            {"text", instance.text(parameter.id)},
            {"true_text", trueText(instance, parameter.id)}};
}

std::string parametersText(const Instance& instance) {
    TextTable table({{"INDEX", Align::kRight},
                     {"ID", Align::kLeft},
                     {"NAME", Align::kLeft},
                     {"STEPS", Align::kRight},
                     {"DEFAULT", Align::kLeft},
                     {"VALUE", Align::kLeft},
                     {"TEXT", Align::kLeft},
                     {"IN UNITS", Align::kLeft}});
    for (const auto& parameter : instance.parameters()) {
        table.addRow({std::to_string(parameter.index), parameter.id, parameter.name,
                      std::to_string(parameter.steps), parameter.defaultText,
                      decimalText(instance.normalized(parameter.id), kListDecimals),
                      instance.text(parameter.id), trueText(instance, parameter.id)});
    }
    return table.text();
}

std::string parametersJson(const Instance& instance) {
    return jsonText(
        jsonArray(instance.parameters(), [&](const auto& item) { return parameterSummary(instance, item); }));
}

std::string parameterText(const Instance& instance, const ParameterInfo& parameter) {
    TextTable facts({{"", Align::kLeft}, {"", Align::kLeft}});
    facts.addRow({"id", parameter.id});
    facts.addRow({"name", parameter.name});
    facts.addRow({"index", std::to_string(parameter.index)});
    facts.addRow({"type", typeName(parameter.type)});
    facts.addRow({"automatable", parameter.isAutomatable ? "yes" : "no"});
    facts.addRow({"default", valueText(instance, parameter, parameter.defaultNormalized)});
    facts.addRow({"value", valueText(instance, parameter, instance.normalized(parameter.id))});
    facts.addRow({"steps", std::to_string(parameter.steps)});
    const auto settings = unitSettings(instance);
    TextTable steps({{"STEP", Align::kRight},
                     {"VALUE", Align::kLeft},
                     {"TEXT", Align::kLeft},
                     {"IN UNITS", Align::kLeft}});
    for (int step = 0; step < parameter.steps; ++step) {
        const double normalized = normalizedOfStep(step, parameter.steps);
        steps.addRow({std::to_string(step), decimalText(normalized, kValueDecimals),
                      instance.textOf(parameter.id, normalized),
                      trueText(parameter.id, normalized, settings)});
    }
    return facts.text() + '\n' + steps.text();
}

std::string parameterJson(const Instance& instance, const ParameterInfo& parameter) {
    Json::Array steps;
    for (int step = 0; step < parameter.steps; ++step) {
        const double normalized = normalizedOfStep(step, parameter.steps);
        steps.emplace_back(
            Json::Object{{"step", step},
                         {"value", normalized},
                         {"text", instance.textOf(parameter.id, normalized)},
                         {"true_text", trueText(parameter.id, normalized, unitSettings(instance))}});
    }
    Json::Object json = parameterSummary(instance, parameter);
    json.emplace_back("step_table", std::move(steps));
    return jsonText(json);
}

std::string identifiers(const Instance& instance) {
    std::string text;
    for (const auto& parameter : instance.parameters()) {
        text += parameter.id + '\n';
    }
    return text;
}

std::string answer(const CommandLine& line, const Instance& instance) {
    const bool json = line.has("--json");
    if (!line.arguments().empty()) {
        // A variable, not a temporary: gcc 14 would take the result for a reference to it.
        const std::string inNoFile;
        const auto& parameter =
            requireParameter(instance, line.arguments().front(), inNoFile, kExitWrongUsage);
        return json ? parameterJson(instance, parameter) : parameterText(instance, parameter);
    }
    if (line.has("--ids")) {
        return identifiers(instance);
    }
    return json ? parametersJson(instance) : parametersText(instance);
}

int runParams(const CommandLine& line) {
    const Settings settings(line);
    auto module = loadEffect(line);
    {
        Instance instance(module, InstanceSetup{});
        settings.applyTo(instance);
        printOut(answer(line, instance));
    }
    unloadModule(std::move(module));
    return kExitSuccess;
}

} // namespace

CommandEntry paramsCommand() {
    return {.name = "params",
            .summary = "List the parameters, or show one with its steps",
            .usage = kParamsUsage,
            .description = kParamsDescription,
            .arguments = kParamsArguments,
            .leastArguments = 0,
            .mostArguments = 1,
            .options = kParamsOptions,
            .examples = kParamsExamples,
            .run = runParams};
}

} // namespace varno
