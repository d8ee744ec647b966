#include "Settings/ModuleLoading.h"

#include "CommandLine/CommandError.h"
#include "CommandLine/Console.h"
#include "Host/HostError.h"
#include "Settings/InstalledFiles.h"
#include "Surround/Settings/EffectHost.h"

namespace varno {
namespace {

// The bundle that is named, by the option or else by the environment.
std::optional<std::filesystem::path> namedBundle(const std::optional<std::string>& asked,
                                                 const std::optional<std::string>& fromEnvironment) {
    if (asked) {
        return *asked;
    }
    return fromEnvironment && !fromEnvironment->empty() ? fromEnvironment : std::nullopt;
}

std::shared_ptr<Module> openBundle(const std::filesystem::path& bundle) {
    try {
        return Module::open(bundle, effectHostOptions());
    } catch (const HostError& error) {
        throw WorkError(error.what());
    }
}

} // namespace

std::filesystem::path moduleLocation(const std::optional<std::string>& asked,
                                     const std::optional<std::string>& fromEnvironment,
                                     const std::filesystem::path& programFolder) {
    if (const auto bundle = namedBundle(asked, fromEnvironment)) {
        return *bundle;
    }
    if (const auto bundle = installedFile(programFolder, kBundleName)) {
        return *bundle;
    }
    throw WorkError(std::string(kBundleName) + ": not found beside the program in " + programFolder.string() +
                    "; expected its path in --module or VARNO_MODULE");
}

std::optional<std::filesystem::path> namedModule(const CommandLine& line) {
    return namedBundle(line.value("--module"), environmentVariable(kModuleVariable));
}

std::filesystem::path moduleBundle(const CommandLine& line) {
    return moduleLocation(line.value("--module"), environmentVariable(kModuleVariable), programFolder());
}

std::shared_ptr<Module> loadModule(const CommandLine& line) {
    return openBundle(moduleBundle(line));
}

std::shared_ptr<Module> loadEffect(const CommandLine& line) {
    if (const auto bundle = namedModule(line)) {
        return openBundle(*bundle);
    }
    return Module::linked(linkedEntryPoints(), effectHostOptions());
}

void unloadModule(std::shared_ptr<Module> module) {
    const auto monitor = module->monitor();
    module.reset();
    for (const auto& violation : monitor->violations()) {
        printWarning(std::string("the module breaks a contract (") + contractName(violation.contract) +
                     "): " + violation.text);
    }
}

void requireVariantFor(const Module& module, const AudioReader& reader, const std::string& otherwise) {
    const auto& format = reader.format();
    const auto* effect = module.description().effect({});
    if (effect == nullptr || effect->variantFor(format.channels) == nullptr) {
        throw WorkError(reader.name() + ": has " + std::to_string(format.channels) +
                        " channels; expected 1 (mono) or 2 (stereo)" + otherwise);
    }
    requireRateFor(module, reader);
}

void requireRateFor(const Module& module, const AudioReader& reader) {
    if (const auto refusal = sampleRateRefusal(module.options().sampleRates, reader.format().rateHz)) {
        throw WorkError(reader.name() + ": " + *refusal);
    }
}

} // namespace varno
