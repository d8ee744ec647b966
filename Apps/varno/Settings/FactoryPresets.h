#ifndef VARNO_APPS_VARNO_SETTINGS_FACTORYPRESETS_H
#define VARNO_APPS_VARNO_SETTINGS_FACTORYPRESETS_H

#include "Surround/Settings/FactoryPresets.h"

#include <filesystem>
#include <string>
#include <vector>

namespace varno {

/// The folder of the factory presets in a bundle.
std::filesystem::path factoryPresetFolder(const std::filesystem::path& bundle);

/// The factory presets of a bundle in the order of their names; none where it has none.
/// @throws FileError where the folder is there and cannot be read
std::vector<FactoryPreset> factoryPresets(const std::filesystem::path& bundle);

/// The file that a user names where a preset is expected, as presetFile() finds it.
/// @throws UsageError for a text that could be a name and is neither
std::string presetPath(const std::string& nameOrFile, const std::vector<FactoryPreset>& presets);

} // namespace varno

#endif
