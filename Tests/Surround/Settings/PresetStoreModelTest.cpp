// A store of presets in any sequence of operations, its own and other programs', against a map of presets.
#include "Files/FileError.h"
#include "Surround/Settings/PresetStore.h"
#include "Tests/Support/ModelCheck.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>

namespace varno::test {
namespace {

#if VARNO_HAS_PROPERTIES
// A user's preset: its group and its name. The factory's has a name alone that no user's has.
struct PresetPlace {
    std::string group;
    std::string name;

    auto operator<=>(const PresetPlace&) const = default;
};
const PresetPlace kFactoryPlace{"", "drum-bus"};

// All its values are the same eighth; and what stands behind them.
struct PresetContent {
    int eighths = 0;
    std::string note;
};

SettingValues valuesOfEighths(int eighths) {
    SettingValues values{};
    values.fill(static_cast<float>(eighths) / 8.0F);
    return values;
}

std::string presetText(const PresetContent& content) {
    return DemoGain_PresetText::Write(valuesOfEighths(content.eighths)) + '\n' + content.note;
}

std::string takenText(const std::string& name) {
    return "There is a preset \"" + name + "\" already.";
}

constexpr const char* kGone = "The preset is not there any more.";
constexpr const char* kFactorys = "The factory's presets stay as they are.";

class PresetsModel {
public:
    std::string saveAs(const PresetPlace& place, int eighths, Overwrite overwrite) {
        if (overwrite == Overwrite::kRefuse && mPresets.contains(place)) {
            return seen(takenText(place.name));
        }
        mPresets[place] = {eighths, ""};
        mPresent = place;
        return seen();
    }
    std::string save(int eighths) {
        if (const std::string refusal = refusalOf(mPresent); !refusal.empty()) {
            return seen(refusal);
        }
        mPresets[*mPresent].eighths = eighths;
        return seen();
    }
    std::string rename(const PresetPlace& place, const std::string& name, Overwrite overwrite) {
        if (const std::string refusal = refusalOf(place); !refusal.empty()) {
            return seen(refusal);
        }
        const PresetPlace target{place.group, name};
        if (overwrite == Overwrite::kRefuse && mPresets.contains(target)) {
            return seen(takenText(name));
        }
        const PresetContent content = mPresets[place];
        mPresets.erase(place);
        mPresets[target] = content;
        if (mPresent == place) {
            mPresent = target;
        }
        return seen();
    }
    std::string remove(const PresetPlace& place) {
        if (const std::string refusal = refusalOf(place); !refusal.empty()) {
            return seen(refusal);
        }
        mRemoved = Removed{place, mPresets[place], mPresent == place};
        mPresets.erase(place);
        return seen();
    }
    std::string undoRemove() {
        if (!mRemoved) {
            return seen();
        }
        if (mPresets.contains(mRemoved->place)) {
            return seen(takenText(mRemoved->place.name));
        }
        mPresets[mRemoved->place] = mRemoved->content;
        if (mRemoved->wasPresent) {
            mPresent = mRemoved->place;
        }
        mRemoved.reset();
        return seen();
    }
    std::string choose(const PresetPlace& place) {
        mPresent = place;
        return seen();
    }
    std::string writeBehind(const PresetPlace& place, const PresetContent& content) {
        mPresets[place] = content;
        return seen();
    }
    std::string removeBehind(const PresetPlace& place) {
        mPresets.erase(place);
        return seen();
    }

private:
    struct Removed {
        PresetPlace place;
        PresetContent content;
        bool wasPresent = false;
    };

    std::string refusalOf(const std::optional<PresetPlace>& place) const {
        if (place == kFactoryPlace) {
            return kFactorys;
        }
        return place && mPresets.contains(*place) ? "" : kGone;
    }
    std::string seen(const std::string& error = {}) const {
        std::string text = error + "\n/Drum Bus 4 \n";
        for (const auto& [place, content] : mPresets) {
            text += place.group + '/' + place.name + ' ' + std::to_string(content.eighths) + ' ' +
                    content.note + '\n';
        }
        if (mPresent == kFactoryPlace) {
            text += "present Drum Bus";
        } else if (mPresent && mPresets.contains(*mPresent)) {
            text += "present " + mPresent->group + '/' + mPresent->name;
        }
        return text + " removed " + (mRemoved ? mRemoved->place.name : "");
    }

