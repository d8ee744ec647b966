#include "Surround/Settings/StepHistory.h"

#include <algorithm>
#include <utility>

namespace varno {
namespace {

void removeIdle(std::vector<SettingChange>& changes) {
    std::erase_if(changes, [](const SettingChange& change) { return change.before == change.after; });
}

} // namespace

void StepHistory::add(SettingStep step) {
    removeIdle(step.changes);
    if (step.changes.empty()) {
        return;
    }
    const bool hadRedo = canRedo();
    mSteps.resize(mDone);
    if (!hadRedo && extendLast(step)) {
        return;
    }
    mSteps.push_back(std::move(step));
    if (mSteps.size() > kMostSteps) {
        mSteps.pop_front();
    }
    mDone = mSteps.size();
}

// Returns whether there was a step of the same series.
bool StepHistory::extendLast(SettingStep& step) {
    if (step.series.empty() || mSteps.empty() || mSteps.back().series != step.series) {
        return false;
    }
    SettingStep& last = mSteps.back();
    for (const SettingChange& change : step.changes) {
        const auto found = std::ranges::find(last.changes, change.setting, &SettingChange::setting);
        if (found == last.changes.end()) {
            last.changes.push_back(change);
        } else {
            found->after = change.after;
        }
    }
    last.name = std::move(step.name);
    removeIdle(last.changes);
    if (last.changes.empty()) {
        mSteps.pop_back();
    }
    mDone = mSteps.size();
    return true;
}

std::string_view StepHistory::undoName() const {
    return canUndo() ? std::string_view(mSteps[mDone - 1].name) : std::string_view();
}

std::string_view StepHistory::redoName() const {
    return canRedo() ? std::string_view(mSteps[mDone].name) : std::string_view();
}

const SettingStep* StepHistory::undo() {
    return canUndo() ? &mSteps[--mDone] : nullptr;
}

const SettingStep* StepHistory::redo() {
    return canRedo() ? &mSteps[mDone++] : nullptr;
}

} // namespace varno
