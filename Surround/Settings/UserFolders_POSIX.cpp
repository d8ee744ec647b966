#include "Surround/Settings/UserFolders.h"

#include <cstdlib>

namespace varno {
namespace {

namespace fs = std::filesystem;

constexpr const char* kOwnFolder = "varno-s";

fs::path folderFrom(const char* variable) {
    const char* const value = std::getenv(variable);
    const fs::path folder = value == nullptr ? "" : value;
    return folder.is_absolute() ? folder : fs::path();
}

// Empty where neither the variable nor HOME names a folder.
fs::path ownFolder(const char* variable, const char* belowHome) {
    fs::path folder = folderFrom(variable);
    if (folder.empty()) {
        const fs::path home = folderFrom("HOME");
        folder = home.empty() ? home : home / belowHome;
    }
    return folder.empty() ? folder : folder / kOwnFolder;
}

} // namespace

fs::path userPresetFolder() {
    const fs::path folder = ownFolder("XDG_DATA_HOME", ".local/share");
    return folder.empty() ? folder : folder / "presets";
}

fs::path userPreferencesFile() {
    const fs::path folder = ownFolder("XDG_CONFIG_HOME", ".config");
    return folder.empty() ? folder : folder / "window.txt";
}

} // namespace varno
