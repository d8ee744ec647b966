// Windows that are opened, resized and closed, in hosts of all kinds.
#include "Tests/Formats/CLAP/Window/ClapWindowTest.h"
#include "Tests/Integration/Editor/EditorWindow.h"
#include "Tests/Integration/Editor/KnobGeometry.h"
#include "Tests/Support/ResidentGrowth.h"
#include "Tests/Support/Subprocess.h"
#include "Tests/Support/TestRun.h"
#include "Tests/Support/XServer.h"

#include <array>
#include <cstdlib>
#include <memory>
#include <tuple>
#include <xcb/xcb_icccm.h>

namespace varno::test {
namespace {

class ClapWindowLife : public ClapWindowTest {
protected:
    xcb_atom_t atom(const std::string& name) const {
        const XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
            client.connection(),
            xcb_intern_atom(client.connection(), 0, static_cast<std::uint16_t>(name.size()), name.data()),
            nullptr));
        return reply->atom;
    }

    // What a window manager sends when a user closes a window.
    void askToClose(xcb_window_t window) const {
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = window;
        message.type = atom("WM_PROTOCOLS");
        message.data.data32[0] = atom("WM_DELETE_WINDOW");
        xcb_send_event(client.connection(), 0, window, XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<const char*>(&message));
        client.synchronise();
    }

    // Whether an open window responds to the mouse.
    void expectAlive(ClapWindowHost& host) {
        host.plugin().flush();
        host.plugin().takeSent();
        // From elsewhere: two clicks on one spot would be a double click.
        point(host, "METERGR1", {0, 0});
        click(host, "HP");
        SentEvents sent;
        EXPECT_TRUE(await(host, [&] {
            host.plugin().flush();
            for (const std::string& event : host.plugin().takeSent()) {
                sent.push_back(event);
            }
            return sent.size() >= 3;
        }));
        EXPECT_EQ(sent.size(), 3U);
    }
};

TEST_F(ClapWindowLife, isOfX11) {
    ClapWindowHost host(client);
    for (const bool isFloating : {false, true}) {
        EXPECT_TRUE(host.gui().is_api_supported(host.table(), "x11", isFloating));
        EXPECT_FALSE(host.gui().is_api_supported(host.table(), "wayland", isFloating));
        EXPECT_FALSE(host.gui().is_api_supported(host.table(), nullptr, isFloating));
    }
    const char* api = nullptr;
    bool isFloating = true;
    EXPECT_TRUE(host.gui().get_preferred_api(host.table(), &api, &isFloating));
    EXPECT_STREQ(api, "x11");
    EXPECT_FALSE(isFloating);
    EXPECT_FALSE(host.gui().create(host.table(), "x11", false)) << "there is one already";
    host.closeWindow();
    EXPECT_FALSE(host.gui().create(host.table(), "win32", false));
    EXPECT_FALSE(host.gui().create(host.table(), "", false));
}

TEST_F(ClapWindowLife, isAsLargeAsItsLayoutAndTheScale) {
    ClapWindowHost host(client);
    expectShown(host);
    for (const auto& [scale, width, height] :
         {std::tuple(1.0, 690, 454), std::tuple(1.5, 1035, 681), std::tuple(2.0, 1380, 908)}) {
        EXPECT_TRUE(host.gui().set_scale(host.table(), scale));
        std::uint32_t reported[2] = {};
        EXPECT_TRUE(host.gui().get_size(host.table(), &reported[0], &reported[1]));
        EXPECT_EQ(static_cast<int>(reported[0]), width);
        EXPECT_EQ(static_cast<int>(reported[1]), height);
        host.turn();
        EXPECT_EQ(host.size(), (Area{0, 0, width, height}));
    }
    for (const double scale : {0.0, -1.0, 1000.0}) {
        EXPECT_FALSE(host.gui().set_scale(host.table(), scale)) << scale;
    }
}

TEST_F(ClapWindowLife, isNotSeenBeforeItIsInTheHostAndShown) {
    ClapWindowHost host(client);
    EXPECT_TRUE(eventually([&] { return client.isShown(host.window()); }));
    EXPECT_EQ(client.children(host.parent()), std::vector{host.window()});
    EXPECT_TRUE(host.gui().hide(host.table()));
    EXPECT_TRUE(eventually([&] { return !client.isShown(host.window()); }));
    EXPECT_TRUE(host.gui().show(host.table()));
    expectShown(host);
    host.closeWindow();
    EXPECT_EQ(client.countChildren(host.parent()), 0U);
    ASSERT_TRUE(host.gui().create(host.table(), "x11", false));
    EXPECT_FALSE(host.gui().show(host.table())) << "it is in no window";
    clap_window_t nowhere{};
    nowhere.api = "x11";
    nowhere.x11 = 4;
    EXPECT_FALSE(host.gui().set_parent(host.table(), &nowhere));
}

