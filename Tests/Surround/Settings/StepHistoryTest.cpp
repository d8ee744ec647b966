#include "Surround/Settings/StepHistory.h"

#include <gtest/gtest.h>

namespace varno::test {
namespace {

SettingStep step(const std::string& name, float before, float after, std::size_t setting = 0) {
    return {name, {{setting, before, after}}};
}

SettingStep stepOf(const std::string& series, const std::string& name, float before, float after,
                   std::size_t setting = 0) {
    return {name, {{setting, before, after}}, series};
}

TEST(StepHistory, isEmptyAtFirst) {
    StepHistory history;
    EXPECT_FALSE(history.canUndo());
    EXPECT_FALSE(history.canRedo());
    EXPECT_EQ(history.undoName(), "");
    EXPECT_EQ(history.redoName(), "");
    EXPECT_EQ(history.undo(), nullptr);
    EXPECT_EQ(history.redo(), nullptr);
}

TEST(StepHistory, goesBackAndForward) {
    StepHistory history;
    history.add(step("first", 0.0F, 0.25F));
    history.add(step("second", 0.25F, 0.5F));
    EXPECT_EQ(history.undoName(), "second");
    EXPECT_EQ(history.redoName(), "");
    const SettingStep* undone = history.undo();
    ASSERT_NE(undone, nullptr);
    EXPECT_EQ(undone->name, "second");
    EXPECT_EQ(undone->changes.front(), (SettingChange{0, 0.25F, 0.5F}));
    EXPECT_EQ(history.undoName(), "first");
    EXPECT_EQ(history.redoName(), "second");
    EXPECT_EQ(history.undo()->name, "first");
    EXPECT_EQ(history.undo(), nullptr);
    EXPECT_EQ(history.redoName(), "first");
    EXPECT_EQ(history.redo()->name, "first");
    EXPECT_EQ(history.redo()->name, "second");
    EXPECT_EQ(history.redo(), nullptr);
}

TEST(StepHistory, aNewStepDropsWhatCouldBeRedone) {
    StepHistory history;
    history.add(step("first", 0.0F, 0.25F));
    history.add(step("second", 0.25F, 0.5F));
    history.undo();
    history.add(step("third", 0.25F, 1.0F));
    EXPECT_FALSE(history.canRedo());
    EXPECT_EQ(history.undo()->name, "third");
    EXPECT_EQ(history.undo()->name, "first");
    EXPECT_FALSE(history.canUndo());
}

TEST(StepHistory, keepsNoChangeBetweenEqualValues) {
    StepHistory history;
    history.add(step("idle", 0.5F, 0.5F));
    EXPECT_FALSE(history.canUndo());
    history.add({"half", {{0, 0.5F, 0.5F}, {3, 0.0F, 1.0F}}});
    EXPECT_EQ(history.undo()->changes, (std::vector<SettingChange>{{3, 0.0F, 1.0F}}));
    history.add(step("idle", 0.5F, 0.5F));
    EXPECT_TRUE(history.canRedo()) << "what is no step drops nothing";
}

TEST(StepHistory, dropsTheOldestOfMoreThanItKeeps) {
    static_assert(StepHistory::kMostSteps >= 200);
    StepHistory history;
    for (std::size_t i = 0; i < StepHistory::kMostSteps + 2; ++i) {
        history.add(step(std::to_string(i), 0.0F, 1.0F));
    }
    std::size_t count = 0;
    std::string last;
    while (const SettingStep* undone = history.undo()) {
        last = undone->name;
        ++count;
    }
    EXPECT_EQ(count, StepHistory::kMostSteps);
    EXPECT_EQ(last, "2");
    while (const SettingStep* redone = history.redo()) {
        last = redone->name;
    }
    EXPECT_EQ(last, std::to_string(StepHistory::kMostSteps + 1));
}

TEST(StepHistory, aStepExtendsTheLastOneOfItsSeries) {
    StepHistory history;
    history.add(step("before", 0.0F, 0.1F));
    history.add(stepOf("s", "one", 0.1F, 0.2F));
    history.add(stepOf("s", "two", 0.2F, 0.3F));
    history.add(stepOf("s", "three", 0.0F, 0.5F, 4));
    EXPECT_EQ(history.undoName(), "three");
    EXPECT_EQ(history.undo()->changes, (std::vector<SettingChange>{{0, 0.1F, 0.3F}, {4, 0.0F, 0.5F}}));
    EXPECT_EQ(history.undoName(), "before");
}

TEST(StepHistory, noStepExtendsOneOfAnotherSeriesOrOneThatIsUndone) {
    StepHistory history;
    history.add(stepOf("s", "one", 0.1F, 0.2F));
    history.add(stepOf("t", "two", 0.2F, 0.3F));
    history.add(stepOf("s", "three", 0.3F, 0.4F));
    history.add(step("four", 0.4F, 0.5F));
    history.add(step("five", 0.5F, 0.6F));
    EXPECT_EQ(history.undo()->name, "five");
    EXPECT_EQ(history.undo()->name, "four");
    history.add(stepOf("s", "six", 0.4F, 0.7F));
    EXPECT_EQ(history.undo()->name, "six");
    EXPECT_EQ(history.undo()->name, "three") << "the user has gone back to it: a new step is one of its own";
    EXPECT_EQ(history.undo()->name, "two");
    EXPECT_EQ(history.undo()->name, "one");
}

TEST(StepHistory, aSeriesThatReturnsToItsStartIsNoStep) {
    StepHistory history;
    history.add(step("before", 0.0F, 0.1F));
    history.add(stepOf("s", "one", 0.1F, 0.2F));
    history.add(stepOf("s", "two", 0.2F, 0.1F));
    EXPECT_EQ(history.undoName(), "before");
    EXPECT_FALSE(history.canRedo());
    history.undo();
    EXPECT_FALSE(history.canUndo());
}

} // namespace
} // namespace varno::test
