#include "Surround/Settings/EditedSettings.h"

#include "Host/InstanceHost.h"
#include "Surround/Settings/TrueValue.h"

#include <algorithm>
#include <utility>

namespace varno {

EditedSettings::EditedSettings(Instance& instance, CompareSlots& slots)
    : mInstance(instance),
      mSlots(slots) {
    mInstance.host().automation().addListener(*this);
}

EditedSettings::~EditedSettings() {
    mInstance.host().automation().removeListener(*this);
}

// Recording.

// The data model touches and releases a parameter around every value that it requests. A touch within a touch
// is therefore what distinguishes a gesture of a user from a value alone.
void EditedSettings::touched(const std::string& id) {
    const auto setting = settingOf(id);
    if (!setting) {
        return;
    }
    ++mTouches;
    if (mTouches == 1) {
        mTouched = setting;
    } else if (!mGesture && mName.empty()) {
        endStep();
        mGesture = mTouched;
    }
}

void EditedSettings::valueRequested(const std::string& id, double normalized) {
    const auto setting = settingOf(id);
    if (!setting || !mIsRecording) {
        return;
    }
    auto& edit = mEdits[*setting];
    if (!edit) {
        edit = Edit{valueBefore(id), 0.0F};
    }
    edit->after = static_cast<float>(normalized);
}

void EditedSettings::released(const std::string& id) {
    if (!settingOf(id) || mTouches == 0) {
        return;
    }
    --mTouches;
    if (mTouches == 0 && mGesture) {
        endStep();
        mGesture.reset();
    }
}

// That of a request that is not answered yet, else the instance's.
float EditedSettings::valueBefore(const std::string& id) const {
    const auto requested = mInstance.host().automation().requestedValue(id);
    return static_cast<float>(requested ? *requested : mInstance.normalized(id));
}

void EditedSettings::endStep() {
    SettingStep step{stepName(), {}, mSeries};
    const bool isAutoGain = step.name == kAutoGainName;
    if (isAutoGain) {
        step.series = kAutoGainName;
        ++mAutoGainTurns;
    }
    for (std::size_t i = 0; i < mEdits.size(); ++i) {
        if (mEdits[i]) {
            step.changes.push_back({i, mEdits[i]->before, mEdits[i]->after});
        }
    }
    mEdits = {};
    if (!isAutoGain || !mSlots.history().canRedo()) {
        mSlots.history().add(std::move(step));
    }
}

std::string EditedSettings::stepName() const {
    if (!mName.empty()) {
        return mName;
    }
    if (mGesture && mEdits[*mGesture]) {
        return valueName(*mGesture, mEdits[*mGesture]->after);
    }
    if (isAllEdited()) {
        return "Paste";
    }
    const auto only = onlyEdit();
    if (!only) {
        return "Several Settings";
    }
    return settingID(*only) == std::string_view(cDemoGain_VolumeID) ? kAutoGainName
                                                                    : valueName(*only, mEdits[*only]->after);
}

std::string EditedSettings::valueName(std::size_t setting, float value) const {
    return settingName(setting) + ' ' +
           spokenValue(settingID(setting), double{value}, unitSettings(mInstance));
}

std::optional<std::size_t> EditedSettings::onlyEdit() const {
    const auto isEdited = [](const std::optional<Edit>& edit) { return edit.has_value(); };
    if (std::ranges::count_if(mEdits, isEdited) != 1) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(std::ranges::find_if(mEdits, isEdited) - mEdits.begin());
}

bool EditedSettings::isAllEdited() const {
    return std::ranges::all_of(mEdits, [](const std::optional<Edit>& edit) { return edit.has_value(); });
}

void EditedSettings::settle() {
    mInstance.idle();
    if (!mGesture && mName.empty()) {
        endStep();
    }
}

// The requests belong to the gesture, which then has changed nothing.
void EditedSettings::takeBackGesture() {
    if (!mGesture) {
        return;
    }
    mInstance.idle();
    SettingValues before = values();
    for (std::size_t i = 0; i < mEdits.size(); ++i) {
        before.at(i) = mEdits.at(i) ? mEdits.at(i)->before : before.at(i);
    }
    requestSettings(mInstance, before);
}

// Named steps.

EditedSettings::NamedStep::NamedStep(EditedSettings& edited, std::string name, std::string series)
    : mEdited(edited) {
    mEdited.mInstance.idle();
    mEdited.endStep();
    mEdited.mName = std::move(name);
    mEdited.mSeries = std::move(series);
}

EditedSettings::NamedStep::~NamedStep() {
    mEdited.mInstance.idle();
    mEdited.endStep();
    mEdited.mName.clear();
    mEdited.mSeries.clear();
}

void EditedSettings::set(std::size_t setting, float normalized, Join join) {
    const NamedStep step(*this, valueName(setting, normalized), join == Join::kYes ? settingID(setting) : "");
    requestSetting(mInstance, setting, normalized);
}

void EditedSettings::reset(std::size_t setting) {
    const NamedStep step(*this, "Reset of " + settingName(setting));
    requestSetting(mInstance, setting, defaultSettings(mInstance).at(setting));
}

void EditedSettings::setAll(const SettingValues& values, const std::string& name) {
    const NamedStep step(*this, name);
    requestSettings(mInstance, values);
}

// Undo and redo.

bool EditedSettings::canUndo() {
    settle();
    return mSlots.history().canUndo();
}

bool EditedSettings::canRedo() {
    settle();
    return mSlots.history().canRedo();
}

std::string EditedSettings::undoName() {
    settle();
    return std::string(mSlots.history().undoName());
}

std::string EditedSettings::redoName() {
    settle();
    return std::string(mSlots.history().redoName());
}

// A gesture under way ends its step here, and what follows of it is another one.
bool EditedSettings::undo() {
    settle();
    endStep();
    const SettingStep* const step = mSlots.history().undo();
    if (step != nullptr) {
        apply(*step, &SettingChange::before);
    }
    return step != nullptr;
}

bool EditedSettings::redo() {
    settle();
    endStep();
    const SettingStep* const step = mSlots.history().redo();
    if (step != nullptr) {
        apply(*step, &SettingChange::after);
    }
    return step != nullptr;
}

void EditedSettings::apply(const SettingStep& step, float SettingChange::*value) {
    SettingValues values = this->values();
    for (const SettingChange& change : step.changes) {
        values.at(change.setting) = change.*value;
    }
    mIsRecording = false;
    requestSettings(mInstance, values);
    mIsRecording = true;
}

// A and B.

bool EditedSettings::differsFromOther() {
    settle();
    return !areSameSettings(values(), mSlots.otherValues());
}

void EditedSettings::changeSlot() {
    settle();
    endStep();
    const SettingValues& other = mSlots.change(values());
    mIsRecording = false;
    requestSettings(mInstance, other);
    mIsRecording = true;
}

void EditedSettings::copyToOtherSlot() {
    settle();
    mSlots.copyToOther(values());
}

} // namespace varno
