/// What a user has done to the settings, for undo and redo.
#ifndef VARNO_SURROUND_SETTINGS_STEPHISTORY_H
#define VARNO_SURROUND_SETTINGS_STEPHISTORY_H

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace varno {

/// What a step did to one setting. Values are normalized.
struct SettingChange {
    std::size_t setting = 0; ///< Place in SettingValues.
    float before = 0.0F;
    float after = 0.0F;

    bool operator==(const SettingChange&) const = default;
};

/// A step: the settings that it changed, each once, and no others.
struct SettingStep {
    std::string name; ///< What it did, for people: "Gain +3.0 dB", "Paste".
    std::vector<SettingChange> changes;
    /// Not empty: a step that directly follows one of the same series extends it.
    std::string series{};
};

/// Steps that can be undone, and behind them those that can be redone. A plain value. [any]
class StepHistory {
public:
    /// Of more steps, the oldest is dropped.
    static constexpr std::size_t kMostSteps = 500;

    /// Adds a step that was done. What could be redone is dropped. Changes between equal values are left out;
    /// a step without any is none. One that extends the last step of its series gives it its name; where
    /// nothing of both remains, that step is removed.
    void add(SettingStep step);

    bool canUndo() const { return mDone > 0; }
    bool canRedo() const { return mDone < mSteps.size(); }
    /// The name of the step that undo() or redo() takes; empty where there is none.
    std::string_view undoName() const;
    std::string_view redoName() const;

    /// Goes back by a step. @return the step, whose values before it are to be set; null where there is none.
    ///         Valid until the next add()
    const SettingStep* undo();
    /// Goes forward by a step. @return the step, whose values after it are to be set; else as above
    const SettingStep* redo();

private:
    bool extendLast(SettingStep& step);

    std::deque<SettingStep> mSteps;
    std::size_t mDone = 0; ///< Steps from the front that are done.
};

} // namespace varno

#endif
