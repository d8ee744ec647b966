/// A preset as a file.
#ifndef VARNO_SURROUND_SETTINGS_PRESETFILE_H
#define VARNO_SURROUND_SETTINGS_PRESETFILE_H

#include "Surround/Settings/SettingValues.h"

#include <filesystem>
#include <string>

namespace varno {

/// Extension of the files of presets.
inline constexpr const char* kPresetSuffix = ".txt";

/// A preset, or a file or folder in its place that cannot be used.
struct PresetEntry {
    std::string name;  ///< As people read it, by safeText(): the file's without its extension.
    std::string group; ///< The same of the folders that it is in, "Drums/Rooms"; empty for none.
    std::filesystem::path path;
    bool isFactory = false;
    /// Why it cannot be used: "is no preset"; empty for a sound one.
    std::string damage;
    SettingValues values{}; ///< As the effect takes them; of a sound one.
    std::string note;       ///< What the file has behind the settings, for people; not limited to a line.

    bool isSound() const { return damage.empty(); }
    bool operator==(const PresetEntry&) const = default;
};

/// The entry of a file that is in no group and was not read.
/// @param isFactory whether it is the factory's: those are named by words ("drum-bus") and get names for
/// people
///        ("Drum Bus") [any]
PresetEntry namedEntry(const std::filesystem::path& path, bool isFactory);

/// The same with what the file has, or why it cannot be used. [any]
PresetEntry readPreset(const std::filesystem::path& file, bool isFactory);

} // namespace varno

#endif
