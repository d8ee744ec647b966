#include "Window/PopupWindow.h"

#include "Tests/Window/WindowFixture.h"
#include "Window/PanelText.h"

#include <X11/keysym.h>

#include <optional>

namespace varno::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

constexpr std::uint32_t kPopupColour = 0x8040C0;
constexpr WindowArea kAnchor{120, 120, 40, 20};
constexpr WindowSize kSize{100, 60};

TEST(PlacePopup, IsBelowItsAnchorOrAbove) {
    const WindowArea monitor{0, 0, 1000, 800};
    const WindowSize size{200, 300};
    EXPECT_EQ(placePopup({50, 60, 30, 20}, size, monitor), (WindowArea{50, 80, 200, 300}));
    EXPECT_EQ(placePopup({50, 480, 30, 20}, size, monitor), (WindowArea{50, 500, 200, 300}));
    EXPECT_EQ(placePopup({50, 481, 30, 20}, size, monitor), (WindowArea{50, 181, 200, 300}));
    EXPECT_EQ(placePopup({50, 790, 0, 0}, size, monitor), (WindowArea{50, 490, 200, 300}));
}

TEST(PlacePopup, IsEntirelyOnTheMonitor) {
    const WindowArea monitor{1000, 100, 500, 400};
    EXPECT_EQ(placePopup({1400, 120, 30, 20}, {200, 100}, monitor), (WindowArea{1300, 140, 200, 100}));
    EXPECT_EQ(placePopup({900, 120, 30, 20}, {200, 100}, monitor), (WindowArea{1000, 140, 200, 100}));
    EXPECT_EQ(placePopup({1100, 50, 30, 20}, {200, 100}, monitor), (WindowArea{1100, 100, 200, 100}));
    EXPECT_EQ(placePopup({1100, 600, 30, 20}, {200, 100}, monitor), (WindowArea{1100, 400, 200, 100}));
    EXPECT_EQ(placePopup({1100, 300, 30, 20}, {900, 900}, monitor), monitor);
    EXPECT_EQ(placePopup({1100, 200, 30, 20}, {10, 390}, monitor), (WindowArea{1100, 110, 10, 390}));
}

class PopupWindowTest : public WindowFixture {
protected:
    explicit PopupWindowTest(const std::vector<std::string>& serverWords = {})
        : WindowFixture(serverWords) {
        make(PopupWindow::Kind::kMenu);
    }

    void make(PopupWindow::Kind kind) {
        mPopup.reset();
        mPopup.emplace(
            mConnection, mShell, kind,
            PopupWindow::Handlers{[this](cairo_t* context, WindowSize size) { draw(context, size); },
                                  [this](const ButtonEvent& event) { mButtons.push_back(event); },
                                  [this](std::optional<WindowPlace> place) { mPlaces.push_back(place); },
                                  [this] { ++mDismissals; }});
        settle();
    }

    WindowArea open() {
        const WindowArea area = mPopup->open(kAnchor, kSize);
        settle();
        return area;
    }
    void tick() {
        mPopup->tick();
        settle();
    }

    // A dot near the right bottom corner on one colour.
    void draw(cairo_t* context, WindowSize size) {
        ++mDrawings;
        fillPanel(context, {0, 0, size.width, size.height}, mColour);
        fillPanel(context, {size.width - 2, size.height - 2, 1, 1}, 0xFFFFFF);
    }

    xcb_window_t id() const { return mPerson.children(mPerson.screen().root).back(); }
    Picture shown(const Area& area) const { return Picture::ofWindow(mPerson, mPerson.screen().root, area); }

    std::uint32_t mColour = kPopupColour;
    int mDrawings = 0;
    int mDismissals = 0;
    std::vector<ButtonEvent> mButtons;
    std::vector<std::optional<WindowPlace>> mPlaces;
    std::optional<PopupWindow> mPopup;
};

TEST_F(PopupWindowTest, ShowsWhatIsDrawn) {
    EXPECT_FALSE(mPopup->isOpen());
    const Picture before = shown({0, 0, 500, 400});
    EXPECT_EQ(open(), (WindowArea{120, 140, 100, 60}));
    EXPECT_TRUE(mPopup->isOpen());
    const Picture after = shown({0, 0, 500, 400});
    EXPECT_EQ(differingArea(before, after), (Area{120, 140, 100, 60}));
    EXPECT_EQ(after.at({120, 140}), kPopupColour);
    EXPECT_EQ(after.at({218, 198}), 0xFFFFFFU);
    EXPECT_EQ(after.at({219, 199}), kPopupColour);
    EXPECT_EQ(mDrawings, 1);
    mPopup->close();
    settle();
    EXPECT_EQ(shown({0, 0, 500, 400}), before);
    EXPECT_EQ(mDismissals, 0);
}

