/// What the bar's buttons do, and what the bar shows.
#ifndef VARNO_SURROUND_BARCONTROL_H
#define VARNO_SURROUND_BARCONTROL_H

#include "Surround/BarLayout.h"
#include "Surround/BarState.h"
#include "Surround/Settings/EditedSettings.h"
#include "Surround/Settings/PresetStore.h"
#include "Surround/Settings/QualityText.h"

#include <cstdint>
#include <functional>
#include <string>

namespace varno {

/// What a front end does for the bar. [main]
class BarOwner {
public:
    virtual ~BarOwner() = default;
    /// Whether the sound passes unchanged; not the module's own bypass.
    virtual bool isBypassed() const = 0;
    virtual void setBypassed(bool isBypassed) = 0;
    /// The quality of the sound. It belongs to the front end: it is in no setting, and no step of undo.
    virtual Quality quality() const = 0;
    /// @param factor of kOversamplingFactors; the highest that fits the sample rate is used
    virtual void setQuality(std::int32_t factor) = 0;
};

/// Between the bar and what it is for: settings, presets, bypass. Nothing of windows. [main]
class BarControl {
public:
    /// @param edited, presets, slots, owner outlive this object; the slots are those of edited
    BarControl(EditedSettings& edited, PresetStore& presets, CompareSlots& slots, BarOwner& owner);

    /// Does what a button is for. @return false for a button that is not of settings, presets or bypass
    bool press(BarLayout::Button button);
    /// Gives a preset's settings to the effect, as a step. @param preset a sound one of the store
    void load(const PresetEntry& preset);

    Quality quality() const { return mOwner.quality(); }
    /// Changes the quality, and shows what is used of it and how late the sound comes.
    void chooseQuality(std::int32_t factor);

    /// Saves over the present preset.
    void savePreset();
    /// Saves under a name, "NAME" or "GROUP/NAME"; never over another preset.
    void savePresetAs(const std::string& name);
    /// Gives the present preset of the user's another name.
    void renamePreset(const std::string& name);
    /// Removes it; undoRemovePreset() brings it back.
    void removePreset();
    void undoRemovePreset();

    /// Whether the module's own bypass is on. @param instance of Varno-S
    static bool isModuleBypassed(const Instance& instance);
    /// The state of the buttons that press() is for, and of the message.
    BarState state(const Instance& instance);
    /// What a button would do beyond its help: "Gain +3.0 dB" is undone; empty for nothing.
    std::string tip(BarLayout::Button button);
    /// A message stays until the next one.
    void showMessage(const std::string& message) { mMessage = message; }

private:
    void loadNeighbour(const PresetEntry* preset);
    void keepPreset();
    /// Does what changes a file, and shows what was done or why that failed.
    void change(const std::function<void()>& what, const std::string& done);

    EditedSettings& mEdited;
    PresetStore& mPresets;
    CompareSlots& mSlots; ///< Keep which preset each has received.
    BarOwner& mOwner;
    std::string mMessage;
    unsigned mAutoGainTurns = 0; ///< At the last state().
};

} // namespace varno

#endif
