/// What the bar's buttons do, and what the bar shows.
#ifndef VARNO_SURROUND_BARCONTROL_H
#define VARNO_SURROUND_BARCONTROL_H

#include "Surround/BarLayout.h"
#include "Surround/BarState.h"
#include "Surround/Settings/EditedSettings.h"
#include "Surround/Settings/PresetStore.h"

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
};

/// Between the bar and what it is for: settings, presets, bypass. Nothing of windows. [main]
class BarControl {
public:
    /// @param edited, presets, owner outlive this object
    BarControl(EditedSettings& edited, PresetStore& presets, BarOwner& owner)
        : mEdited(edited),
          mPresets(presets),
          mOwner(owner) {}

    /// Does what a button is for. @return false for a button that is not of settings, presets or bypass
    bool press(BarLayout::Button button);
    /// Gives a preset's settings to the effect, as a step. @param preset a sound one of the store
    void load(const PresetEntry& preset);

    /// The state of the buttons that press() is for, and of the message.
    BarState state(const Instance& instance);
    /// A message stays until the next one.
    void showMessage(const std::string& message) { mMessage = message; }

private:
    void loadNeighbour(const PresetEntry* preset);

    EditedSettings& mEdited;
    PresetStore& mPresets;
    BarOwner& mOwner;
    std::string mMessage;
};

} // namespace varno

#endif