TEST_F(PopupWindowTest, TheServerRepeatsThePicture) {
    open();
    {
        const XWindow other(mPerson, {100, 100, 300, 200});
        mPerson.fill(other.id(), {0, 0, 300, 200}, 0x123456);
        EXPECT_EQ(shown({120, 140, 100, 60}).at({5, 5}), 0x123456U);
    }
    settle();
    EXPECT_EQ(shown({120, 140, 100, 60}).at({5, 5}), kPopupColour);
    EXPECT_EQ(mDrawings, 1);
}

TEST_F(PopupWindowTest, IsDrawnAgainAndMoved) {
    mPopup->redraw(); // closed: nothing
    EXPECT_EQ(mDrawings, 0);
    open();
    mColour = 0x00FF00;
    mPopup->redraw();
    settle();
    EXPECT_EQ(shown({120, 140, 100, 60}).at({5, 5}), 0x00FF00U);
    EXPECT_EQ(mPopup->open({300, 600, 10, 10}, {50, 40}), (WindowArea{300, 610, 50, 40}));
    settle();
    EXPECT_EQ(shown({300, 610, 50, 40}).at({48, 38}), 0xFFFFFFU);
    EXPECT_EQ(shown({120, 140, 100, 60}).at({5, 5}), kViewColour);
}

TEST_F(PopupWindowTest, DescribesItselfToTheDesktop) {
    for (const auto& [kind, type] : {std::pair{PopupWindow::Kind::kMenu, "_NET_WM_WINDOW_TYPE_POPUP_MENU"},
                                     {PopupWindow::Kind::kTip, "_NET_WM_WINDOW_TYPE_TOOLTIP"}}) {
        make(kind);
        open();
        EXPECT_THAT(mConnection.words(id(), mConnection.atom("_NET_WM_WINDOW_TYPE")),
                    ElementsAre(mConnection.atom(type)));
        EXPECT_THAT(mConnection.words(id(), XCB_ATOM_WM_TRANSIENT_FOR), ElementsAre(mShell));
        EXPECT_EQ(mConnection.text(id(), XCB_ATOM_WM_CLASS), std::string("varno\0Varno\0", 12));
        const XReply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
            mPerson.connection(), xcb_get_window_attributes(mPerson.connection(), id()), nullptr));
        EXPECT_NE(attributes->override_redirect, 0);
    }
}

TEST_F(PopupWindowTest, ReportsThePointerInItAndOutside) {
    open();
    mPointer.move({125, 147});
    mPointer.move({121, 139}); // above it
    mPointer.move({130, 150});
    mPointer.press(Button::kRight);
    mPointer.move({10, 10});
    mPointer.release(Button::kRight);
    settle();
    EXPECT_THAT(mPlaces, ElementsAre(WindowPlace{5, 7}, std::nullopt, WindowPlace{10, 10}, std::nullopt));
    ASSERT_EQ(mButtons.size(), 2U);
    EXPECT_EQ(mButtons[0].place, (WindowPlace{10, 10}));
    EXPECT_EQ(mButtons[0].button, 3);
    EXPECT_TRUE(mButtons[0].isDown);
    EXPECT_EQ(mButtons[1].place, (WindowPlace{-110, -130}));
    EXPECT_FALSE(mButtons[1].isDown);
    EXPECT_TRUE(mPopup->isOpen());
}

TEST_F(PopupWindowTest, APressBesideItClosesItAndReachesNobodyElse) {
    open();
    mPointer.move(onScreen({200, 150})); // over the view
    mPointer.press();
    settle();
    EXPECT_EQ(mDismissals, 1);
    EXPECT_FALSE(mPopup->isOpen());
    mPointer.release();
    settle();
    EXPECT_THAT(viewEvents(), IsEmpty());
    EXPECT_THAT(mButtons, IsEmpty());
    mPointer.press(); // the next one is for the view again
    mPointer.release();
    settle();
    EXPECT_THAT(viewEvents(), ElementsAre(Pair(XCB_BUTTON_PRESS, 1), Pair(XCB_BUTTON_RELEASE, 1)));
    EXPECT_EQ(mDismissals, 1);
}

TEST_F(PopupWindowTest, ClosedWithAButtonDownItKeepsTheReleaseToItself) {
    open();
    mPointer.move(onScreen({30, 50})); // in it, with the view below
    mPointer.press();
    mPointer.press(Button::kRight);
    settle();
    mPopup->close();
    settle();
    mPointer.release();
    settle();
    tick();
    mPointer.release(Button::kRight);
    settle();
    EXPECT_THAT(viewEvents(), IsEmpty());
    mPointer.press();
    mPointer.release();
    EXPECT_EQ(viewEvents().size(), 2U);
}

