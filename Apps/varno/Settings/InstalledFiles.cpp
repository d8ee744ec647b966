#include "Settings/InstalledFiles.h"

#include "CommandLine/CommandError.h"

#include <system_error>

namespace varno {
namespace {

// From the program's folder to what comes with it: beside each other, in the build tree, installed.
constexpr const char* kPlaces[] = {".", VARNO_BUNDLE_FROM_BUILT_PROGRAM, VARNO_BUNDLE_FROM_INSTALLED_PROGRAM};

} // namespace

std::filesystem::path programFolder() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) {
        throw WorkError("/proc/self/exe: cannot be read: " + error.message());
    }
    return program.parent_path();
}

std::optional<std::filesystem::path> installedFile(const std::filesystem::path& programFolder,
                                                   const std::string& name) {
    for (const char* place : kPlaces) {
        auto file = (programFolder / place / name).lexically_normal();
        std::error_code error;
        if (std::filesystem::exists(file, error)) {
            return file;
        }
    }
    return std::nullopt;
}

} // namespace varno