    std::map<PresetPlace, PresetContent> mPresets;
    std::optional<PresetPlace> mPresent;
    std::optional<Removed> mRemoved;
};

// The store, and the files that it leaves.
class StoredPresets {
public:
    std::string saveAs(const PresetPlace& place, int eighths, Overwrite overwrite) {
        return after([&] { mStore.saveAs(place.name, place.group, valuesOfEighths(eighths), overwrite); });
    }
    std::string save(int eighths) {
        return after([&] { mStore.save(valuesOfEighths(eighths)); });
    }
    std::string rename(const PresetPlace& place, const std::string& name, Overwrite overwrite) {
        return after([&] { mStore.rename(fileOf(place), name, overwrite); });
    }
    std::string remove(const PresetPlace& place) {
        return after([&] { mStore.remove(fileOf(place)); });
    }
    std::string undoRemove() {
        return after([&] { mStore.undoRemove(); });
    }
    std::string choose(const PresetPlace& place) {
        return after([&] { mStore.choose(fileOf(place)); });
    }
    std::string writeBehind(const PresetPlace& place, const PresetContent& content) {
        mFolder.write(fileOf(place), presetText(content));
        return after([&] { mStore.rescan(); });
    }
    std::string removeBehind(const PresetPlace& place) {
        std::filesystem::remove(fileOf(place));
        return after([&] { mStore.rescan(); });
    }

protected:
    std::filesystem::path fileOf(const PresetPlace& place) const {
        return place == kFactoryPlace ? mFactory : mStore.pathOf(place.name, place.group);
    }
    std::string after(const std::function<void()>& work) {
        std::string error;
        try {
            work();
        } catch (const FileError& refusal) {
            error = refusal.what();
        }
        return error + '\n' + seen();
    }
    std::string seen() const {
        std::string text;
        for (const PresetEntry& entry : mStore.entries()) {
            const int eighths = static_cast<int>(entry.values[0] * 8.0F);
            const bool isAsListed = readFile(entry.path) == presetText({eighths, entry.note});
            text += entry.group + '/' + entry.name + ' ' + std::to_string(eighths) + ' ' + entry.note +
                    (isAsListed ? "\n" : " unlike its file\n");
        }
        const PresetEntry* const present = mStore.present();
        if (present != nullptr) {
            text += "present " + (present->isFactory ? present->name : present->group + '/' + present->name);
        }
        return text + " removed " + mStore.removedName() + unlistedFiles();
    }
    // What lies in the user's folder beside the entries, hidden files too.
    std::string unlistedFiles() const {
        std::string text;
        std::error_code error;
        for (std::filesystem::recursive_directory_iterator file(mFolder / "user", error), end; file != end;
             ++file) {
            if (!file->is_directory() && mStore.find(file->path()) == nullptr) {
                text += " unlisted " + file->path().filename().string();
            }
        }
        return text;
    }

