#include "Surround/MouseGestures.h"

#include <gmock/gmock.h>

namespace varno::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MouseGesturesTest : public ::testing::Test {
protected:
    bool offer(MouseOffer::Kind kind, const std::string& id, std::uint32_t modifiers = 0) {
        return gestures.offered({kind, {id}, modifiers}, pointer, now);
    }
    bool down(const std::string& id, std::uint32_t modifiers = 0) {
        return offer(MouseOffer::Kind::kDown, id, modifiers);
    }
    bool drag(const std::string& id) { return offer(MouseOffer::Kind::kDrag, id); }
    bool up(const std::string& id) { return offer(MouseOffer::Kind::kUp, id); }
    void click(const std::string& id) {
        EXPECT_FALSE(down(id));
        EXPECT_FALSE(up(id));
    }

    std::vector<std::string> calls;
    std::optional<MouseGestures::Point> pointer = MouseGestures::Point{100, 100};
    MouseGestures::TimePoint now;
    MouseGestures gestures{{.reset = [this](const std::string& id) { calls.push_back("reset " + id); },
                            .openMenu = [this](const std::string& id) { calls.push_back("menu " + id); },
                            .giveBack = [this] { calls.emplace_back("give back"); }}};
};

TEST_F(MouseGesturesTest, LeavesClicksAndDragsToTheEditor) {
    EXPECT_FALSE(down("Gain"));
    EXPECT_EQ(gestures.dragged(), "Gain");
    EXPECT_FALSE(drag("Gain"));
    EXPECT_FALSE(up("Gain"));
    EXPECT_EQ(gestures.dragged(), std::nullopt);
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(MouseGesturesTest, TheSecondPressWithinTimeAndPlaceResetsAKnob) {
    click("Gain");
    now += MouseGestures::kDoubleClickTime;
    pointer = MouseGestures::Point{105, 95};
    EXPECT_TRUE(down("Gain"));
    EXPECT_TRUE(drag("Gain"));
    EXPECT_THAT(calls, IsEmpty()); // the button is still down
    EXPECT_TRUE(up("Gain"));
    EXPECT_THAT(calls, ElementsAre("reset Gain"));
    // A third press begins anew.
    EXPECT_FALSE(down("Gain"));
}

TEST_F(MouseGesturesTest, OtherSecondPressesAreTheEditors) {
    const auto second = [this](const std::string& first, const std::string& id, int x, int afterMs,
                               std::uint32_t modifiers) {
        pointer = MouseGestures::Point{100, 100};
        now += std::chrono::seconds(10);
        click(first);
        pointer = MouseGestures::Point{x, 100};
        now += std::chrono::milliseconds(afterMs);
        const bool isTaken = down(id, modifiers);
        up(id);
        return isTaken;
    };
    EXPECT_TRUE(second("Gain", "Gain", 100, 400, 0));
    EXPECT_FALSE(second("Gain", "Gain", 100, 401, 0));
    EXPECT_FALSE(second("Gain", "Gain", 106, 100, 0));
    EXPECT_FALSE(second("Gain", "Volume", 100, 100, 0));
    EXPECT_FALSE(second("Gain", "Gain", 100, 100, AAX_eModifiers_Option));
    EXPECT_FALSE(second("HP", "HP", 100, 100, 0)); // switches count every click
    EXPECT_FALSE(second("Ratio", "Ratio", 100, 100, 0));
    EXPECT_FALSE(second("PR1K", "PR1K", 100, 100, 0));
}

TEST_F(MouseGesturesTest, APressWithAKeyIsNoFirstOne) {
    EXPECT_FALSE(down("Gain", AAX_eModifiers_Option));
    EXPECT_FALSE(up("Gain"));
    EXPECT_FALSE(down("Gain"));
}

TEST_F(MouseGesturesTest, NothingIsADoubleClickWhereThePointerIsUnknown) {
    pointer.reset();
    click("Gain");
    EXPECT_FALSE(down("Gain"));
}

TEST_F(MouseGesturesTest, ARightClickOpensTheMenuWhenTheButtonIsUp) {
    EXPECT_TRUE(down("Mix", AAX_eModifiers_SecondaryButton));
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_TRUE(up("Mix"));
    EXPECT_THAT(calls, ElementsAre("menu Mix"));
    // Buttons that are no parameters have none.
    EXPECT_FALSE(down("PR2K", AAX_eModifiers_SecondaryButton));
    EXPECT_FALSE(up("PR2K"));
    EXPECT_EQ(calls.size(), 1U);
}

TEST_F(MouseGesturesTest, ACancelledDragGivesBackAndTakesTheRestButTheRelease) {
    gestures.cancel();
    EXPECT_THAT(calls, IsEmpty()); // there is nothing to cancel
    EXPECT_FALSE(down("Hot"));
    EXPECT_FALSE(drag("Hot"));
    EXPECT_TRUE(gestures.isDragging());
    gestures.cancel();
    EXPECT_FALSE(gestures.isDragging());
    EXPECT_THAT(calls, ElementsAre("give back"));
    EXPECT_TRUE(drag("Hot"));
    EXPECT_FALSE(up("Hot"));
    EXPECT_FALSE(down("Hot")); // a new gesture
    EXPECT_FALSE(drag("Hot"));
}

TEST_F(MouseGesturesTest, OffersOfSeveralParametersAreTheEditors) {
    EXPECT_FALSE(gestures.offered({MouseOffer::Kind::kDown, {"Gain", "Mix"}, 0}, pointer, now));
    EXPECT_FALSE(gestures.offered({MouseOffer::Kind::kDown, {}, 0}, pointer, now));
    EXPECT_EQ(gestures.dragged(), std::nullopt);
}

} // namespace
} // namespace varno::test
