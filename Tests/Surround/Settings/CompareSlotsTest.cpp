#include "Surround/Settings/CompareSlots.h"

#include <gtest/gtest.h>

namespace varno::test {
namespace {

SettingValues all(float value) {
    SettingValues values{};
    values.fill(value);
    return values;
}

TEST(CompareSlots, bothBeginWithTheSame) {
    CompareSlots slots(all(0.25F));
    EXPECT_EQ(slots.present(), CompareSlot::kA);
    EXPECT_EQ(slots.otherValues(), all(0.25F));
    EXPECT_EQ(slots.change(all(0.25F)), all(0.25F));
    EXPECT_EQ(slots.present(), CompareSlot::kB);
}

TEST(CompareSlots, eachKeepsItsSettings) {
    CompareSlots slots(all(0.0F));
    EXPECT_EQ(slots.change(all(0.5F)), all(0.0F));
    EXPECT_EQ(slots.otherValues(), all(0.5F));
    EXPECT_EQ(slots.change(all(1.0F)), all(0.5F));
    EXPECT_EQ(slots.present(), CompareSlot::kA);
    EXPECT_EQ(slots.otherValues(), all(1.0F));
}

TEST(CompareSlots, eachHasItsOwnHistory) {
    CompareSlots slots(all(0.0F));
    slots.history().add({"of A", {{0, 0.0F, 1.0F}}});
    slots.change(all(0.0F));
    EXPECT_FALSE(slots.history().canUndo());
    slots.history().add({"of B", {{0, 0.0F, 1.0F}}});
    slots.change(all(0.0F));
    EXPECT_EQ(slots.history().undoName(), "of A");
    EXPECT_EQ(std::as_const(slots).history().undoName(), "of A");
}

TEST(CompareSlots, aCopyIsAStepOfTheOtherSlot) {
    CompareSlots slots(all(0.0F));
    SettingValues now = all(0.0F);
    now[3] = 0.75F;
    slots.copyToOther(now);
    EXPECT_EQ(slots.present(), CompareSlot::kA);
    EXPECT_FALSE(slots.history().canUndo());
    EXPECT_EQ(slots.otherValues(), now);
    slots.change(now);
    EXPECT_EQ(slots.history().undoName(), "Copy of A");
    EXPECT_EQ(slots.history().undo()->changes, (std::vector<SettingChange>{{3, 0.0F, 0.75F}}));
    slots.copyToOther(all(1.0F));
    slots.change(now);
    EXPECT_EQ(slots.history().undoName(), "Copy of B");
}

TEST(CompareSlots, eachHasItsPreset) {
    CompareSlots slots(all(0.0F));
    EXPECT_EQ(slots.preset(), "");
    slots.setPreset("one");
    slots.change(all(0.0F));
    EXPECT_EQ(slots.preset(), "");
    slots.setPreset("two");
    slots.change(all(0.0F));
    EXPECT_EQ(slots.preset(), "one");
    slots.copyToOther(all(0.0F));
    slots.change(all(0.0F));
    EXPECT_EQ(slots.preset(), "one");
}

TEST(CompareSlots, aCopyOfEqualSettingsIsNoStep) {
    CompareSlots slots(all(0.5F));
    slots.copyToOther(all(0.5F));
    slots.change(all(0.5F));
    EXPECT_FALSE(slots.history().canUndo());
}

} // namespace
} // namespace varno::test
