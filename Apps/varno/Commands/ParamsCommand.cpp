#include "CommandError.h"
#include "Commands.h"
#include "Console.h"
#include "ModuleLoading.h"
#include "ParameterText.h"
#include "Settings.h"

namespace varno {
namespace {

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

} // namespace

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

} // namespace varno
