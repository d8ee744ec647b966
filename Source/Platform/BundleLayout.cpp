#include "Platform/BundleLayout.h"

namespace varno {

namespace fs = std::filesystem;

namespace {

std::optional<fs::path> resourcesAround(const fs::path& binary) {
    const fs::path folder = binary.parent_path();
    const fs::path contents = folder.parent_path();
    std::error_code ignored;
    if (contents.filename() == "Contents" && fs::is_directory(contents / "Resources", ignored)) {
        return contents / "Resources";
    }
    if (fs::is_directory(folder / "resources", ignored)) {
        return folder / "resources";
    }
    return std::nullopt;
}

} // namespace

std::optional<fs::path> resourcesOf(const fs::path& binary) {
    if (auto found = resourcesAround(binary.lexically_normal())) {
        return found;
    }
    std::error_code missing;
    const fs::path target = fs::canonical(binary, missing);
    return missing ? std::nullopt : resourcesAround(target);
}

} // namespace varno
