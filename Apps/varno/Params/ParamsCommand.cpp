#include "Commands.h"

#include "CommandLine/CommandError.h"
#include "CommandLine/CommandLine.h"
#include "CommandLine/Console.h"
#include "CommandLine/Json.h"
#include "CommandLine/NumberText.h"
#include "CommandLine/TextLayout.h"
#include "Settings/ModuleLoading.h"
#include "Settings/ParameterValue.h"
#include "Settings/Settings.h"

namespace varno {
namespace {

constexpr std::string_view kParamsUsage[] = {"[OPTIONS]", "[OPTIONS] ID"};
constexpr std::string_view kParamsDescription[] = {
    "Lists the parameters: index, identifier, name, type, number of steps, default and present value. With "
    "an ID it shows that one parameter and the text of each of its steps. The present value is the default "
    "unless a setting is given."};
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
    {"varno params --preset bus.txt", "What a preset holds."},
};

constexpr int kValueDecimals = 6; // of a normalized value

const char* typeName(AAX_EParameterType type) {
    return type == AAX_eParameterType_Discrete ? "discrete" : "continuous";
}

std::string valueText(const std::string& text, double normalized) {
    return text + " (" + decimalText(normalized, kValueDecimals) + ')';
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
            {"text", instance.text(parameter.id)}};
}

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
    facts.addRow({"default", valueText(parameter.defaultText, parameter.defaultNormalized)});
    facts.addRow({"value", valueText(instance.text(parameter.id), instance.normalized(parameter.id))});
    facts.addRow({"steps", std::to_string(parameter.steps)});
    TextTable steps({{"STEP", Align::kRight}, {"VALUE", Align::kLeft}, {"TEXT", Align::kLeft}});
    for (int step = 0; step < parameter.steps; ++step) {
        const double normalized = normalizedOfStep(step, parameter.steps);
        steps.addRow({std::to_string(step), decimalText(normalized, kValueDecimals),
                      instance.textOf(parameter.id, normalized)});
    }
    return facts.text() + '\n' + steps.text();
}

std::string parameterJson(const Instance& instance, const ParameterInfo& parameter) {
    Json::Array steps;
    for (int step = 0; step < parameter.steps; ++step) {
        const double normalized = normalizedOfStep(step, parameter.steps);
        steps.emplace_back(Json::Object{
            {"step", step}, {"value", normalized}, {"text", instance.textOf(parameter.id, normalized)}});
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
        const auto& parameter = requireParameter(instance, line.arguments().front(), "", kExitWrongUsage);
        return json ? parameterJson(instance, parameter) : parameterText(instance, parameter);
    }
    if (line.has("--ids")) {
        return identifiers(instance);
    }
    return json ? parametersJson(instance) : parametersText(instance);
}

int runParams(const CommandLine& line) {
    const Settings settings(line);
    auto module = loadModule(line);
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
