#include "Window/PopupMenu.h"

#include "Tests/Window/PaintedPicture.h"
#include "Tests/Window/WindowFixture.h"
#include "Window/InputArea.h"

#include <X11/keysym.h>

#include <optional>
#include <string>

namespace varno::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr WindowArea kMenuAnchor{120, 120, 60, 20};
constexpr std::size_t kManyRows = 100;

using Choice = std::optional<std::size_t>;

MenuItem rowItem(const std::string& text) {
    return {MenuItem::Kind::kRow, text, {}, MenuItem::Mark::kNone, true};
}

// Row 2 cannot be chosen.
std::vector<MenuItem> someRows() {
    std::vector<MenuItem> items = {rowItem("Reset"), rowItem("Type a value"), rowItem("Paste"),
                                   rowItem("Undo"), rowItem("Copy")};
    items[2].isEnabled = false;
    return items;
}

class PopupMenuTest : public WindowFixture {
protected:
    PopupMenuTest() {
        mMenu.emplace(mConnection, mShell, PanelStyle());
        settle();
    }

    void open(Choice highlighted = {}) {
        mPanel.emplace(someRows(), PanelStyle(), 520);
        mMenu->open(
            someRows(), kMenuAnchor, [this](Choice choice) { mChoices.push_back(choice); }, highlighted);
        settle();
    }
    void openLong() {
        std::vector<MenuItem> items;
        for (std::size_t i = 0; i < kManyRows; ++i) {
            items.push_back(rowItem("Preset " + std::to_string(i)));
        }
        mPanel.emplace(items, PanelStyle(), 520);
        mMenu->open(items, {120, 400, 60, 20}, [this](Choice choice) { mChoices.push_back(choice); });
        settle();
    }

    // The middle of a row, on the screen, in the menu below its anchor.
    Place placeOf(std::size_t row) const {
        const WindowArea area = mPanel->areaOf(row);
        return {kMenuAnchor.x + 30, kMenuAnchor.bottom() + area.y + area.height / 2};
    }
    void point(Place place) {
        mPointer.move(place);
        settle();
    }
    void click() {
        mPointer.press();
        mPointer.release();
        settle();
    }
    Choice after(std::initializer_list<xcb_keysym_t> keys) {
        for (const xcb_keysym_t key : keys) {
            EXPECT_TRUE(mMenu->key(key));
        }
        return mMenu->highlighted();
    }
    xcb_window_t window() const { return mPerson.children(mPerson.screen().root).back(); }
    Area area() const {
        const XReply<xcb_get_geometry_reply_t> reply(xcb_get_geometry_reply(
            mPerson.connection(), xcb_get_geometry(mPerson.connection(), window()), nullptr));
        return {reply->x, reply->y, reply->width, reply->height};
    }
    Picture shown() const {
        const Area size = area();
        return Picture::ofWindow(mPerson, window(), {0, 0, size.width, size.height});
    }

    std::vector<Choice> mChoices;
    std::optional<MenuPanel> mPanel{std::in_place, someRows(), PanelStyle(), 520}; // as that of the menu
    std::optional<PopupMenu> mMenu;
};

TEST_F(PopupMenuTest, OpensBelowItsAnchorAsLargeAsItsEntries) {
    EXPECT_FALSE(mMenu->isOpen());
    open();
    EXPECT_TRUE(mMenu->isOpen());
    EXPECT_EQ(area(), (Area{120, 140, mPanel->size().width, mPanel->size().height}));
    const Picture picture = shown();
    EXPECT_EQ(picture.at({0, 0}), PanelStyle().edge);
    EXPECT_EQ(picture.at({1, 1}), PanelStyle().panel);
    EXPECT_EQ(picture.at({picture.width() - 2, picture.height() - 2}), PanelStyle().panel);
    EXPECT_EQ(picture.at({picture.width() - 1, 5}), PanelStyle().edge);
    EXPECT_EQ(picture.at({5, picture.height() - 1}), PanelStyle().edge);
    EXPECT_THAT(mChoices, IsEmpty());
}

TEST_F(PopupMenuTest, AClickChooses) {
    open();
    point(placeOf(1));
    EXPECT_EQ(mMenu->highlighted(), 1U);
    const WindowArea row = mPanel->areaOf(1);
    EXPECT_EQ(shown().at({3, row.y + row.height / 2}), PanelStyle().highlight);
    click();
    EXPECT_THAT(mChoices, ElementsAre(Choice(1)));
    EXPECT_FALSE(mMenu->isOpen());
    EXPECT_THAT(viewEvents(), IsEmpty());
}

