/// The presets that come with the effect, by the names that scripts and command lines use.
#ifndef VARNO_SURROUND_SETTINGS_FACTORYPRESETS_H
#define VARNO_SURROUND_SETTINGS_FACTORYPRESETS_H

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace varno {

/// A preset that comes with the effect.
struct FactoryPreset {
    std::string name; ///< The file's without its extension: "drum-bus".
    std::string path;
};

/// The presets of a folder in the order of their names; none where it is not there. [any]
/// @throws FileError where the folder is there and cannot be read
std::vector<FactoryPreset> factoryPresetsIn(const std::filesystem::path& folder);

/// The file that a user names where a preset is expected: that of the factory preset of this name, whatever
/// its case, else the file itself. A text with a dot or a slash is a file. Nothing for a text that could be a
/// name and is neither. [any]
std::optional<std::string> presetFile(const std::string& nameOrFile,
                                      const std::vector<FactoryPreset>& presets);

/// One line about a text that presetFile() has nothing for. @param listedBy where the names are listed:
///        "varno presets lists" [any]
std::string unknownPreset(const std::string& name, const std::vector<FactoryPreset>& presets,
                          const std::string& listedBy);

} // namespace varno

#endif
