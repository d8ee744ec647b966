#include "Surround/Settings/FactoryPresets.h"

#include "Files/FileError.h"
#include "Host/HostError.h"
#include "Surround/Settings/PresetFile.h"
#include "Surround/Settings/Suggestion.h"

#include <algorithm>
#include <cctype>
#include <system_error>

namespace varno {
namespace {

// Characters that names of factory presets do not have.
constexpr const char* kMarksOfFiles = "./";

bool equalsWhateverCase(const std::string& left, const std::string& right) {
    return std::ranges::equal(
        left, right, [](unsigned char a, unsigned char b) { return std::tolower(a) == std::tolower(b); });
}

} // namespace

std::vector<FactoryPreset> factoryPresetsIn(const std::filesystem::path& folder) {
    std::vector<FactoryPreset> presets;
    std::error_code error;
    for (auto file = std::filesystem::directory_iterator(folder, error);
         !error && file != std::filesystem::directory_iterator(); file.increment(error)) {
        if (file->path().extension() == kPresetSuffix) {
            presets.push_back({file->path().stem().string(), file->path().string()});
        }
    }
    if (error && error != std::errc::no_such_file_or_directory && error != std::errc::not_a_directory) {
        throw FileError(folder.string() + ": cannot be read: " + error.message());
    }
    std::ranges::sort(presets, {}, &FactoryPreset::name);
    return presets;
}

std::optional<std::string> presetFile(const std::string& nameOrFile,
                                      const std::vector<FactoryPreset>& presets) {
    const auto found = std::ranges::find_if(
        presets, [&](const FactoryPreset& preset) { return equalsWhateverCase(preset.name, nameOrFile); });
    if (found != presets.end()) {
        return found->path;
    }
    std::error_code error;
    if (nameOrFile.find_first_of(kMarksOfFiles) == std::string::npos &&
        !std::filesystem::exists(std::filesystem::symlink_status(nameOrFile, error))) {
        return std::nullopt;
    }
    return nameOrFile;
}

std::string unknownPreset(const std::string& name, const std::vector<FactoryPreset>& presets,
                          const std::string& listedBy) {
    std::vector<std::string> known;
    for (const auto& preset : presets) {
        known.push_back(preset.name);
    }
    const std::string proposal = suggestion(name, known);
    return "preset " + quoted(name) + ": there is neither a factory preset nor a file of this name" +
           (proposal.empty() ? "; expected one that " + listedBy + ", or a file" : proposal);
}

} // namespace varno
