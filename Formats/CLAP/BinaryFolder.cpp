#include "CLAP/BinaryFolder.h"

#include <mutex>
#include <system_error>

namespace varno {

namespace {

std::mutex gPathMutex;
std::filesystem::path gPath; // Under the mutex.

} // namespace

void setBinaryPath(const std::filesystem::path& path) {
    const std::lock_guard lock(gPathMutex);
    gPath = path;
}

std::filesystem::path binaryResources() {
    const std::lock_guard lock(gPathMutex);
    std::error_code ignored;
    for (const std::filesystem::path& binary : {gPath, std::filesystem::canonical(gPath, ignored)}) {
        std::filesystem::path resources = binary.parent_path() / "resources";
        if (!binary.empty() && std::filesystem::is_directory(resources, ignored)) {
            return resources;
        }
    }
    return {};
}

} // namespace varno