TEST_F(PopupMenuTest, WhatCannotBeChosenIsNot) {
    open();
    point(placeOf(2));
    EXPECT_EQ(mMenu->highlighted(), std::nullopt);
    click();
    EXPECT_THAT(mChoices, IsEmpty());
    EXPECT_TRUE(mMenu->isOpen());
    EXPECT_TRUE(mMenu->key(XK_Return)); // nothing is highlighted
    EXPECT_TRUE(mMenu->isOpen());
    point(placeOf(3));
    EXPECT_EQ(mMenu->highlighted(), 3U);
    point({5, 5});
    EXPECT_EQ(mMenu->highlighted(), std::nullopt);
}

TEST_F(PopupMenuTest, AClickBesideItDismisses) {
    open();
    point({5, 5});
    click();
    EXPECT_THAT(mChoices, ElementsAre(std::nullopt));
    mMenu->tick();
    mMenu->dismiss();
    EXPECT_THAT(mChoices, ElementsAre(std::nullopt)); // once
}

// Opened by a press of this program's own window, which has the pointer then.
TEST_F(PopupMenuTest, PressDragAndReleaseChoose) {
    InputArea button(mConnection, mShell, [this](const ButtonEvent& event) {
        if (event.isDown) {
            open();
        }
    });
    button.setArea({20, 20, 60, 20}); // the anchor
    button.show();
    settle();
    point(onScreen({30, 30}));
    mPointer.press();
    settle();
    ASSERT_TRUE(mMenu->isOpen());
    for (const std::size_t row : {0U, 1U, 3U}) {
        point(placeOf(row));
        EXPECT_EQ(mMenu->highlighted(), row);
    }
    mPointer.release();
    settle();
    EXPECT_THAT(mChoices, ElementsAre(Choice(3)));
}

TEST_F(PopupMenuTest, AClickOpensAndAnotherChooses) {
    InputArea button(mConnection, mShell, [this](const ButtonEvent& event) {
        if (event.isDown) {
            open();
        }
    });
    button.setArea({20, 20, 60, 20});
    button.show();
    settle();
    point(onScreen({30, 30}));
    click();
    EXPECT_TRUE(mMenu->isOpen());
    point(placeOf(3));
    click();
    EXPECT_THAT(mChoices, ElementsAre(Choice(3)));
}

// A press within may move before its release.
TEST_F(PopupMenuTest, ADragWithinChoosesWhereItEnds) {
    open();
    point(placeOf(3));
    mPointer.press();
    settle();
    point(placeOf(4));
    mPointer.release();
    settle();
    EXPECT_THAT(mChoices, ElementsAre(Choice(4)));
}

TEST_F(PopupMenuTest, AReleaseThatWasNoDragLeavesItOpen) {
    point({5, 5});
    open();
    // The press was before the menu opened, the pointer lies over a row.
    const auto send = [&](std::uint8_t kind, Place place) {
        xcb_button_press_event_t event{};
        event.response_type = kind;
        event.detail = 1;
        event.event = window();
        event.root_x = static_cast<std::int16_t>(place.x);
        event.root_y = static_cast<std::int16_t>(place.y);
        xcb_send_event(mPerson.connection(), 0, window(), XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<const char*>(&event));
        settle();
    };
    send(XCB_MOTION_NOTIFY, placeOf(0));
    send(XCB_BUTTON_RELEASE, placeOf(0));
    EXPECT_TRUE(mMenu->isOpen());
    send(XCB_MOTION_NOTIFY, placeOf(0) + Place{4, 0});
    send(XCB_BUTTON_RELEASE, placeOf(0) + Place{4, 0});
    EXPECT_TRUE(mMenu->isOpen());
    send(XCB_MOTION_NOTIFY, placeOf(0) + Place{5, 0});
    send(XCB_BUTTON_RELEASE, placeOf(0) + Place{5, 0});
    EXPECT_THAT(mChoices, ElementsAre(Choice(0)));
}

