/// The presets that a window offers, and what the user does with them.
#ifndef VARNO_SURROUND_SETTINGS_PRESETSTORE_H
#define VARNO_SURROUND_SETTINGS_PRESETSTORE_H

#include "Files/AtomicFile.h"
#include "Surround/Settings/PresetScan.h"
#include "Surround/Settings/SettingValues.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace varno {

/// Why a user's preset cannot have a name, as a sentence; empty where it can. Names are UTF-8 without slashes
/// and unsafe characters (isUnsafe()), begin and end with no blank and begin with no point. [any]
std::string presetNameRefusal(std::string_view name);

/// The factory's presets and the user's, and which of them the effect has received last. Loading one is the
/// caller's: it gives the entry's values to the effect and calls choose(). Errors are FileErrors with a
/// sentence for people. [main]
class PresetStore {
public:
    /// Looks into both folders. @param factoryFolder empty for none
    /// @param userFolder as userPresetFolder() returns it; need not exist; empty where nothing can be saved
    PresetStore(std::filesystem::path factoryFolder, std::filesystem::path userFolder);

    /// Looks for what has changed in the folders. @return whether entries() has changed
    bool rescan();

    /// The factory's presets, then the user's, each in the order that people see. Valid until the next call
    /// that is not const.
    const std::vector<PresetEntry>& entries() const { return mEntries; }
    /// The entry with this file; null where there is none.
    const PresetEntry* find(const std::filesystem::path& path) const;

    /// The preset that was chosen or saved last; null where there is none, or no longer.
    const PresetEntry* present() const { return find(mPresent); }
    /// Makes a preset the present one; an empty path for none.
    void choose(const std::filesystem::path& path) { mPresent = path; }
    /// Whether settings differ from those of the present preset; not where there is none.
    bool isChanged(const SettingValues& now) const;

    /// The sound preset before or after the present one in the order of entries(), or from the end or the
    /// start where there is no present one; past the last comes the first. Null where no preset is sound.
    const PresetEntry* previous() const { return neighbour(-1); }
    const PresetEntry* next() const { return neighbour(1); }

    /// The file of a user's preset. @param group folders below the user's, separated by slashes; empty for
    ///        none
    std::filesystem::path pathOf(const std::string& name, const std::string& group) const;
    /// Whether there is something of this name, so that saving would replace it.
    bool exists(const std::string& name, const std::string& group) const;

    /// Saves settings as a preset of the user's and makes it the present one.
    /// @param overwrite kRefuse refuses where the name is taken
    void saveAs(const std::string& name, const std::string& group, const SettingValues& values,
                Overwrite overwrite);
    /// Whether save() has a preset to save over: a present one of the user's.
    bool canSave() const;
    /// Saves settings over the present preset, whose note stays.
    void save(const SettingValues& values);

    /// Gives a preset of the user's another name in its group; it stays the present one.
    /// @param overwrite kRefuse refuses where the name is taken
    void rename(const std::filesystem::path& path, const std::string& name, Overwrite overwrite);

    /// Removes a file of the user's. Its content is kept for undoRemove(), until the next removal.
    void remove(const std::filesystem::path& path);
    /// The name of the preset that undoRemove() brings back; empty for none.
    std::string removedName() const;
    /// Brings the preset back that was removed last; refused where its name is taken.
    void undoRemove();

private:
    struct Removed {
        PresetEntry entry;
        std::string text;
        bool wasPresent;
    };

    const PresetEntry* neighbour(int step) const;
    const PresetEntry& requireOwn(const std::filesystem::path& path) const;
    void requireName(const std::string& name, const std::string& group) const;

    PresetScan mFactory;
    PresetScan mUser;
    std::vector<PresetEntry> mEntries;
    std::filesystem::path mPresent;
    std::optional<Removed> mRemoved;
};

} // namespace varno

#endif
