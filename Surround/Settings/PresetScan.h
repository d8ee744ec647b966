/// The presets in a folder.
#ifndef VARNO_SURROUND_SETTINGS_PRESETSCAN_H
#define VARNO_SURROUND_SETTINGS_PRESETSCAN_H

#include "Surround/Settings/PresetFile.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <unordered_map>
#include <vector>

namespace varno {

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