TEST_F(PopupMenuTest, KeysMoveAndChoose) {
    EXPECT_FALSE(mMenu->key(XK_Down)); // closed: not used
    open();
    EXPECT_EQ(after({XK_Down}), 0U);
    EXPECT_EQ(after({XK_Down, XK_Down}), 3U); // past what cannot be chosen
    EXPECT_EQ(after({XK_Up}), 1U);
    EXPECT_EQ(after({XK_End}), 4U);
    EXPECT_EQ(after({XK_Down}), 0U);
    EXPECT_EQ(after({XK_KP_Up}), 4U);
    EXPECT_EQ(after({XK_Home}), 0U);
    EXPECT_EQ(after({XK_Page_Down}), 4U);
    EXPECT_EQ(after({XK_Page_Up}), 0U);
    EXPECT_EQ(after({XK_c}), 4U);
    EXPECT_EQ(after({XK_T}), 1U);
    EXPECT_EQ(after({XK_z}), 1U);
    EXPECT_EQ(after({XK_F1}), 1U);
    EXPECT_THAT(mChoices, IsEmpty());
    mMenu->key(XK_Return);
    EXPECT_THAT(mChoices, ElementsAre(Choice(1)));
    for (const auto key : std::initializer_list<xcb_keysym_t>{XK_space, XK_KP_Enter}) {
        open(3);
        EXPECT_EQ(mMenu->highlighted(), 3U);
        mMenu->key(key);
        EXPECT_EQ(mChoices.back(), Choice(3));
    }
    open(3);
    mMenu->key(XK_Escape);
    EXPECT_EQ(mChoices.back(), std::nullopt);
    EXPECT_EQ(mChoices.size(), 4U);
    EXPECT_FALSE(mMenu->isOpen());
}

TEST_F(PopupMenuTest, ALongOneFillsTheMonitorAndScrolls) {
    openLong();
    EXPECT_EQ(area().y, 0);
    EXPECT_EQ(area().height, 900);
    const Picture first = shown();
    EXPECT_EQ(after({XK_End}), kManyRows - 1);
    settle();
    const Picture last = shown();
    EXPECT_NE(first, last);
    const WindowArea row = mPanel->areaOf(kManyRows - 1);
    // The last row lies above the arrow at the end.
    const int end = mPanel->size().height - row.bottom();
    EXPECT_EQ(last.at({3, 900 - 16 - end - row.height / 2}), PanelStyle().highlight);
    EXPECT_EQ(after({XK_Home}), 0U);
    settle();
    EXPECT_EQ(shown().at({3, 16 + mPanel->areaOf(0).y / 2 + row.height / 2}), PanelStyle().highlight);
    const Choice page = after({XK_Page_Down});
    ASSERT_TRUE(page);
    EXPECT_GT(*page, 20U);
    EXPECT_LT(*page, kManyRows - 1);
    EXPECT_LE(mPanel->areaOf(*page).y - mPanel->areaOf(0).y, 900 - 2 * 16);
    EXPECT_EQ(after({XK_Page_Up}), 0U);
}

TEST_F(PopupMenuTest, TheWheelAndTheArrowsScroll) {
    openLong();
    const Area menu = area();
    const Place middle = {menu.x + 40, 450};
    point(middle);
    const Choice before = mMenu->highlighted();
    ASSERT_TRUE(before);
    mPointer.press(Button::kWheelDown);
    mPointer.release(Button::kWheelDown);
    settle();
    ASSERT_TRUE(mMenu->highlighted());
    EXPECT_GT(*mMenu->highlighted(), *before);
    mPointer.press(Button::kWheelUp);
    mPointer.release(Button::kWheelUp);
    settle();
    EXPECT_EQ(mMenu->highlighted(), before);
    EXPECT_TRUE(mMenu->isOpen());

    point({menu.x + 40, 895}); // on the arrow
    EXPECT_EQ(mMenu->highlighted(), std::nullopt);
    click(); // chooses nothing
    EXPECT_TRUE(mMenu->isOpen());
    for (int i = 0; i < 400; ++i) {
        mMenu->tick();
    }
    settle();
    point({menu.x + 40, 900 - 16 - 12});
    EXPECT_EQ(mMenu->highlighted(), kManyRows - 1);
    point({menu.x + 40, 5});
    for (int i = 0; i < 400; ++i) {
        mMenu->tick();
    }
    settle();
    point({menu.x + 40, 16 + 12});
    EXPECT_EQ(mMenu->highlighted(), 0U);
    click();
    EXPECT_THAT(mChoices, ElementsAre(Choice(0)));
}

