// The X server of tests: its screen, mouse and resources.
#include "Tests/Support/Eventually.h"
#include "Tests/Support/FakeInput.h"
#include "Tests/Support/Picture.h"
#include "Tests/Support/XServer.h"

#include <X11/keysym.h>
#include <algorithm>
#include <chrono>
#include <csignal>
#include <gtest/gtest.h>
#include <memory>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <xcb/xcb.h>

using namespace varno::test;

namespace {

constexpr std::uint32_t kRed = 0x00FF0000;
constexpr std::uint32_t kBlue = 0x000000FF;

struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};
using Connection = std::unique_ptr<xcb_connection_t, Disconnect>;

Connection connectTo(const std::string& display) {
    return Connection(xcb_connect(display.c_str(), nullptr));
}

// Only its connections show that a server has ended: another may get its display at once.
bool breaks(const Connection& connection) {
    return eventually([&connection] {
        EXPECT_EQ(xcb_poll_for_event(connection.get()), nullptr);
        return xcb_connection_has_error(connection.get()) != 0;
    });
}

bool answers(const std::string& display) {
    return xcb_connection_has_error(connectTo(display).get()) == 0;
}

TEST(XServer, ShowsOneScreenOfTheSizeAskedFor) {
    const XServer server(XServer::Screen{640, 480});

    const Connection connection = connectTo(server.display());
    ASSERT_EQ(xcb_connection_has_error(connection.get()), 0);
    const xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection.get()));

    ASSERT_EQ(screens.rem, 1);
    EXPECT_EQ(screens.data->width_in_pixels, 640);
    EXPECT_EQ(screens.data->height_in_pixels, 480);
    EXPECT_EQ(screens.data->root_depth, 24);
}

TEST(XServer, TwoAtOnceHaveDisplaysOfTheirOwn) {
    const XServer one;
    const XServer other;

    EXPECT_NE(one.display(), other.display());
    EXPECT_TRUE(answers(one.display()));
    EXPECT_TRUE(answers(other.display()));
}

TEST(XServer, IsGoneAfterTheObject) {
    Connection connection;
    {
        const XServer server;
        connection = connectTo(server.display());
        ASSERT_EQ(xcb_connection_has_error(connection.get()), 0);
    }

    EXPECT_TRUE(breaks(connection));
}

TEST(XServer, StopLosesEveryConnection) {
    XServer server;
    const Connection connection = connectTo(server.display());
    ASSERT_EQ(xcb_connection_has_error(connection.get()), 0);

    server.stop();

    EXPECT_TRUE(breaks(connection));
}

TEST(XServer, EndsWithTheProcessThatStartedIt) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const pid_t process = fork();
    if (process == 0) {
        const XServer server;
        const std::string& display = server.display();
        const ssize_t written = write(ends[1], display.c_str(), display.size() + 1);
        _exit(written > 0 && pause() == -1 ? 0 : 1);
    }
    std::string display;
    char character = 0;
    while (read(ends[0], &character, 1) == 1 && character != '\0') {
        display += character;
    }
    const Connection connection = connectTo(display);
    ASSERT_EQ(xcb_connection_has_error(connection.get()), 0);

    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
    close(ends[0]);
    close(ends[1]);

    EXPECT_TRUE(breaks(connection));
}

class XSupport : public ::testing::Test {
protected:
    // A window of the other client's within one of the test's, at the same place.
    xcb_window_t makeInner(xcb_window_t outer, const Area& area) const {
        xcb_connection_t* const connection = mOther.connection();
        const xcb_window_t window = xcb_generate_id(connection);
        const std::uint32_t values[] = {kRed, XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
                                                  XCB_EVENT_MASK_POINTER_MOTION};
        xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, outer, 0, 0,
                          static_cast<std::uint16_t>(area.width), static_cast<std::uint16_t>(area.height), 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, mOther.screen().root_visual,
                          XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values);
        xcb_map_window(connection, window);
        mOther.synchronise();
        return window;
    }

    // The next event of the other client, which must have come already. Events about the keyboard's
    // layout go to every client and are left out.
    XReply<xcb_generic_event_t> nextEvent() const {
        XReply<xcb_generic_event_t> event;
        do {
            event.reset(xcb_poll_for_event(mOther.connection()));
        } while (event != nullptr && event->response_type == XCB_MAPPING_NOTIFY);
        return event;
    }

    const XServer mServer;
    const XClient mClient{mServer.display()};
    const XClient mOther{mServer.display()};
    const Area mArea{40, 30, 100, 80};
    XWindow mShell{mClient, mArea};
    const xcb_window_t mOuter = mShell.id();
    const xcb_window_t mInner = makeInner(mOuter, mArea);
};

