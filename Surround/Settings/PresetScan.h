/// The presets in a folder.
#ifndef VARNO_SURROUND_SETTINGS_PRESETSCAN_H
#define VARNO_SURROUND_SETTINGS_PRESETSCAN_H

#include "Surround/Settings/SettingValues.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <unordered_map>
#include <vector>

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

/// Reads one file, which is in no group. @param isFactory as PresetScan has it [any]
PresetEntry readPreset(const std::filesystem::path& file, bool isFactory);

/// Reads what is in a folder and those below it, and again only what has changed. Hidden files are left out,
/// links to files and folders followed. At most kMostEntries files and folders are looked at, level by level,
/// so that a link out of the folder does not read a disk. [main]
class PresetScan {
public:
    static constexpr std::size_t kMostEntries = 20000;
    static constexpr int kMostLevels = 8;

    /// @param folder need not exist; empty for none
    /// @param isFactory whether the presets are the factory's: those are named by words ("drum-bus") and get
    ///        names for people ("Drum Bus")
    PresetScan(std::filesystem::path folder, bool isFactory);

    const std::filesystem::path& folder() const { return mFolder; }

    /// Looks into the folder. @return whether entries() has changed
    bool rescan();
    /// Ordered for people: those of no group first, then group by group.
    const std::vector<PresetEntry>& entries() const { return mEntries; }

private:
    /// What distinguishes a file from the one read before.
    struct Version {
        std::uintmax_t device = 0;
        std::uintmax_t inode = 0;
        std::int64_t bytes = 0;
        std::int64_t modifiedNs = 0;
        std::int64_t changedNs = 0;

        bool operator==(const Version&) const = default;
    };
    struct Known {
        Version version;
        PresetEntry entry;
    };
    using KnownFiles = std::unordered_map<std::string, Known>; ///< By their paths.
    class Walk;

    std::filesystem::path mFolder;
    bool mIsFactory;
    KnownFiles mKnown;
    std::vector<PresetEntry> mEntries;
};

} // namespace varno

#endif
