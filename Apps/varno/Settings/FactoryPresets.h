#ifndef VARNO_APPS_VARNO_SETTINGS_FACTORYPRESETS_H
#define VARNO_APPS_VARNO_SETTINGS_FACTORYPRESETS_H

#include <filesystem>
#include <string>
#include <vector>

namespace varno {

/// A preset that comes with the module: a file of the bundle's folder of presets.
struct FactoryPreset {
    std::string name; ///< The file's without its extension: "drum-bus".
    std::string path;
};

/// The folder of the factory presets in a bundle.
std::filesystem::path factoryPresetFolder(const std::filesystem::path& bundle);

/// The factory presets of a bundle in the order of their names; none where it has none.
/// @throws WorkError where the folder is there and cannot be read
std::vector<FactoryPreset> factoryPresets(const std::filesystem::path& bundle);

/// The file that a user names where a preset is expected: that of the factory preset of this name, whatever
/// its case, else the file itself. A text with a dot or a slash is a file.
/// @throws UsageError for a text that could be a name and is neither
std::string presetPath(const std::string& nameOrFile, const std::vector<FactoryPreset>& presets);

} // namespace varno

#endif