// The library holds the pointer from a press to its release.
TEST_F(PopupWindowTest, TakesThePointerAsSoonAsAnotherClientGivesItBack) {
    mPointer.move(onScreen({200, 150}));
    mPointer.press();
    open();
    tick();
    EXPECT_EQ(viewEvents().size(), 1U);
    mPointer.release();
    EXPECT_EQ(viewEvents().size(), 1U); // which is the release
    tick();
    mPointer.press();
    mPointer.release();
    settle();
    EXPECT_THAT(viewEvents(), IsEmpty());
    EXPECT_EQ(mDismissals, 1);
}

// Until the pointer is taken it is reported as to any window.
TEST_F(PopupWindowTest, ReportsThePointerBeforeItIsTaken) {
    mPointer.move(onScreen({200, 150}));
    mPointer.press();
    open();
    mPointer.release();
    mPointer.move({125, 147});
    settle();
    EXPECT_THAT(mPlaces, ElementsAre(WindowPlace{5, 7}));
    mPointer.move(onScreen({200, 150}));
    settle();
    EXPECT_THAT(mPlaces, ElementsAre(WindowPlace{5, 7}, std::nullopt));
    mPointer.move({125, 147});
    settle();
    tick(); // which is no leaving
    EXPECT_EQ(mPlaces.size(), 3U);
    EXPECT_EQ(mPlaces.back(), (WindowPlace{5, 7}));
    mPointer.press();
    settle();
    EXPECT_EQ(mButtons.size(), 1U);
}

TEST_F(PopupWindowTest, ClosedBeforeItHadThePointerItTakesItNoMore) {
    mPointer.move(onScreen({200, 150}));
    mPointer.press();
    open();
    mPopup->close();
    mPointer.release();
    tick();
    mPointer.press();
    mPointer.release();
    EXPECT_EQ(viewEvents().size(), 4U);
}

// The server waits for nobody: it goes on while this program does not read.
TEST_F(PopupWindowTest, HoldsNothingUp) {
    giveFocus(mChild);
    open();
    mPointer.move({125, 147});
    mPointer.press();
    mPointer.release();
    mKeyboard.tap(XK_a);
    EXPECT_EQ(viewEvents().size(), 2U); // the key's
}

TEST_F(PopupWindowTest, OpensAgain) {
    for (int i = 1; i <= 3; ++i) {
        open();
        mPointer.move({5, 5});
        mPointer.press();
        mPointer.release();
        settle();
        EXPECT_EQ(mDismissals, i);
        EXPECT_FALSE(mPopup->isOpen());
    }
}

TEST_F(PopupWindowTest, GoesWithItsOwner) {
    open();
    tick();
    EXPECT_TRUE(mPopup->isOpen());
    xcb_unmap_window(mPerson.connection(), mShell);
    mPerson.synchronise();
    tick();
    EXPECT_FALSE(mPopup->isOpen());
    EXPECT_EQ(mDismissals, 1);
    tick();
    EXPECT_EQ(mDismissals, 1);
    xcb_map_window(mPerson.connection(), mShell);
    mPerson.synchronise();
    open();
    mPerson.destroyWindow(mShell);
    tick();
    EXPECT_EQ(mDismissals, 2);
}

TEST_F(PopupWindowTest, ClosesWhenAnotherProgramGetsTheFocus) {
    const XWindow other(mPerson, {600, 600, 20, 20});
    giveFocus(mShell);
    open();
    tick();
    for (const xcb_window_t window :
         {mChild, xcb_window_t{XCB_INPUT_FOCUS_POINTER_ROOT}, xcb_window_t{XCB_INPUT_FOCUS_NONE}, mShell}) {
        giveFocus(window);
        tick();
        EXPECT_TRUE(mPopup->isOpen());
    }
    giveFocus(other.id());
    tick();
    EXPECT_FALSE(mPopup->isOpen());
    EXPECT_EQ(mDismissals, 1);
    open(); // by a pointer whose clicks do not move the focus
    tick();
    EXPECT_TRUE(mPopup->isOpen());
}