    TemporaryFolder mFolder;
    std::filesystem::path mFactory = mFolder.write("factory/drum-bus.txt", presetText({4, ""}));
    PresetStore mStore{mFolder / "factory", mFolder / "user"};
};

// A preset that is saved again loses its note.
class NotelessPresets : public StoredPresets {
public:
    std::string save(int eighths) {
        const PresetEntry* const present = mStore.present();
        return present == nullptr || present->isFactory
                   ? StoredPresets::save(eighths)
                   : saveAs({present->group, present->name}, eighths, Overwrite::kReplace);
    }
};

// What is brought back replaces what has taken its name.
class ReplacingPresets : public StoredPresets {
public:
    std::string remove(const PresetPlace& place) {
        mLast = fileOf(place);
        return StoredPresets::remove(place);
    }
    std::string undoRemove() {
        if (!mStore.removedName().empty()) {
            std::filesystem::remove(mLast);
        }
        return StoredPresets::undoRemove();
    }

private:
    std::filesystem::path mLast;
};

// A preset that is renamed stays under its old name too.
class CopyingPresets : public StoredPresets {
public:
    std::string rename(const PresetPlace& place, const std::string& name, Overwrite overwrite) {
        const std::filesystem::path file = fileOf(place);
        const std::string text = std::filesystem::exists(file) ? readFile(file) : std::string();
        StoredPresets::rename(place, name, overwrite);
        if (!text.empty() && place.name != name) {
            writeFile(file, text);
        }
        return after([&] { mStore.rescan(); });
    }
};

// Files of other programs are seen one operation late.
class LatePresets : public StoredPresets {
public:
    std::string writeBehind(const PresetPlace& place, const PresetContent& content) {
        mFolder.write(fileOf(place), presetText(content));
        return after([] {});
    }
};

PresetPlace anyPlace() {
    return {*rc::gen::element<std::string>("", "Drums", "Drums/Rooms"),
            *rc::gen::element<std::string>("a", "b", "c")};
}

// One that a user chooses from, which may be the factory's.
PresetPlace anyPlaceOfAll() {
    return *rc::gen::inRange(0, 8) == 0 ? kFactoryPlace : anyPlace();
}

template<class Presets>
typename ModelCheck<PresetsModel, Presets>::Operation anyPresetOperation() {
    using Check = ModelCheck<PresetsModel, Presets>;
    const int eighths = *rc::gen::inRange(0, 9);
    const Overwrite overwrite = *rc::gen::element(Overwrite::kRefuse, Overwrite::kReplace);
    const PresetPlace own = anyPlace();
    const PresetPlace any = anyPlaceOfAll();
    const std::string ownName =
        own.group + '/' + own.name + (overwrite == Overwrite::kReplace ? " over" : "");
    const std::string anyName =
        any.group + '/' + any.name + (overwrite == Overwrite::kReplace ? " over" : "");
    switch (*rc::gen::inRange(0, 9)) {
    case 0:
    case 1:
        return Check::operation("save as " + ownName,
                                [=](auto& it) { return it.saveAs(own, eighths, overwrite); });
    case 2:
        return Check::operation("save", [=](auto& it) { return it.save(eighths); });
    case 3:
        return Check::operation("rename " + anyName + " to " + own.name,
                                [=](auto& it) { return it.rename(any, own.name, overwrite); });
    case 4:
        return Check::operation("remove " + anyName, [=](auto& it) { return it.remove(any); });
    case 5:
        return Check::operation("undo remove", [](auto& it) { return it.undoRemove(); });
    case 6:
        return Check::operation("choose " + anyName, [=](auto& it) { return it.choose(any); });
    case 7:
        return Check::operation("write behind " + ownName, [=](auto& it) {
            return it.writeBehind(own, {eighths, "a note of " + std::to_string(eighths) + '\n'});
        });
    default:
        return Check::operation("remove behind " + ownName, [=](auto& it) { return it.removeBehind(own); });
    }
}

// Every operation waits for the disk.
template<class Presets>
ModelCheck<PresetsModel, Presets> presetCheck(int cases) {
    return {.draw = anyPresetOperation<Presets>, .cases = cases, .longest = 60};
}

TEST(PresetStoreModelTest, presetsAndTheirFilesAreThoseOfAMap) {
    expectHolds(presetCheck<StoredPresets>(8 * testScale()), std::int64_t{150} * testScale());
}

TEST(PresetStoreModelTest, rejectsStoresThatForgetReplaceCopyOrLag) {
    expectRejects(presetCheck<NotelessPresets>(20), "the note is lost");
    expectRejects(presetCheck<ReplacingPresets>(20), "what has taken the name is replaced");
    expectRejects(presetCheck<CopyingPresets>(20), "the old name stays");
    expectRejects(presetCheck<LatePresets>(20), "other programs' files are seen late");
}
#endif

} // namespace
} // namespace varno::test
