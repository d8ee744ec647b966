#include "Window/Monitors.h"

#include "Tests/Support/XServer.h"

#include <gmock/gmock.h>

#include <optional>
#include <string_view>
#include <sys/uio.h>
#include <xcb/randr.h>
#include <xcb/xcbext.h>

namespace varno::test {
namespace {

using testing::ElementsAre;

constexpr WindowArea kScreen{0, 0, 1280, 900};
constexpr WindowArea kLeft{0, 0, 800, 900};
constexpr WindowArea kRight{800, 100, 480, 600};

class MonitorsTest : public testing::Test {
protected:
    explicit MonitorsTest(const std::vector<std::string>& serverWords = {})
        : mServer({}, serverWords) {}

    // Divides the screen: the first monitor has the only output, the other none.
    void divide() {
        const XReply<xcb_randr_get_screen_resources_reply_t> resources(xcb_randr_get_screen_resources_reply(
            mPerson.connection(), xcb_randr_get_screen_resources(mPerson.connection(), root()), nullptr));
        ASSERT_EQ(xcb_randr_get_screen_resources_outputs_length(resources.get()), 1);
        setMonitor(kLeft, "left", xcb_randr_get_screen_resources_outputs(resources.get())[0]);
        setMonitor(kRight, "right", {});
    }

    void setMonitor(const WindowArea& area, std::string_view name, std::optional<xcb_randr_output_t> output) {
        struct {
            xcb_randr_set_monitor_request_t request;
            xcb_randr_monitor_info_t info;
            xcb_randr_output_t output;
        } monitor{};
        monitor.request.window = root();
        monitor.info.name = mConnection.atom(name);
        monitor.info.x = static_cast<std::int16_t>(area.x);
        monitor.info.y = static_cast<std::int16_t>(area.y);
        monitor.info.width = static_cast<std::uint16_t>(area.width);
        monitor.info.height = static_cast<std::uint16_t>(area.height);
        monitor.info.width_in_millimeters = 1;
        monitor.info.height_in_millimeters = 1;
        monitor.info.nOutput = output ? 1 : 0;
        monitor.output = output.value_or(0);
        // The library's own function for this request sends a wrong length, and the connection ends.
        constexpr std::size_t kLibrarysParts = 2; // before those of the request
        iovec parts[kLibrarysParts + 1] = {};
        parts[kLibrarysParts] = {&monitor, sizeof monitor - (output ? 0 : sizeof monitor.output)};
        const xcb_protocol_request_t kind{1, &xcb_randr_id, XCB_RANDR_SET_MONITOR, 1};
        xcb_send_request(mPerson.connection(), 0, parts + kLibrarysParts, &kind);
        mPerson.synchronise();
    }

    void setWords(std::string_view property, const std::vector<std::uint32_t>& words) {
        xcb_change_property(mPerson.connection(), XCB_PROP_MODE_REPLACE, root(), mConnection.atom(property),
                            XCB_ATOM_CARDINAL, 32, static_cast<std::uint32_t>(words.size()), words.data());
        mPerson.synchronise();
    }

    xcb_window_t root() const { return mPerson.screen().root; }

    XServer mServer;
    XConnection mConnection{mServer.display()};
    XClient mPerson{mServer.display()};
};

TEST_F(MonitorsTest, OneIsTheWholeScreen) {
    EXPECT_THAT(monitors(mConnection), ElementsAre(kScreen));
    EXPECT_EQ(monitorOf(mConnection, {2000, 2000, 1, 1}), kScreen);
}

TEST_F(MonitorsTest, SeveralDivideIt) {
    divide();
    EXPECT_THAT(monitors(mConnection), testing::UnorderedElementsAre(kLeft, kRight));
    EXPECT_EQ(monitorOf(mConnection, {10, 10, 20, 20}), kLeft);
    EXPECT_EQ(monitorOf(mConnection, {900, 200, 20, 20}), kRight);
    EXPECT_EQ(monitorOf(mConnection, {790, 200, 30, 20}), kRight); // 20 of 30 columns
    EXPECT_EQ(monitorOf(mConnection, {775, 200, 30, 20}), kLeft);
    EXPECT_EQ(monitorOf(mConnection, {1200, 10, 20, 20}), kRight); // between
    EXPECT_EQ(monitorOf(mConnection, {-50, -50, 20, 20}), kLeft);
    EXPECT_EQ(monitorOf(mConnection, {1300, 850, 20, 20}), kRight);
    EXPECT_EQ(monitorOf(mConnection, {800, 100, 0, 0}), kRight); // without pixels of its own
}

TEST_F(MonitorsTest, PanelsTakeAPartOfThem) {
    EXPECT_EQ(workAreaOf(mConnection, {10, 10, 20, 20}), kScreen); // without a window manager
    setWords("_NET_WORKAREA", {0, 30, 1280, 840});
    EXPECT_EQ(workAreaOf(mConnection, {10, 10, 20, 20}), (WindowArea{0, 30, 1280, 840}));
    divide();
    EXPECT_EQ(workAreaOf(mConnection, {10, 10, 20, 20}), (WindowArea{0, 30, 800, 840}));
    EXPECT_EQ(workAreaOf(mConnection, {900, 200, 20, 20}), kRight);
    setWords("_NET_WORKAREA", {0, 0, 1280, 900, 0, 0, 1280, 500});
    setWords("_NET_CURRENT_DESKTOP", {1});
    EXPECT_EQ(workAreaOf(mConnection, {900, 200, 20, 20}), (WindowArea{800, 100, 480, 400}));
    setWords("_NET_CURRENT_DESKTOP", {2}); // of which nothing is known
    EXPECT_EQ(workAreaOf(mConnection, {900, 200, 20, 20}), kRight);
    setWords("_NET_CURRENT_DESKTOP", {0});
    setWords("_NET_WORKAREA", {0, 0, 700, 900}); // nothing of this monitor
    EXPECT_EQ(workAreaOf(mConnection, {900, 200, 20, 20}), kRight);
    setWords("_NET_WORKAREA", {0, 0, 700}); // not a whole area
    EXPECT_EQ(workAreaOf(mConnection, {900, 200, 20, 20}), kRight);
}

TEST_F(MonitorsTest, AWindowsPlaceIsThatOnTheScreen) {
    const XWindow outer(mPerson, {100, 50, 300, 200});
    const XWindow inner(mPerson, {0, 0, 30, 20});
    xcb_reparent_window(mPerson.connection(), inner.id(), outer.id(), 7, 9);
    mPerson.synchronise();
    EXPECT_EQ(areaOnScreen(mConnection, inner.id()), (WindowArea{107, 59, 30, 20}));
    EXPECT_EQ(areaOnScreen(mConnection, root()), kScreen);
    EXPECT_EQ(areaOnScreen(mConnection, XCB_WINDOW_NONE), std::nullopt);
}

class WithoutMonitors : public MonitorsTest {
protected:
    WithoutMonitors()
        : MonitorsTest({"-extension", "RANDR"}) {}
};

TEST_F(WithoutMonitors, TheScreenIsOne) {
    ASSERT_FALSE(mConnection.hasExtension(xcb_randr_id));
    EXPECT_THAT(monitors(mConnection), ElementsAre(kScreen));
    mConnection.throwIfLost(); // as after a request that the server does not know
}

} // namespace
} // namespace varno::test
