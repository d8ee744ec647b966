#include "ModuleLoading.h"

#include "CommandError.h"
#include "Console.h"
#include "DemoGain_SampleRates.h"
#include "Host/HostError.h"
#include "ModuleLocation.h"

#include <cstdlib>

namespace varno {
namespace {

std::optional<std::string> environmentVariable(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

} // namespace

std::filesystem::path moduleBundle(const CommandLine& line) {
    return moduleLocation(line.value("--module"), environmentVariable(kModuleVariable), programFolder());
}

std::shared_ptr<Module> loadModule(const CommandLine& line) {
    try {
        HostOptions options;
        options.sampleRates = {DemoGain_SampleRates::kLowestHz, DemoGain_SampleRates::kHighestHz};
        return Module::open(moduleBundle(line), options);
    } catch (const HostError& error) {
        throw WorkError(error.what());
    }
}

void unloadModule(std::shared_ptr<Module> module) {
    const auto monitor = module->monitor();
    module.reset();
    for (const auto& violation : monitor->violations()) {
        printWarning(std::string("the module breaks a contract (") + contractName(violation.contract) +
                     "): " + violation.text);
    }
}

} // namespace varno
