#include "Window/TipWindow.h"

#include "Tests/Window/WindowFixture.h"

#include <optional>

namespace varno::test {
namespace {

constexpr WindowArea kControl{150, 150, 40, 40};
constexpr const char* kHelp =
    "Sets how far the level may rise before it is turned down; the knee around it is "
    "soft, so that little of that is heard.";

class TipWindowTest : public WindowFixture {
protected:
    TipWindowTest() { settle(); }

    void show(const std::string& value, const std::string& help, const WindowArea& control = kControl) {
        mTip.show(control, value, help);
        settle();
    }
    Area area() const {
        const XReply<xcb_get_geometry_reply_t> reply(xcb_get_geometry_reply(
            mPerson.connection(), xcb_get_geometry(mPerson.connection(), window()), nullptr));
        return {reply->x, reply->y, reply->width, reply->height};
    }
    xcb_window_t window() const { return mPerson.children(mPerson.screen().root).back(); }
    Picture shown() const {
        const Area size = area();
        return Picture::ofWindow(mPerson, window(), {0, 0, size.width, size.height});
    }

    TipWindow mTip{mConnection, mShell, PanelStyle()};
};

TEST_F(TipWindowTest, ShowsAValueAndItsHelp) {
    EXPECT_FALSE(mTip.isShown());
    show("-3 dB", "");
    EXPECT_TRUE(mTip.isShown());
    const Area value = area();
    EXPECT_EQ(value.x, kControl.x);
    EXPECT_EQ(value.y, kControl.bottom() + 4);
    const Picture picture = shown();
    EXPECT_EQ(picture.at({0, 0}), PanelStyle().edge);
    EXPECT_EQ(picture.at({1, 1}), PanelStyle().panel);
    show("-3 dB", kHelp);
    const Area both = area();
    EXPECT_GT(both.width, 200);
    EXPECT_LE(both.width, 300 + 16);
    EXPECT_GT(both.height, value.height + 20); // several lines
    EXPECT_NE(differingArea(shown().part({0, 0, value.width - 1, value.height - 1}),
                            picture.part({0, 0, value.width - 1, value.height - 1})),
              (Area{0, 0, value.width - 1, value.height - 1}));
}

TEST_F(TipWindowTest, FollowsTheValue) {
    show("-3 dB", kHelp);
    const Picture before = shown();
    show("-4 dB", kHelp);
    EXPECT_NE(shown(), before);
    show("-3 dB", kHelp);
    EXPECT_EQ(shown(), before);
    show("-3 dB", "");
    show("A value that is much longer than any that a control can have, on one line", "");
    EXPECT_LE(area().width, 300 + 16);
}

TEST_F(TipWindowTest, MovesToAnotherControl) {
    show("-3 dB", "");
    show("-3 dB", "", {300, 860, 40, 40}); // with no room below
    EXPECT_EQ(area().y + area().height, 860 - 4);
    show("-3 dB", kHelp, {1200, 100, 40, 40});
    EXPECT_EQ(area().x + area().width, 1280);
}

TEST_F(TipWindowTest, IsHiddenAndShownAgain) {
    show("-3 dB", "");
    mTip.hide();
    settle();
    EXPECT_FALSE(mTip.isShown());
    EXPECT_EQ(picture().countColours(), 1U); // the view's
    show("-3 dB", "");
    EXPECT_TRUE(mTip.isShown());
    EXPECT_GT(picture().countColours(), 1U);
}

TEST_F(TipWindowTest, AStyleIsForTheNextText) {
    show("-3 dB", "");
    const Area before = area();
    PanelStyle large;
    large.scale = 2;
    mTip.setStyle(large);
    show("-3 dB", "");
    EXPECT_NEAR(area().height, 2 * before.height, 4);
    EXPECT_EQ(area().y, kControl.bottom() + 8);
}

TEST_F(TipWindowTest, GoesWithTheWindowThatItBelongsTo) {
    show("-3 dB", "");
    mTip.tick();
    EXPECT_TRUE(mTip.isShown());
    xcb_unmap_window(mPerson.connection(), mShell);
    mPerson.synchronise();
    mTip.tick();
    EXPECT_FALSE(mTip.isShown());
}

// What is shown does not vanish while the next text is drawn.
TEST_F(TipWindowTest, ATextThatIsThereCostsNothing) {
    show("-3 dB", kHelp);
    xcb_change_window_attributes(mPerson.connection(), window(), XCB_CW_EVENT_MASK, [] {
        static const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        return &events;
    }());
    mPerson.synchronise();
    show("-3 dB", kHelp);
    show("-5 dB", kHelp); // as wide
    mPerson.synchronise();
    int changes = 0;
    while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(mPerson.connection())}) {
        changes += eventKind(*event) == XCB_UNMAP_NOTIFY || eventKind(*event) == XCB_MAP_NOTIFY ? 1 : 0;
    }
    EXPECT_EQ(changes, 0);
}

} // namespace
} // namespace varno::test
