#include "Window/OverlayWindow.h"

#include "Tests/Window/WindowFixture.h"

namespace varno::test {
namespace {

using testing::ElementsAre;
using testing::Pair;

constexpr std::uint32_t kColour = 0xFF9D33;

class OverlayWindowTest : public WindowFixture {};

TEST_F(OverlayWindowTest, IsAFrameOnTheInnerSideOfARectangle) {
    OverlayWindow overlay(mConnection, mShell, kColour);
    const Picture before = picture();
    overlay.setFrame({20, 30, 50, 40}, 3);
    settle();
    EXPECT_EQ(picture(), before); // not shown yet
    EXPECT_FALSE(overlay.isShown());
    overlay.show();
    EXPECT_TRUE(overlay.isShown());
    settle();
    const Picture after = picture();
    EXPECT_EQ(differingArea(before, after), (Area{20, 30, 50, 40}));
    for (const Place place : {Place{20, 30}, {69, 69}, {22, 50}, {67, 50}, {45, 32}, {45, 67}}) {
        EXPECT_EQ(after.at(place), kColour) << place.x << ' ' << place.y;
    }
    EXPECT_EQ(after.part({23, 33, 44, 34}), before.part({23, 33, 44, 34}));
}

TEST_F(OverlayWindowTest, AFrameOfMoreThanTheRectangleFillsIt) {
    OverlayWindow overlay(mConnection, mShell, kColour);
    overlay.setFrame({20, 30, 5, 40}, 3);
    overlay.show();
    settle();
    EXPECT_EQ(picture().part({20, 30, 5, 40}), Picture(5, 40, std::vector<std::uint32_t>(200, kColour)));
    overlay.setFrame({20, 30, 5, 40}, 0); // one pixel at least
    settle();
    EXPECT_EQ(picture().at({20, 40}), kColour);
    EXPECT_EQ(picture().at({21, 40}), kViewColour);
}

TEST_F(OverlayWindowTest, MovesChangesItsColourAndIsHidden) {
    OverlayWindow overlay(mConnection, mShell, kColour);
    const Picture before = picture();
    overlay.setFrame({20, 30, 50, 40}, 3);
    overlay.show();
    overlay.setFrame({120, 90, 10, 12}, 2);
    overlay.setColour(0x00FF00);
    settle();
    EXPECT_EQ(differingArea(before, picture()), (Area{120, 90, 10, 12}));
    EXPECT_EQ(picture().at({120, 90}), 0x00FF00U);
    overlay.hide();
    EXPECT_FALSE(overlay.isShown());
    settle();
    EXPECT_EQ(picture(), before);
}

TEST_F(OverlayWindowTest, ComesAboveWhatWasRaised) {
    OverlayWindow overlay(mConnection, mShell, kColour);
    overlay.setFrame({20, 30, 50, 40}, 3);
    overlay.show();
    settle();
    makeChild();
    EXPECT_EQ(picture().at({20, 30}), kViewColour);
    overlay.raise();
    settle();
    EXPECT_EQ(picture().at({20, 30}), kColour);
    makeChild();
    overlay.show();
    settle();
    EXPECT_EQ(picture().at({20, 30}), kColour);
}

TEST_F(OverlayWindowTest, ThePointerReachesWhatIsBelow) {
    OverlayWindow overlay(mConnection, mShell, kColour);
    overlay.setFrame({20, 10, 30, 30}, 15); // all of the rectangle
    overlay.show();
    settle();
    for (const int y : {20, 21}) {
        mPointer.move(onScreen({30, y}));
        mPointer.press();
        mPointer.release();
    }
    EXPECT_THAT(viewEvents(), ElementsAre(Pair(XCB_BUTTON_PRESS, 1), Pair(XCB_BUTTON_RELEASE, 1),
                                          Pair(XCB_BUTTON_PRESS, 1), Pair(XCB_BUTTON_RELEASE, 1)));
}

TEST_F(OverlayWindowTest, IsGoneAfterTheObjectAndWithItsParent) {
    XErrors errors(mServer.display());
    {
        const OverlayWindow overlay(mConnection, mShell, kColour);
        settle();
        EXPECT_EQ(mPerson.countChildren(mShell), 2U);
    }
    settle();
    EXPECT_EQ(mPerson.countChildren(mShell), 1U);
    EXPECT_TRUE(errors.finish().empty());
    OverlayWindow overlay(mConnection, mShell, kColour);
    settle();
    mPerson.destroyWindow(mShell);
    overlay.setFrame({20, 30, 50, 40}, 3);
    overlay.show();
    settle(); // the errors are ignored
}

class OnFewColours : public WindowFixture {
protected:
    OnFewColours()
        : WindowFixture({"-screen", "0", "640x480x16"}) {}
};

TEST_F(OnFewColours, TheColourIsTheNearest) {
    ASSERT_EQ(mConnection.screen().root_depth, 16);
    OverlayWindow overlay(mConnection, mShell, 0xFF8020);
    overlay.setFrame({20, 30, 50, 40}, 3);
    overlay.show();
    settle();
    const auto cookie =
        xcb_get_image(mPerson.connection(), XCB_IMAGE_FORMAT_Z_PIXMAP, mShell, 20, 30, 1, 1, ~0U);
    const XReply<xcb_get_image_reply_t> image(xcb_get_image_reply(mPerson.connection(), cookie, nullptr));
    ASSERT_NE(image, nullptr);
    const auto* bytes = xcb_get_image_data(image.get());
    EXPECT_EQ(bytes[0] | bytes[1] << 8, 0x1F << 11 | 0x20 << 5 | 0x04);
}

} // namespace
} // namespace varno::test