TEST_F(ClapWindowLife, isResizedByTheHostInSteps) {
    ClapWindowHost host(client);
    expectShown(host);
    EXPECT_TRUE(host.gui().can_resize(host.table()));
    clap_gui_resize_hints_t hints{};
    EXPECT_TRUE(host.gui().get_resize_hints(host.table(), &hints));
    EXPECT_TRUE(hints.can_resize_horizontally && hints.can_resize_vertically && hints.preserve_aspect_ratio);
    EXPECT_EQ(hints.aspect_ratio_width * 454, hints.aspect_ratio_height * 690);
    const std::array<std::array<std::uint32_t, 4>, 4> sizes = {
        {{10, 10, 517, 340}, {700, 2000, 690, 454}, {870, 600, 862, 567}, {1400, 800, 1035, 681}}};
    host.requestedSize.reset();
    for (const auto& [width, height, stepWidth, stepHeight] : sizes) {
        std::uint32_t found[2] = {width, height};
        EXPECT_TRUE(host.gui().adjust_size(host.table(), &found[0], &found[1]));
        EXPECT_EQ(found[0], stepWidth);
        EXPECT_EQ(found[1], stepHeight);
        EXPECT_TRUE(host.gui().set_size(host.table(), found[0], found[1]));
        host.turn();
        EXPECT_EQ(host.size(), (Area{0, 0, static_cast<int>(stepWidth), static_cast<int>(stepHeight)}));
    }
    EXPECT_FALSE(host.gui().set_size(host.table(), 700, 460)) << "no step";
    EXPECT_EQ(host.requestedSize, std::nullopt) << "the host knows";
    EXPECT_EQ(host.size(), (Area{0, 0, 690, 454}));
}

TEST_F(ClapWindowLife, floatsWithATitleAboveAnother) {
    ClapWindowHost host(client, {.isFloating = true});
    ASSERT_NE(host.window(), xcb_window_t{XCB_WINDOW_NONE});
    expectShown(host);
    EXPECT_FALSE(host.gui().can_resize(host.table()));
    host.gui().suggest_title(host.table(), "Bass - Varno-S");
    clap_window_t other{};
    other.api = "x11";
    other.x11 = host.parent();
    EXPECT_FALSE(host.gui().set_parent(host.table(), &other));
    EXPECT_TRUE(host.gui().set_transient(host.table(), &other));
    xcb_icccm_get_text_property_reply_t name{};
    ASSERT_TRUE(xcb_icccm_get_wm_name_reply(
        client.connection(), xcb_icccm_get_wm_name(client.connection(), host.window()), &name, nullptr));
    EXPECT_EQ(std::string(name.name, name.name_len), "Bass - Varno-S");
    xcb_icccm_get_text_property_reply_wipe(&name);
    xcb_window_t above = XCB_WINDOW_NONE;
    ASSERT_TRUE(xcb_icccm_get_wm_transient_for_reply(
        client.connection(), xcb_icccm_get_wm_transient_for(client.connection(), host.window()), &above,
        nullptr));
    EXPECT_EQ(above, host.parent());
}

TEST_F(ClapWindowLife, floatingReportsThatAUserHasClosedItAndComesBack) {
    ClapWindowHost host(client, {.isFloating = true});
    expectShown(host);
    askToClose(host.window());
    EXPECT_TRUE(await(host, [&] { return host.closed == 1; }));
    EXPECT_FALSE(host.wasDestroyed);
    host.turn();
    EXPECT_EQ(host.closed, 1) << "once";
    EXPECT_TRUE(eventually([&] { return !client.isShown(host.window()); }));
    EXPECT_TRUE(host.gui().show(host.table()));
    EXPECT_TRUE(eventually([&] { return client.isShown(host.window()); }));
    expectShown(host);
    client.destroyWindow(host.window());
    EXPECT_TRUE(await(host, [&] { return host.closed == 2; }));
    EXPECT_TRUE(host.wasDestroyed);
    EXPECT_FALSE(host.gui().show(host.table()));
}

