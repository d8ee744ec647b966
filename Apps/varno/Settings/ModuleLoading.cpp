#include "Settings/ModuleLoading.h"

#include "CommandLine/CommandError.h"
#include "CommandLine/Console.h"
#include "DemoGain_SampleRates.h"
#include "Host/HostError.h"
#include "Host/HostOptions.h"

#include <system_error>

namespace varno {
namespace {

// From the program's folder to the bundle's: beside each other, in the build tree, installed.
constexpr const char* kPlaces[] = {".", VARNO_BUNDLE_FROM_BUILT_PROGRAM, VARNO_BUNDLE_FROM_INSTALLED_PROGRAM};

} // namespace

std::filesystem::path moduleLocation(const std::optional<std::string>& asked,
                                     const std::optional<std::string>& fromEnvironment,
                                     const std::filesystem::path& programFolder) {
    if (asked) {
        return *asked;
    }
    if (fromEnvironment && !fromEnvironment->empty()) {
        return *fromEnvironment;
    }
    for (const char* place : kPlaces) {
        auto bundle = (programFolder / place / kBundleName).lexically_normal();
        std::error_code error;
        if (std::filesystem::exists(bundle, error)) {
            return bundle;
        }
    }
    throw WorkError(std::string(kBundleName) + ": not found beside the program in " + programFolder.string() +
                    "; expected its path in --module or VARNO_MODULE");
}

std::filesystem::path programFolder() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) {
        throw WorkError("/proc/self/exe: cannot be read: " + error.message());
    }
    return program.parent_path();
}

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

void requireVariantFor(const Module& module, const AudioReader& reader) {
    const auto& format = reader.format();
    const auto* effect = module.description().effect({});
    if (effect == nullptr || effect->variantFor(format.channels) == nullptr) {
        throw WorkError(reader.name() + ": has " + std::to_string(format.channels) +
                        " channels; expected 1 (mono) or 2 (stereo)");
    }
    if (const auto refusal = sampleRateRefusal(module.options().sampleRates, format.rateHz)) {
        throw WorkError(reader.name() + ": " + *refusal);
    }
}

} // namespace varno
