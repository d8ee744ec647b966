#include "ModuleLocation.h"

#include "CommandError.h"

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

} // namespace varno
