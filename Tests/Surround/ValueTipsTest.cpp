#include "Surround/ValueTips.h"

#include <gtest/gtest.h>

namespace varno::test {
namespace {

using std::chrono::milliseconds;

class ValueTipsTest : public ::testing::Test {
protected:
    ValueTips::Shown follow(std::optional<std::size_t> hovered, std::optional<std::size_t> held = {}) {
        return tips.follow(hovered, held, values, now);
    }

    ValueTips tips;
    SettingValues values{};
    ValueTips::TimePoint now;
};

TEST_F(ValueTipsTest, APointerThatRestsShowsWhatItIsOn) {
    EXPECT_EQ(follow(3).hovered, std::nullopt);
    now += ValueTips::kHoverTime - milliseconds(1);
    EXPECT_EQ(follow(3).hovered, std::nullopt);
    now += milliseconds(1);
    EXPECT_EQ(follow(3).hovered, 3U);
    EXPECT_EQ(follow(4).hovered, std::nullopt); // something else begins anew
    now += ValueTips::kHoverTime;
    EXPECT_EQ(follow(4).hovered, 4U);
    EXPECT_EQ(follow({}).hovered, std::nullopt);
}

TEST_F(ValueTipsTest, WhatIsHeldComesFirst) {
    follow(3);
    now += ValueTips::kHoverTime;
    const auto shown = follow(3, 5);
    EXPECT_EQ(shown.hovered, std::nullopt);
    EXPECT_EQ(shown.setting, 5U);
}

TEST_F(ValueTipsTest, AChangedSettingIsShownForAWhile) {
    EXPECT_EQ(follow({}).setting, std::nullopt); // the first values are no change
    values[7] = 0.5F;
    EXPECT_EQ(follow({}).setting, 7U);
    now += ValueTips::kChangeTime - milliseconds(1);
    EXPECT_EQ(follow({}).setting, 7U);
    now += milliseconds(1);
    EXPECT_EQ(follow({}).setting, std::nullopt);
}

TEST_F(ValueTipsTest, SeveralAtOnceAreNone) {
    follow({});
    values[7] = 0.5F;
    follow({});
    values[7] = 0.6F;
    values[8] = 0.6F;
    EXPECT_EQ(follow({}).setting, std::nullopt);
}

TEST_F(ValueTipsTest, ASettingCanBeAnnounced) {
    follow({});
    tips.announce(2, now);
    EXPECT_EQ(follow({}).setting, 2U);
    now += ValueTips::kChangeTime;
    EXPECT_EQ(follow({}).setting, std::nullopt);
}

} // namespace
} // namespace varno::test
