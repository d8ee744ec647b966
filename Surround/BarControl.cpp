#include "Surround/BarControl.h"

#include "DemoGain_AlgFields.h"
#include "DemoGain_ParameterTable.h"
#include "Files/FileError.h"

#include <filesystem>
#include <utility>

namespace varno {

using BarLayout::Button;

BarControl::BarControl(EditedSettings& edited, PresetStore& presets, CompareSlots& slots, BarOwner& owner)
    : mEdited(edited),
      mPresets(presets),
      mSlots(slots),
      mOwner(owner) {
    mPresets.choose(mSlots.preset());
}

bool BarControl::press(Button button) {
    switch (button) {
    case Button::kBypass:
        mOwner.setBypassed(!mOwner.isBypassed());
        return true;
    case Button::kSlotA:
    case Button::kSlotB:
        if ((button == Button::kSlotB) != (mEdited.slot() == CompareSlot::kB)) {
            mEdited.changeSlot();
            mPresets.choose(mSlots.preset());
        }
        return true;
    case Button::kCopySlot:
        mEdited.copyToOtherSlot();
        showMessage(mEdited.slot() == CompareSlot::kA ? "copied A to B" : "copied B to A");
        return true;
    case Button::kUndo:
        showMessage("undone: " + mEdited.undoName());
        mEdited.undo();
        return true;
    case Button::kRedo:
        showMessage("done again: " + mEdited.redoName());
        mEdited.redo();
        return true;
    case Button::kPreviousPreset:
        mPresets.rescan();
        loadNeighbour(mPresets.previous());
        return true;
    case Button::kNextPreset:
        mPresets.rescan();
        loadNeighbour(mPresets.next());
        return true;
    case Button::kPresets:
    case Button::kQuality:
    case Button::kCurve:
    case Button::kSize:
        break;
    }
    return false;
}

void BarControl::chooseQuality(std::int32_t factor) {
    mOwner.setQuality(factor);
    showMessage("quality " + qualityText(mOwner.quality()));
}

void BarControl::loadNeighbour(const PresetEntry* preset) {
    if (preset == nullptr) {
        showMessage("there are no presets");
        return;
    }
    load(*preset);
}

void BarControl::load(const PresetEntry& preset) {
    // What follows may look for presets again.
    const std::filesystem::path path = preset.path;
    mEdited.setAll(preset.values, "Preset " + preset.name);
    mPresets.choose(path);
    keepPreset();
}

void BarControl::keepPreset() {
    const PresetEntry* const present = mPresets.present();
    mSlots.setPreset(present != nullptr ? present->path : std::filesystem::path());
}

void BarControl::change(const std::function<void()>& what, const std::string& done) {
    try {
        what();
        keepPreset();
        showMessage(done);
    } catch (const FileError& error) {
        showMessage(error.what());
    }
}

void BarControl::savePreset() {
    const PresetEntry* const present = mPresets.present();
    const std::string name = present != nullptr ? present->name : "";
    change([&] { mPresets.save(mEdited.values()); }, "saved preset " + name);
}

void BarControl::savePresetAs(const std::string& name) {
    const auto slash = name.rfind('/');
    const bool hasGroup = slash != std::string::npos;
    const std::string group = hasGroup ? name.substr(0, slash) : "";
    const std::string own = hasGroup ? name.substr(slash + 1) : name;
    change([&] { mPresets.saveAs(own, group, mEdited.values(), Overwrite::kRefuse); },
           "saved preset " + name);
}

void BarControl::renamePreset(const std::string& name) {
    const PresetEntry* const present = mPresets.present();
    if (present != nullptr && !present->isFactory && present->name != name) {
        const auto path = present->path;
        change([&] { mPresets.rename(path, name, Overwrite::kRefuse); }, "renamed to " + name);
    }
}

void BarControl::removePreset() {
    const PresetEntry* const present = mPresets.present();
    if (present != nullptr && !present->isFactory) {
        const PresetEntry removed = *present;
        change([&] { mPresets.remove(removed.path); },
               "deleted preset " + removed.name + "; the menu of presets brings it back");
    }
}

void BarControl::undoRemovePreset() {
    const std::string name = mPresets.removedName();
    change([&] { mPresets.undoRemove(); }, "brought back preset " + name);
}

bool BarControl::isModuleBypassed(const Instance& instance) {
    return instance.normalized(cDemoGain_MasterBypassID) > double{kAlgSwitchThreshold};
}

BarState BarControl::state(const Instance& instance) {
    BarState state;
    state.isBypassed = mOwner.isBypassed();
    state.isModuleBypassed = isModuleBypassed(instance);
    state.quality = mOwner.quality();
    state.isB = mEdited.slot() == CompareSlot::kB;
    state.canUndo = mEdited.canUndo();
    state.canRedo = mEdited.canRedo();
    if (const PresetEntry* const present = mPresets.present()) {
        state.preset = present->name;
        state.isPresetChanged = mPresets.isChanged(mEdited.values());
    }
    const unsigned turns = mEdited.autoGainTurns();
    state.message = std::exchange(mAutoGainTurns, turns) == turns ? mMessage : "matching volume";
    return state;
}

std::string BarControl::tip(Button button) {
    switch (button) {
    case Button::kUndo:
        return mEdited.undoName();
    case Button::kRedo:
        return mEdited.redoName();
    case Button::kQuality:
        return qualityText(mOwner.quality());
    default:
        return "";
    }
}

} // namespace varno
