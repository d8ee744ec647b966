#include "Surround/FocusList.h"

#include <gmock/gmock.h>
#include <iterator>

namespace varno::test {
namespace {

using testing::ElementsAre;

std::vector<std::string> controlsOf(const FocusList& list) {
    std::vector<std::string> ids;
    for (const FocusItem& item : list.items()) {
        if (item.control != nullptr) {
            ids.emplace_back(item.control->mID);
        }
    }
    return ids;
}

TEST(FocusList, ControlsAreInReadingOrder) {
    EXPECT_THAT(controlsOf(FocusList(false)),
                ElementsAre("Gain", "HP", "Band", "Atk", "Rls", "ASw", "Volume", "HSw", "UK", "Hot", "Ratio",
                            "LinkSw", "Mix", "PR1K", "PR2K"));
}

TEST(FocusList, TheBarComesFirst) {
    const FocusList list(true);
    ASSERT_EQ(list.items().size(), std::size(BarLayout::kButtons) + 15);
    for (std::size_t i = 0; i < std::size(BarLayout::kButtons); ++i) {
        EXPECT_EQ(list.items()[i].button, &BarLayout::kButtons[i]);
    }
}

TEST(FocusList, GoesAroundInBothDirections) {
    FocusList list(false);
    EXPECT_EQ(list.present(), nullptr);
    list.move(false);
    EXPECT_EQ(list.present(), &list.items().back());
    list.move(true);
    EXPECT_EQ(list.present(), &list.items().front());
    list.move(true);
    EXPECT_EQ(list.present(), &list.items()[1]);
    list.move(false);
    list.move(false);
    EXPECT_EQ(list.present(), &list.items().back());
    list.clear();
    EXPECT_EQ(list.present(), nullptr);
}

TEST(FocusList, ChoosesByAnyRule) {
    FocusList list(true);
    EXPECT_TRUE(list.choose([](const FocusItem& item) { return item.name() == "Stereo Link"; }));
    EXPECT_STREQ(list.present()->control->mID, "LinkSw");
    EXPECT_FALSE(list.choose([](const FocusItem&) { return false; }));
    EXPECT_STREQ(list.present()->control->mID, "LinkSw");
}

TEST(FocusList, EverythingHasANameAndASentenceOfHelp) {
    const FocusList list(true);
    for (const FocusItem& item : list.items()) {
        EXPECT_FALSE(item.name().empty());
        EXPECT_THAT(item.help(), testing::EndsWith(".")) << item.name();
    }
}

} // namespace
} // namespace varno::test
