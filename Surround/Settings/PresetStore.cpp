#include "Surround/Settings/PresetStore.h"

#include "Files/FileError.h"
#include "Files/HiddenFiles.h"
#include "Surround/Settings/Characters.h"
#include "Surround/Settings/TextFile.h"

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace varno {
namespace {

namespace fs = std::filesystem;

// What file systems take as a name, in bytes, without the extension.
constexpr std::size_t kMostNameBytes = 255 - std::string_view(kPresetSuffix).size();

// The parts of "Drums/Rooms".
std::vector<std::string> foldersOf(const std::string& group) {
    std::vector<std::string> folders;
    std::size_t start = 0;
    while (start < group.size()) {
        const std::size_t end = std::min(group.find('/', start), group.size());
        folders.push_back(group.substr(start, end - start));
        start = end + 1;
    }
    return folders;
}

std::string textOf(const SettingValues& values, const std::string& note) {
    return DemoGain_PresetText::Write(values) + '\n' + note;
}

} // namespace

std::string presetNameRefusal(std::string_view name) {
    if (name.empty() || name.find_first_not_of(' ') == std::string_view::npos) {
        return "A preset needs a name.";
    }
    if (name.starts_with('.')) {
        return "The name of a preset cannot begin with a point.";
    }
    if (name.find('/') != std::string_view::npos) {
        return "The name of a preset cannot have a slash.";
    }
    if (name.starts_with(' ') || name.ends_with(' ')) {
        return "The name of a preset cannot begin or end with a blank.";
    }
    if (safeText(name) != name) {
        return "The name of a preset can have letters, digits and signs alone.";
    }
    if (name.size() > kMostNameBytes) {
        return "The name is too long by " + std::to_string(name.size() - kMostNameBytes) + " bytes.";
    }
    return {};
}

PresetStore::PresetStore(fs::path factoryFolder, fs::path userFolder)
    : mFactory(std::move(factoryFolder), true),
      mUser(std::move(userFolder), false) {
    rescan();
}

bool PresetStore::rescan() {
    const bool hasFactoryChanged = mFactory.rescan();
    const bool hasUserChanged = mUser.rescan();
    if (!hasFactoryChanged && !hasUserChanged) {
        return false;
    }
    mEntries = mFactory.entries();
    mEntries.insert(mEntries.end(), mUser.entries().begin(), mUser.entries().end());
    return true;
}

const PresetEntry* PresetStore::find(const fs::path& path) const {
    const auto found = std::ranges::find_if(
        mEntries, [&](const PresetEntry& entry) { return entry.path.native() == path.native(); });
    return path.empty() || found == mEntries.end() ? nullptr : &*found;
}

bool PresetStore::isChanged(const SettingValues& now) const {
    const PresetEntry* const entry = present();
    return entry != nullptr && entry->isSound() && !areSameSettings(entry->values, now);
}

const PresetEntry* PresetStore::neighbour(int step) const {
    const auto count = static_cast<std::ptrdiff_t>(mEntries.size());
    const PresetEntry* const entry = present();
    std::ptrdiff_t place = step > 0 ? -1 : count;
    if (entry != nullptr) {
        place = entry - mEntries.data();
    }
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        place = (place + step + count) % count;
        const PresetEntry& candidate = mEntries[static_cast<std::size_t>(place)];
        if (candidate.isSound()) {
            return &candidate;
        }
    }
    return nullptr;
}

fs::path PresetStore::pathOf(const std::string& name, const std::string& group) const {
    fs::path folder = mUser.folder();
    for (const std::string& part : foldersOf(group)) {
        folder /= part;
    }
    return folder / (name + kPresetSuffix);
}

bool PresetStore::exists(const std::string& name, const std::string& group) const {
    std::error_code error;
    return fs::exists(fs::symlink_status(pathOf(name, group), error));
}

void PresetStore::requireName(const std::string& name, const std::string& group) const {
    if (mUser.folder().empty()) {
        throw FileError("There is no folder for presets: neither XDG_DATA_HOME nor HOME names one.");
    }
    std::vector<std::string> names = foldersOf(group);
    names.push_back(name);
    for (const std::string& each : names) {
        if (const std::string refusal = presetNameRefusal(each); !refusal.empty()) {
            throw FileError(refusal);
        }
    }
}

void PresetStore::saveAs(const std::string& name, const std::string& group, const SettingValues& values,
                         Overwrite overwrite) {
    requireName(name, group);
    const fs::path path = pathOf(name, group);
    if (overwrite == Overwrite::kRefuse && exists(name, group)) {
        throw FileError("There is a preset \"" + name + "\" already.");
    }
    writeTextFile(path, textOf(values, {}), overwrite);
    mPresent = path;
    rescan();
}

bool PresetStore::canSave() const {
    const PresetEntry* const entry = present();
    return entry != nullptr && !entry->isFactory;
}

void PresetStore::save(const SettingValues& values) {
    const PresetEntry& entry = requireOwn(mPresent);
    writeTextFile(entry.path, textOf(values, entry.note), Overwrite::kReplace);
    rescan();
}

const PresetEntry& PresetStore::requireOwn(const fs::path& path) const {
    const PresetEntry* const entry = find(path);
    if (entry == nullptr) {
        throw FileError("The preset is not there any more.");
    }
    if (entry->isFactory) {
        throw FileError("The factory's presets stay as they are.");
    }
    return *entry;
}

void PresetStore::rename(const fs::path& path, const std::string& name, Overwrite overwrite) {
    const PresetEntry& entry = requireOwn(path);
    requireName(name, {});
    const fs::path target = path.parent_path() / (name + kPresetSuffix);
    const int error = overwrite == Overwrite::kRefuse ? renameToNew(path, target) : renameOver(path, target);
    if (error == EEXIST) {
        throw FileError("There is a preset \"" + name + "\" already.");
    }
    if (error != 0) {
        throw FileError('"' + entry.name + "\" cannot be renamed: " + std::generic_category().message(error));
    }
    if (mPresent == path) {
        mPresent = target;
    }
    rescan();
}

void PresetStore::remove(const fs::path& path) {
    const PresetEntry& entry = requireOwn(path);
    TextFile file = readTextFile(path);
    if (!file.refusal.empty()) {
        throw FileError('"' + entry.name + "\" cannot be removed, since it " + file.refusal + '.');
    }
    if (::unlink(path.c_str()) != 0) {
        throw FileError('"' + entry.name + "\" cannot be removed: " + std::generic_category().message(errno));
    }
    mRemoved = Removed{entry, std::move(file.text), mPresent == path};
    rescan();
}

std::string PresetStore::removedName() const {
    return mRemoved ? mRemoved->entry.name : std::string();
}

void PresetStore::undoRemove() {
    if (!mRemoved) {
        return;
    }
    const fs::path& path = mRemoved->entry.path;
    std::error_code error;
    if (fs::exists(fs::symlink_status(path, error))) {
        throw FileError("There is a preset \"" + mRemoved->entry.name + "\" already.");
    }
    writeTextFile(path, mRemoved->text, Overwrite::kRefuse);
    if (mRemoved->wasPresent) {
        mPresent = path;
    }
    mRemoved.reset();
    rescan();
}

} // namespace varno
