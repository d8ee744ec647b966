// Steps, undo and redo in any sequence, against all the states that there were.
#include "Surround/Settings/StepHistory.h"
#include "Tests/Support/ModelCheck.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <deque>
#include <functional>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace varno::test {
namespace {

#if VARNO_HAS_PROPERTIES
using State = std::array<float, 4>;

// A setting that a step changes, and its value after it.
struct SetValue {
    std::size_t setting;
    float value;
};

std::string seenOf(const State& state, std::string_view undo, std::string_view redo) {
    std::ostringstream text;
    for (const float value : state) {
        text << value << ' ';
    }
    text << "undo \"" << undo << "\" redo \"" << redo << '"';
    return text.str();
}

State afterOf(State state, const std::vector<SetValue>& sets) {
    for (const SetValue& set : sets) {
        state[set.setting] = set.value;
    }
    return state;
}

// The states from the oldest that can be returned to on, each with the step that led to it.
class StatesModel {
public:
    std::string change(const std::vector<SetValue>& sets, const std::string& name,
                       const std::string& series) {
        const State after = afterOf(mStates[mNow].state, sets);
        if (after == mStates[mNow].state) {
            return seen();
        }
        const bool isLast = mNow + 1 == mStates.size();
        mStates.resize(mNow + 1);
        if (isLast && mNow > 0 && !series.empty() && mStates[mNow].series == series) {
            extend(after, name);
        } else {
            mStates.push_back({after, name, series});
        }
        if (mStates.size() > StepHistory::kMostSteps + 1) {
            mStates.pop_front();
        }
        mNow = mStates.size() - 1;
        return seen();
    }
    std::string undo() {
        mNow -= mNow > 0 ? 1 : 0;
        return seen();
    }
    std::string redo() {
        mNow += mNow + 1 < mStates.size() ? 1 : 0;
        return seen();
    }

private:
    struct Entry {
        State state{};
        std::string name;
        std::string series;
    };

    void extend(const State& after, const std::string& name) {
        if (after == mStates[mNow - 1].state) {
            mStates.pop_back();
        } else {
            mStates[mNow].state = after;
            mStates[mNow].name = name;
        }
    }
    std::string seen() const {
        return seenOf(mStates[mNow].state, mNow > 0 ? mStates[mNow].name : "",
                      mNow + 1 < mStates.size() ? mStates[mNow + 1].name : "");
    }

    std::deque<Entry> mStates{Entry()};
    std::size_t mNow = 0;
};

std::size_t deepest = 0;

// Settings whose steps the history keeps.
class SteppedSettings {
public:
    std::string change(const std::vector<SetValue>& sets, const std::string& name,
                       const std::string& series) {
        mUndone = 0;
        const State after = afterOf(mState, sets);
        SettingStep step{name, {}, series};
        for (std::size_t i = 0; i < after.size(); ++i) {
            step.changes.push_back({i, mState[i], after[i]});
        }
        mHistory.add(std::move(step));
        mState = after;
        return seen();
    }
    std::string undo() {
        if (const SettingStep* const step = mHistory.undo()) {
            for (const SettingChange& change : step->changes) {
                mState[change.setting] = change.before;
            }
            deepest = std::max(deepest, ++mUndone);
        }
        return seen();
    }
    std::string redo() {
        mUndone = 0;
        if (const SettingStep* const step = mHistory.redo()) {
            for (const SettingChange& change : step->changes) {
                mState[change.setting] = change.after;
            }
        }
        return seen();
    }

protected:
    std::string seen() const { return seenOf(mState, mHistory.undoName(), mHistory.redoName()); }

    State mState{};
    StepHistory mHistory;
    std::size_t mUndone = 0; // in a row
};

// A step that extends another one does not name it.
class NameKeepingSettings : public SteppedSettings {
public:
    std::string change(const std::vector<SetValue>& sets, const std::string& name,
                       const std::string& series) {
        const std::string first(series.empty() || mHistory.canRedo() ? "" : mHistory.undoName());
        return SteppedSettings::change(sets, first.empty() ? name : first, series);
    }
};

// Series are not known.
class SinglyUndoneSettings : public SteppedSettings {
public:
    std::string change(const std::vector<SetValue>& sets, const std::string& name, const std::string&) {
        return SteppedSettings::change(sets, name, {});
    }
};

// One setting is not set back.
class ForgetfulSettings : public SteppedSettings {
public:
    std::string undo() {
        const float kept = mState[3];
        SteppedSettings::undo();
        mState[3] = kept;
        return seen();
    }
};

std::string times(int count, const std::function<std::string()>& work) {
    std::string seen;
    for (int i = 0; i < count; ++i) {
        seen = work();
    }
    return seen;
}

template<class Subject>
using HistoryCheck = ModelCheck<StatesModel, Subject>;

template<class Subject>
typename HistoryCheck<Subject>::Operation anyChange() {
    std::vector<SetValue> sets(*rc::gen::inRange<std::size_t>(1, 4));
    for (SetValue& set : sets) {
        set = {*rc::gen::inRange<std::size_t>(0, 4), static_cast<float>(*rc::gen::inRange(0, 3))};
    }
    const std::string name = "step " + std::to_string(*rc::gen::inRange(0, 100));
    const std::string series = *rc::gen::element<std::string>("", "", "knob", "wheel");
    return HistoryCheck<Subject>::operation(name + ' ' + series,
                                            [=](auto& it) { return it.change(sets, name, series); });
}

// Up to `most` steps back or forth.
template<class Subject>
typename HistoryCheck<Subject>::Operation anyWay(int most) {
    const int count = *rc::gen::inRange(1, most + 1);
    if (*rc::gen::arbitrary<bool>()) {
        return HistoryCheck<Subject>::operation("undo " + std::to_string(count), [=](auto& it) {
            return times(count, [&] { return it.undo(); });
        });
    }
    return HistoryCheck<Subject>::operation(
        "redo " + std::to_string(count), [=](auto& it) { return times(count, [&] { return it.redo(); }); });
}

template<class Subject>
HistoryCheck<Subject> historyCheck(int cases) {
    return {.draw = [] { return *rc::gen::inRange(0, 3) > 0 ? anyChange<Subject>() : anyWay<Subject>(3); },
            .cases = cases,
            .longest = 300};
}

// Of steps in the hundreds, most are undone at times.
HistoryCheck<SteppedSettings> longHistoryCheck(int cases) {
    return {.draw =
                [] {
                    return *rc::gen::inRange(0, 400) > 0
                               ? anyChange<SteppedSettings>()
                               : anyWay<SteppedSettings>(2 * StepHistory::kMostSteps);
                },
            .cases = cases,
            .longest = 4000};
}

TEST(StepHistoryModelTest, stepsLeadBackAndForthThroughTheStates) {
    expectHolds(historyCheck<SteppedSettings>(40 * testScale()), std::int64_t{4500} * testScale());
}

TEST(StepHistoryModelTest, theOldestStepsAreDropped) {
    deepest = 0;
    expectHolds(longHistoryCheck(2 * testScale()), std::int64_t{2000} * testScale());
    EXPECT_GE(deepest, StepHistory::kMostSteps);
}

TEST(StepHistoryModelTest, rejectsHistoriesThatRenameDivideOrForget) {
    expectRejects(historyCheck<NameKeepingSettings>(40), "a series keeps its first name");
    expectRejects(historyCheck<SinglyUndoneSettings>(40), "series are not known");
    expectRejects(historyCheck<ForgetfulSettings>(40), "a setting is not set back");
}
#endif

} // namespace
} // namespace varno::test