// As with a window manager: what is in one frame is one program's.
TEST_F(PopupWindowTest, StaysWhileTheFocusIsInTheFrameOfItsOwner) {
    const XWindow frame(mPerson, {90, 90, 400, 300});
    const XWindow button(mPerson, {0, 0, 20, 20});
    xcb_reparent_window(mPerson.connection(), mShell, frame.id(), 10, 10);
    xcb_reparent_window(mPerson.connection(), button.id(), frame.id(), 350, 10);
    giveFocus(mShell);
    open();
    giveFocus(button.id());
    tick();
    EXPECT_TRUE(mPopup->isOpen());
    const XWindow other(mPerson, {600, 600, 20, 20});
    giveFocus(other.id());
    tick();
    EXPECT_FALSE(mPopup->isOpen());
}

TEST_F(PopupWindowTest, ATipDoesNotTakeThePointer) {
    make(PopupWindow::Kind::kTip);
    open();
    mPointer.move(onScreen({30, 50}));
    mPointer.press();
    mPointer.release();
    settle();
    EXPECT_THAT(viewEvents(), ElementsAre(Pair(XCB_BUTTON_PRESS, 1), Pair(XCB_BUTTON_RELEASE, 1)));
    EXPECT_THAT(mButtons, IsEmpty());
    EXPECT_THAT(mPlaces, IsEmpty());
    EXPECT_TRUE(mPopup->isOpen());
    xcb_unmap_window(mPerson.connection(), mShell);
    mPerson.synchronise();
    tick();
    EXPECT_FALSE(mPopup->isOpen());
}

TEST_F(PopupWindowTest, MayEndInWhatItReports) {
    const auto makeEnding = [this] {
        mPopup.reset();
        const auto end = [this](auto...) {
            ++mDismissals;
            mPopup.reset();
        };
        mPopup.emplace(mConnection, mShell, PopupWindow::Kind::kMenu,
                       PopupWindow::Handlers{{}, end, end, end});
        open();
    };
    makeEnding();
    mPointer.move({125, 147});
    settle();
    EXPECT_FALSE(mPopup);
    makeEnding();
    mPointer.press();
    mPointer.release();
    settle();
    EXPECT_FALSE(mPopup);
    mPointer.move({5, 5});
    makeEnding();
    mPointer.press();
    mPointer.release();
    settle();
    EXPECT_FALSE(mPopup);
    EXPECT_EQ(mDismissals, 3);
}

TEST_F(PopupWindowTest, LeavesNothingBehind) {
    mPopup.reset();
    settle();
    XErrors errors(mServer.display());
    const auto before = countResources(mPerson);
    for (int i = 0; i < 20; ++i) {
        make(i % 2 == 0 ? PopupWindow::Kind::kMenu : PopupWindow::Kind::kTip);
        open();
        mPopup->redraw();
        mPopup.reset();
    }
    settle();
    EXPECT_THAT(errors.finish(), IsEmpty());
    EXPECT_TRUE(eventually([&] { return isNoMore(countResources(mPerson), before); }));
}

class WithShortRequests : public PopupWindowTest {
protected:
    WithShortRequests()
        : PopupWindowTest({"-maxbigreqsize", "1"}) {}
};

TEST_F(WithShortRequests, ALargePictureIsSentInParts) {
    ASSERT_LT(xcb_get_maximum_request_length(mConnection.get()) * 4, 1280U * 890 * 4);
    mPopup->open({0, 0, 10, 10}, {1280, 890});
    settle();
    const Picture picture = shown({0, 10, 1280, 890});
    EXPECT_EQ(picture.at({1278, 888}), 0xFFFFFFU);
    EXPECT_EQ(picture.countColours(), 2U);
}

class OnColoursOfFewBits : public PopupWindowTest {
protected:
    OnColoursOfFewBits()
        : PopupWindowTest({"-screen", "0", "640x480x16"}) {}
};

TEST_F(OnColoursOfFewBits, IsDrawnToo) {
    open();
    const auto cookie = xcb_get_image(mPerson.connection(), XCB_IMAGE_FORMAT_Z_PIXMAP, id(), 5, 5, 1, 1, ~0U);
    const XReply<xcb_get_image_reply_t> image(xcb_get_image_reply(mPerson.connection(), cookie, nullptr));
    ASSERT_NE(image, nullptr);
    const auto* bytes = xcb_get_image_data(image.get());
    EXPECT_EQ(bytes[0] | bytes[1] << 8, 0x10 << 11 | 0x10 << 5 | 0x18);
}

TEST(PopupWindowErrors, AScreenOfAnotherFormOfPixels) {
    const XServer server({}, {"-screen", "0", "640x480x8"});
    XConnection connection(server.display());
    EXPECT_THROW(PopupWindow(connection, connection.screen().root, PopupWindow::Kind::kTip, {}), WindowError);
}

} // namespace
} // namespace varno::test
