#include "Surround/Settings/UserFolders.h"

#include <cstdlib>

namespace varno {
namespace {

namespace fs = std::filesystem;

// Empty where the system names no folder.
fs::path ownFolder() {
    const wchar_t* const value = ::_wgetenv(L"APPDATA");
    const fs::path folder = value == nullptr ? L"" : value;
    return folder.is_absolute() ? folder / "varno-s" : fs::path();
}

} // namespace

fs::path userPresetFolder() {
    const fs::path folder = ownFolder();
    return folder.empty() ? folder : folder / "presets";
}

fs::path userPreferencesFile() {
    const fs::path folder = ownFolder();
    return folder.empty() ? folder : folder / "window.txt";
}

} // namespace varno