TEST_F(PopupMenuTest, ScrollsAtItsArrowsOnly) {
    openLong();
    const Area menu = area();
    for (const int y : {20, 450, 900 - 16 - 1}) {
        point({menu.x + 40, y});
        ASSERT_TRUE(mMenu->highlighted()) << y;
        const Picture before = shown();
        for (int i = 0; i < 5; ++i) {
            mMenu->tick();
        }
        settle();
        EXPECT_EQ(shown(), before) << y;
    }
    point({menu.x + 40, 900 - 16});
    EXPECT_EQ(mMenu->highlighted(), std::nullopt);
    point({menu.x + 40, 15});
    EXPECT_EQ(mMenu->highlighted(), std::nullopt);
    mMenu->key(XK_End);
    point({menu.x + 40, 16}); // below the arrow, with rows up to there
    EXPECT_TRUE(mMenu->highlighted());
}

// The arrow at an end of the list is faint.
TEST_F(PopupMenuTest, ArrowsTellWhereMoreIs) {
    const PanelStyle style;
    openLong();
    const Area menu = area();
    const auto has = [&](const WindowArea& strip, std::uint32_t colour) {
        return hasColour(shown(), strip, colour);
    };
    const WindowArea top{2, 2, menu.width - 4, 12};
    const WindowArea bottom{2, 900 - 14, menu.width - 4, 12};
    EXPECT_TRUE(has(top, style.edge));
    EXPECT_FALSE(has(top, style.text));
    EXPECT_TRUE(has(bottom, style.text));
    mMenu->key(XK_End);
    settle();
    EXPECT_TRUE(has(top, style.text));
    EXPECT_TRUE(has(bottom, style.edge));
    EXPECT_FALSE(has(bottom, style.text));
    mMenu->dismiss();
    open(); // with room for all
    EXPECT_FALSE(hasColour(shown(), {2, 2, 100, 2}, style.text));
}

TEST_F(PopupMenuTest, StartsWhereTheHighlightedRowIsSeen) {
    std::vector<MenuItem> items(kManyRows, rowItem("Preset"));
    mMenu->open(items, {120, 400, 60, 20}, {}, 90);
    settle();
    EXPECT_EQ(mMenu->highlighted(), 90U);
    bool isSeen = false;
    const Picture picture = shown();
    for (int y = 0; y < 900; ++y) {
        isSeen = isSeen || picture.at({3, y}) == PanelStyle().highlight;
    }
    EXPECT_TRUE(isSeen);
    mMenu->dismiss(); // nobody wants to know
}

TEST_F(PopupMenuTest, ARowThatIsNotThereIsNotHighlighted) {
    open(5);
    EXPECT_EQ(mMenu->highlighted(), std::nullopt);
    EXPECT_EQ(after({XK_Down}), 0U);
}

TEST_F(PopupMenuTest, WithoutEntriesItCanOnlyBeDismissed) {
    mMenu->open({}, kMenuAnchor, [this](Choice choice) { mChoices.push_back(choice); });
    settle();
    EXPECT_EQ(after({XK_Down, XK_End, XK_Page_Down, XK_a, XK_Return}), std::nullopt);
    mMenu->key(XK_Escape);
    EXPECT_THAT(mChoices, ElementsAre(std::nullopt));
}

TEST_F(PopupMenuTest, AnotherOpeningDismissesTheFirst) {
    open();
    open();
    EXPECT_THAT(mChoices, ElementsAre(std::nullopt));
    EXPECT_TRUE(mMenu->isOpen());
}

TEST_F(PopupMenuTest, MayOpenAgainOrEndInItsReport) {
    int reports = 0;
    mMenu->open({rowItem("More")}, kMenuAnchor, [&](Choice) {
        ++reports;
        mMenu->open({rowItem("End")}, kMenuAnchor, [&](Choice) {
            ++reports;
            mMenu.reset();
        });
    });
    settle();
    point({kMenuAnchor.x + 30, kMenuAnchor.bottom() + 12});
    click();
    EXPECT_EQ(reports, 1);
    ASSERT_TRUE(mMenu);
    EXPECT_TRUE(mMenu->isOpen());
    point({kMenuAnchor.x + 33, kMenuAnchor.bottom() + 12});
    click();
    EXPECT_EQ(reports, 2);
    EXPECT_FALSE(mMenu);
}

TEST_F(PopupMenuTest, GoesWithTheWindowThatItBelongsTo) {
    open();
    mMenu->tick();
    EXPECT_TRUE(mMenu->isOpen());
    xcb_unmap_window(mPerson.connection(), mShell);
    mPerson.synchronise();
    mMenu->tick();
    EXPECT_FALSE(mMenu->isOpen());
    EXPECT_THAT(mChoices, ElementsAre(std::nullopt));
}

} // namespace
} // namespace varno::test