TEST_F(XSupport, aPictureShowsTheWindowsInside) {
    mOther.fill(mInner, {10, 20, 5, 6}, kBlue);

    const Picture picture = Picture::ofWindow(mClient, mOuter, {0, 0, 100, 80});

    EXPECT_EQ(picture.at({9, 20}), kRed);
    EXPECT_EQ(picture.at({10, 20}), kBlue);
    EXPECT_EQ(picture.part({10, 20, 5, 6}), Picture(5, 6, std::vector<std::uint32_t>(30, kBlue)));
    EXPECT_EQ(picture.countColours(), 2U);
    EXPECT_EQ(Picture::ofWindow(mClient, mOuter, {10, 20, 5, 6}), picture.part({10, 20, 5, 6}));
    EXPECT_THROW(Picture::ofWindow(mClient, mOuter, {90, 0, 20, 20}), std::runtime_error);
    EXPECT_THROW(picture.at({100, 0}), std::out_of_range);
}

TEST_F(XSupport, aPictureWaitsForItsWindow) {
    xcb_unmap_window(mClient.connection(), mOuter);
    mClient.synchronise();
    EXPECT_FALSE(mClient.isShown(mOuter));
    EXPECT_FALSE(mClient.isShown(mInner)) << "it is mapped, and that around it is not";
    std::thread later([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        xcb_map_window(mOther.connection(), mOuter);
        xcb_flush(mOther.connection());
    });
    EXPECT_EQ(Picture::ofWindow(mClient, mInner, {0, 0, 1, 1}).at({0, 0}), kRed);
    later.join();
    EXPECT_TRUE(mClient.isShown(mInner));
    EXPECT_FALSE(mClient.isShown(XCB_WINDOW_NONE));
}

TEST_F(XSupport, picturesReportWhereTheyDiffer) {
    const Picture before = Picture::ofWindow(mClient, mOuter, {0, 0, 100, 80});
    EXPECT_EQ(differingArea(before, before), std::nullopt);
    mOther.fill(mInner, {50, 3, 7, 1}, 0x00FE0302);
    mOther.fill(mInner, {45, 9, 1, 2}, 0x00FE0302);

    const Picture after = Picture::ofWindow(mClient, mOuter, {0, 0, 100, 80});

    EXPECT_EQ(differingArea(before, after), (Area{45, 3, 12, 8}));
    EXPECT_EQ(largestDifference(before, after), 3);
    EXPECT_EQ(largestDifference(before, Picture()), 255);
}

TEST_F(XSupport, thePointerReachesOtherClientsAtOnce) {
    Pointer pointer(mClient);
    pointer.move({45, 32});
    pointer.hold({Modifier::kAlt, Modifier::kShift});
    pointer.press();
    pointer.releaseAll();
    mOther.synchronise();

    const auto motion = nextEvent();
    const auto press = nextEvent();
    const auto release = nextEvent();
    ASSERT_NE(release, nullptr);
    EXPECT_EQ(motion->response_type, XCB_MOTION_NOTIFY);
    EXPECT_EQ(press->response_type, XCB_BUTTON_PRESS);
    const auto& button = reinterpret_cast<const xcb_button_press_event_t&>(*press);
    EXPECT_EQ(button.event_x, 5);
    EXPECT_EQ(button.event_y, 2);
    EXPECT_EQ(button.state, XCB_MOD_MASK_1 | XCB_MOD_MASK_SHIFT);
    EXPECT_EQ(release->response_type, XCB_BUTTON_RELEASE);
    EXPECT_EQ(nextEvent(), nullptr);
}

TEST_F(XSupport, everyClientsErrorsAreSeen) {
    XErrors none(mServer.display());
    EXPECT_TRUE(none.finish().empty());
    XErrors some(mServer.display());
    xcb_map_window(mOther.connection(), 0xABCDEF);
    mOther.synchronise();

    const std::vector<std::string> errors = some.finish();

    ASSERT_EQ(errors.size(), 1U);
    EXPECT_NE(errors[0].find("X error 3 for request 8"), std::string::npos) << errors[0];
}

TEST_F(XSupport, everyClientsResourcesAreCounted) {
    const auto before = countResources(mClient);
    const xcb_window_t window = makeInner(mOuter, {0, 0, 5, 5});
    const XClient third(mServer.display());

    const auto during = countResources(mClient);
    xcb_destroy_window(mOther.connection(), window);
    mOther.synchronise();

    EXPECT_EQ(during.at("WINDOW"), before.at("WINDOW") + 1);
    EXPECT_EQ(during.at("CLIENT"), before.at("CLIENT") + 1);
    EXPECT_EQ(countResources(mClient).at("WINDOW"), before.at("WINDOW"));
    EXPECT_EQ(mClient.countChildren(mOuter), 1U);
}

} // namespace
