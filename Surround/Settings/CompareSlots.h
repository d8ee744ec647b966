/// Two settings to compare, A and B.
#ifndef VARNO_SURROUND_SETTINGS_COMPARESLOTS_H
#define VARNO_SURROUND_SETTINGS_COMPARESLOTS_H

#include "Surround/Settings/SettingValues.h"
#include "Surround/Settings/StepHistory.h"

#include <array>
#include <filesystem>

namespace varno {

enum class CompareSlot { kA, kB };

/// The settings of A and B, each with a history of its own, and which of them the effect has. A plain value
/// that outlives windows and instances. [any]
class CompareSlots {
public:
    /// Both begin with these values; the effect has A.
    explicit CompareSlots(const SettingValues& values)
        : mSlots{Slot{values, {}, {}}, Slot{values, {}, {}}} {}

    /// The slot whose settings the effect has.
    CompareSlot present() const { return mPresent; }
    /// The steps of the present slot.
    StepHistory& history() { return at(mPresent).history; }
    const StepHistory& history() const { return mSlots[static_cast<std::size_t>(mPresent)].history; }
    /// The settings of the other slot.
    const SettingValues& otherValues() const { return mSlots[static_cast<std::size_t>(other())].values; }

    /// Keeps the effect's settings in the present slot and makes the other one present.
    /// @return its settings, which the effect is to receive
    const SettingValues& change(const SettingValues& now);
    /// The file of the preset that the present slot has received last, for the front end; empty for none.
    const std::filesystem::path& preset() const { return mSlots[static_cast<std::size_t>(mPresent)].preset; }
    void setPreset(const std::filesystem::path& preset) { at(mPresent).preset = preset; }
    /// Gives the effect's settings to the other slot, as a step of that slot, and the preset as well.
    void copyToOther(const SettingValues& now);

private:
    struct Slot {
        SettingValues values; // of the present slot: when it was left last
        StepHistory history;
        std::filesystem::path preset;
    };

    CompareSlot other() const { return mPresent == CompareSlot::kA ? CompareSlot::kB : CompareSlot::kA; }
    Slot& at(CompareSlot slot) { return mSlots[static_cast<std::size_t>(slot)]; }

    std::array<Slot, 2> mSlots;
    CompareSlot mPresent = CompareSlot::kA;
};

} // namespace varno

#endif
