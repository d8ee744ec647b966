/// The settings of an instance as a user edits them: steps, undo, redo, A and B.
#ifndef VARNO_SURROUND_SETTINGS_EDITEDSETTINGS_H
#define VARNO_SURROUND_SETTINGS_EDITEDSETTINGS_H

#include "Host/HostAutomation.h"
#include "Host/Instance.h"
#include "Surround/Settings/CompareSlots.h"
#include "Surround/Settings/SettingValues.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace varno {

/// Makes a step of everything that the instance's editor and the front end request, and sets what undo, redo
/// and the other slot bring back. All values go the way of an editor's requests, so that other listeners
/// (the ports of a host) receive them; values of the host's own automation are no steps.
///
/// - A gesture, from a touch that a user holds until everything is released, is one step with all that was
///   requested meanwhile. It is named by what it touched first: "Gain +3.0 dB".
/// - Requests without such a touch form one step until settle(): all settings are "Paste", the volume alone
///   is "Auto Gain", which a later one extends. While something can be redone, volumes of automatic gain are
///   no steps: they would end that.
/// - What happens while a NamedStep exists is one step of its name.
/// - What leaves every value as it was is no step. [main]
class EditedSettings final : private AutomationListener {
public:
    /// Name of the steps that automatic gain makes.
    static constexpr const char* kAutoGainName = "Auto Gain";

    /// @param instance outlives this object; its settings are those of the present slot
    /// @param slots outlives this object; a front end keeps it where an instance takes over from another
    EditedSettings(Instance& instance, CompareSlots& slots);
    EditedSettings(const EditedSettings&) = delete;
    EditedSettings& operator=(const EditedSettings&) = delete;
    ~EditedSettings() override;

    /// Answers what the editor has requested and ends steps that are no gesture under way. To be called once
    /// in each turn of the front end's event loop, in the place of Instance::idle(), and before steps are
    /// shown.
    void settle();

    /// The settings as they are now.
    SettingValues values() const { return settingsOf(mInstance); }
    /// Whether a gesture is under way.
    bool isTouched() const { return mTouches > 0; }
    /// Gives everything that the gesture under way has changed its value from before, so that it is no step
    /// unless it goes on. Nothing happens without a gesture.
    void takeBackGesture();
    /// How many turns of the event loop had volumes of automatic gain: grows while a volume is matched.
    unsigned autoGainTurns() const { return mAutoGainTurns; }

    /// Everything that is requested while this exists becomes one step. Such scopes do not nest.
    class NamedStep {
    public:
        /// @param edited outlives this object @param name as people read it: "Preset Drum Bus"
        /// @param series as in SettingStep
        NamedStep(EditedSettings& edited, std::string name, std::string series = {});
        NamedStep(const NamedStep&) = delete;
        NamedStep& operator=(const NamedStep&) = delete;
        ~NamedStep();

    private:
        EditedSettings& mEdited;
    };

    /// Whether changes of the same setting, one directly after the other, are one step.
    enum class Join { kNo, kYes };

    /// Sets a setting as a step named by the value: "Gain +3.0 dB". @param setting below kSettingCount
    void set(std::size_t setting, float normalized, Join join = Join::kNo);
    /// Sets a setting to its default as a step: "Reset of Attack".
    void reset(std::size_t setting);
    /// Sets all settings as a step. @param name "Preset Drum Bus"
    void setAll(const SettingValues& values, const std::string& name);

    bool canUndo();
    bool canRedo();
    /// What undo() or redo() takes back or does again; empty for nothing.
    std::string undoName();
    std::string redoName();
    /// @return whether there was a step
    bool undo();
    bool redo();

    CompareSlot slot() const { return mSlots.present(); }
    /// Whether the other slot has other settings.
    bool differsFromOther();
    /// The effect receives the settings of the other slot, which is the present one then. This is no step.
    void changeSlot();
    /// The other slot receives the present settings; this is a step of that slot.
    void copyToOtherSlot();

private:
    struct Edit {
        float before;
        float after;
    };

    void touched(const std::string& id) override;
    void valueRequested(const std::string& id, double normalized) override;
    void released(const std::string& id) override;

    float valueBefore(const std::string& id) const;
    void endStep();
    std::string stepName() const;
    std::string valueName(std::size_t setting, float value) const;
    std::optional<std::size_t> onlyEdit() const;
    bool isAllEdited() const;
    void apply(const SettingStep& step, float SettingChange::*value);

    Instance& mInstance;
    CompareSlots& mSlots;
    std::array<std::optional<Edit>, kSettingCount> mEdits; ///< Of the step that is not ended yet.
    std::optional<std::size_t> mGesture; ///< What the gesture under way touched first; else nothing.
    std::optional<std::size_t> mTouched; ///< The first touch since nothing was touched.
    int mTouches = 0;                    ///< Touches of settings that are not released.
    unsigned mAutoGainTurns = 0;
    std::string mName; ///< Of the scope that is open; empty for none.
    std::string mSeries;
    bool mIsRecording = true;
};

} // namespace varno

#endif