TEST_F(ClapWindowLife, needsNeitherTimersNorDescriptorsOfTheHost) {
    for (const bool hasTimers : {true, false}) {
        for (const bool watches : {true, false}) {
            ClapWindowHost host(client, {.hasTimers = hasTimers, .watchesDescriptors = watches});
            expectShown(host);
            expectAlive(host);
            EXPECT_EQ(host.timers.size(), hasTimers ? 1U : 0U);
            EXPECT_EQ(host.descriptors.empty(), !watches);
            EXPECT_EQ(std::set<int>(host.descriptors.begin(), host.descriptors.end()).size(),
                      host.descriptors.size())
                << "a host watches a descriptor once";
            host.closeWindow();
            EXPECT_TRUE(host.timers.empty());
            EXPECT_TRUE(host.descriptors.empty());
        }
    }
}

TEST_F(ClapWindowLife, isRefusedWithoutADisplay) {
    ClapWindowHost host(client);
    host.closeWindow();
    const std::string display = getenv("DISPLAY");
    for (const char* const name : {"", ":987654"}) {
        setenv("DISPLAY", name, 1);
        EXPECT_FALSE(host.gui().create(host.table(), "x11", false)) << name;
    }
    setenv("DISPLAY", display.c_str(), 1);
    EXPECT_NE(host.host().log, "");
    EXPECT_TRUE(host.gui().create(host.table(), "x11", false));
}

TEST_F(ClapWindowLife, doesNothingWhereThereIsNone) {
    ClapWindowHost host(client);
    host.closeWindow();
    host.closeWindow();
    std::uint32_t size[2] = {};
    EXPECT_FALSE(host.gui().get_size(host.table(), &size[0], &size[1]));
    EXPECT_FALSE(host.gui().can_resize(host.table()));
    EXPECT_FALSE(host.gui().show(host.table()));
    EXPECT_FALSE(host.gui().hide(host.table()));
    host.table()->on_main_thread(host.table());
}

TEST_F(ClapWindowLife, endsWithThePluginAndLetsGoOfWhatAHandHolds) {
    ClapWindowHost host(client);
    expectShown(host);
    point(host, "Gain", pullOf(0.0));
    press(host);
    host.closeWindow();
    host.plugin().flush();
    EXPECT_EQ(host.plugin().takeSent(), (SentEvents{"begin 1", "end 1"}));
    pointer.release();
    ClapWindowHost other(client);
    expectShown(other);
    other.endPlugin();
    EXPECT_EQ(client.countChildren(other.parent()), 0U);
    EXPECT_TRUE(other.timers.empty());
    EXPECT_TRUE(other.descriptors.empty());
}

TEST_F(ClapWindowLife, ofTwoEndsInAnyOrder) {
    for (const std::size_t closed : {0U, 1U}) {
        std::array<std::unique_ptr<ClapWindowHost>, 2> hosts = {
            std::make_unique<ClapWindowHost>(client),
            std::make_unique<ClapWindowHost>(client, WindowManners{.onScreen = {0, 500}})};
        expectShown(*hosts[0]);
        expectShown(*hosts[1]);
        hosts[closed]->closeWindow();
        expectAlive(*hosts[1 - closed]);
    }
}

TEST_F(ClapWindowLife, leavesNothingBehindHoweverOftenItIsOpened) {
    const int rounds = testScale() > 1 ? 500 : 60;
    constexpr int kWarmUp = 20;
    constexpr std::ptrdiff_t kGrowth = 1 << 20; // bytes, of which caches may take some
    const auto resources = countResources(client);
    std::ptrdiff_t descriptors = 0;
    ResidentGrowth growth(kWarmUp, rounds);
    for (int round = 0; round < rounds; ++round) {
        {
            ClapWindowHost host(client, {.hasTimers = round % 2 == 0, .isFloating = round % 4 == 3});
            for (int turns = 0; turns < round % 3; ++turns) { // none in every third
                host.turn();
            }
            if (round % 5 == 1) {
                host.closeWindow();
            }
        }
        if (round == kWarmUp) {
            descriptors = openDescriptors();
        }
        growth.after(round);
    }
    EXPECT_LE(openDescriptors(), descriptors);
    // The server notices that a client has disconnected some time later.
    EXPECT_TRUE(eventually([&] { return isNoMore(countResources(client), resources); }));
    RecordProperty("growth_bytes", std::to_string(growth.bytes()));
    if (!kIsSanitized) { // sanitizers keep what was freed
        EXPECT_LT(growth.bytes(), kGrowth);
    }
}

} // namespace
} // namespace varno::test
