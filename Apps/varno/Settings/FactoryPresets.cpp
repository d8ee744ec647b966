#include "Settings/FactoryPresets.h"

#include "CommandLine/CommandError.h"

#include <algorithm>
#include <cctype>
#include <system_error>

namespace varno {
namespace {

namespace fs = std::filesystem;

constexpr const char* kPresetExtension = ".txt";
// Characters that names of factory presets do not have.
constexpr const char* kMarksOfFiles = "./";

bool equalsWhateverCase(const std::string& left, const std::string& right) {
    return std::ranges::equal(
        left, right, [](unsigned char a, unsigned char b) { return std::tolower(a) == std::tolower(b); });
}

[[noreturn]] void refusePreset(const std::string& name, const std::vector<FactoryPreset>& presets) {
    std::vector<std::string> known;
    for (const auto& preset : presets) {
        known.push_back(preset.name);
    }
    const std::string proposal = suggestion(name, known);
    throw UsageError("preset " + inQuotes(name) +
                     ": there is neither a factory preset nor a file of this name" +
                     (proposal.empty() ? "; expected one that varno presets lists, or a file" : proposal));
}

} // namespace

fs::path factoryPresetFolder(const fs::path& bundle) {
    return bundle / "Contents" / "Resources" / "presets";
}

std::vector<FactoryPreset> factoryPresets(const fs::path& bundle) {
    const fs::path folder = factoryPresetFolder(bundle);
    std::vector<FactoryPreset> presets;
    std::error_code error;
    for (auto file = fs::directory_iterator(folder, error); !error && file != fs::directory_iterator();
         file.increment(error)) {
        if (file->path().extension() == kPresetExtension) {
            presets.push_back({file->path().stem().string(), file->path().string()});
        }
    }
    if (error && error != std::errc::no_such_file_or_directory && error != std::errc::not_a_directory) {
        throw WorkError(folder.string() + ": cannot be read: " + error.message());
    }
    std::ranges::sort(presets, {}, &FactoryPreset::name);
    return presets;
}

std::string presetPath(const std::string& nameOrFile, const std::vector<FactoryPreset>& presets) {
    const auto found = std::ranges::find_if(
        presets, [&](const FactoryPreset& preset) { return equalsWhateverCase(preset.name, nameOrFile); });
    if (found != presets.end()) {
        return found->path;
    }
    std::error_code error;
    if (nameOrFile.find_first_of(kMarksOfFiles) == std::string::npos &&
        !fs::exists(fs::symlink_status(nameOrFile, error))) {
        refusePreset(nameOrFile, presets);
    }
    return nameOrFile;
}

} // namespace varno
