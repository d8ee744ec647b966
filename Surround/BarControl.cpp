#include "Surround/BarControl.h"

#include "DemoGain_AlgFields.h"
#include "DemoGain_ParameterTable.h"

namespace varno {

using BarLayout::Button;

bool BarControl::press(Button button) {
    switch (button) {
    case Button::kBypass:
        mOwner.setBypassed(!mOwner.isBypassed());
        return true;
    case Button::kSlotA:
    case Button::kSlotB:
        if ((button == Button::kSlotB) != (mEdited.slot() == CompareSlot::kB)) {
            mEdited.changeSlot();
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
    case Button::kCurve:
    case Button::kSize:
        break;
    }
    return false;
}

void BarControl::loadNeighbour(const PresetEntry* preset) {
    if (preset == nullptr) {
        showMessage("there are no presets");
        return;
    }
    load(*preset);
}

void BarControl::load(const PresetEntry& preset) {
    mEdited.setAll(preset.values, "Preset " + preset.name);
    mPresets.choose(preset.path);
}

BarState BarControl::state(const Instance& instance) {
    BarState state;
    state.isBypassed = mOwner.isBypassed();
    state.isModuleBypassed = instance.normalized(cDemoGain_MasterBypassID) > double{kAlgSwitchThreshold};
    state.isB = mEdited.slot() == CompareSlot::kB;
    state.canUndo = mEdited.canUndo();
    state.canRedo = mEdited.canRedo();
    if (const PresetEntry* const present = mPresets.present()) {
        state.preset = present->name;
        state.isPresetChanged = mPresets.isChanged(mEdited.values());
    }
    state.message = mMessage;
    return state;
}

} // namespace varno
