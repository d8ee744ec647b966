// Windows that are opened and closed, in hosts of all kinds.
#include "Tests/Formats/LV2/UI/WindowTest.h"
#include "Tests/Integration/Editor/KnobGeometry.h"
#include "Tests/Support/ResidentGrowth.h"
#include "Tests/Support/Subprocess.h"
#include "Tests/Support/TestRun.h"
#include "Tests/Support/XServer.h"
#include "Validate/ElfFile.h"

#include "Tests/Integration/Editor/EditorWindow.h"

#include <array>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <xcb/xcb_icccm.h>

using namespace varno::test;
using Parent = varno::test::HostManners::Parent;

namespace {

class WindowLife : public WindowTest {
protected:
    // Whether an open window responds to the mouse.
    void expectAlive(WindowHost& host) {
        host.takeEvents();
        click(host, "HP");
        EXPECT_EQ(host.takeEvents().size(), 3U);
    }

    void setResources(const std::string& resources) const {
        xcb_change_property(client.connection(), XCB_PROP_MODE_REPLACE, client.screen().root,
                            XCB_ATOM_RESOURCE_MANAGER, XCB_ATOM_STRING, 8,
                            static_cast<std::uint32_t>(resources.size()), resources.data());
        client.synchronise();
    }

    // What a window manager sends when a user closes a window.
    void askToClose(xcb_window_t window) const {
        const auto atom = [this](const std::string& name) {
            const XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
                client.connection(),
                xcb_intern_atom(client.connection(), 0, static_cast<std::uint16_t>(name.size()), name.data()),
                nullptr));
            return reply->atom;
        };
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
};

std::ptrdiff_t threadsOfThisProcess() {
    const std::filesystem::directory_iterator threads("/proc/self/task");
    return std::distance(begin(threads), end(threads));
}

TEST(WindowBinary, offersOneWindow) {
    const LV2UI_Descriptor* const descriptor = windowDescriptor();
    ASSERT_NE(descriptor, nullptr);
    EXPECT_STREQ(descriptor->URI, "urn:morvak:varno-s#ui");
    EXPECT_EQ(windowDescriptor(1), nullptr);
    EXPECT_NE(descriptor->extension_data(LV2_UI__idleInterface), nullptr);
    EXPECT_NE(descriptor->extension_data(LV2_UI__showInterface), nullptr);
    EXPECT_EQ(descriptor->extension_data(LV2_UI__resize), nullptr);
    EXPECT_EQ(descriptor->extension_data("urn:nobody"), nullptr);
    EXPECT_EQ(descriptor->extension_data(nullptr), nullptr);
}

TEST(WindowBinary, showsNothingElseOfItself) {
    EXPECT_EQ(varno::validate::ElfFile(VARNO_WINDOW_BINARY).exportedSymbols(),
              std::set<std::string>{"lv2ui_descriptor"});
    EXPECT_FALSE(varno::validate::ElfFile(VARNO_WINDOW_BINARY).hasTextRelocations());
}

TEST_F(WindowLife, isAsLargeAsItsLayoutAndTheScale) {
    for (const auto& [scale, width, height] :
         {std::tuple(1.0F, 690, 454), std::tuple(1.5F, 1035, 681), std::tuple(2.0F, 1380, 908)}) {
        WindowHost host(client, {.scale = scale});
        ASSERT_TRUE(host.isOpen());
        host.turn();
        EXPECT_EQ(host.askedSize(), (Area{0, 0, width, height}));
        EXPECT_EQ(client.children(host.parent()), std::vector{host.widget()});
        EXPECT_EQ(host.areaOf(host.widget()), (Area{0, 0, width, height}));
        xcb_size_hints_t hints{};
        ASSERT_TRUE(xcb_icccm_get_wm_normal_hints_reply(
            client.connection(), xcb_icccm_get_wm_normal_hints(client.connection(), host.widget()), &hints,
            nullptr));
        EXPECT_EQ((std::array{hints.min_width, hints.min_height, hints.max_width, hints.max_height}),
                  (std::array{width, height, width, height}));
    }
}

TEST_F(WindowLife, takesTheDesktopsScaleWhereTheHostReportsNoValidOne) {
    setResources("Xft.dpi:\t144\n");
    for (const auto& scale : {std::optional<float>(), std::optional(0.0F), std::optional(-2.0F)}) {
        EXPECT_EQ(WindowHost(client, {.scale = scale}).askedSize(), (Area{0, 0, 1035, 681}));
    }
    EXPECT_EQ(WindowHost(client, {.scale = 1.0F}).askedSize(), (Area{0, 0, 690, 454}));
    setResources("");
}

TEST_F(WindowLife, needsNoHostThatResizes) {
    WindowHost host(client, {.offersResize = false});
    ASSERT_TRUE(host.isOpen());
    host.turn();
    EXPECT_EQ(host.areaOf(host.widget()), (Area{0, 0, 690, 454}));
}

TEST_F(WindowLife, isOnItsOwnWhereTheHostHasNoWindow) {
    for (const Parent parent : {Parent::Null, Parent::NotOffered}) {
        WindowHost host(client, {.parent = parent, .title = "Bass - Varno-S"});
        ASSERT_TRUE(host.isOpen());
        EXPECT_FALSE(client.isShown(host.widget()));
        EXPECT_EQ(host.show(), 0);
        EXPECT_TRUE(shows(host, "METERGR1", 0));
        EXPECT_EQ(host.areaOf(host.widget()).width, 690);
        expectAlive(host);
        xcb_icccm_get_text_property_reply_t name{};
        ASSERT_TRUE(xcb_icccm_get_wm_name_reply(
            client.connection(), xcb_icccm_get_wm_name(client.connection(), host.widget()), &name, nullptr));
        EXPECT_EQ(std::string(name.name, name.name_len), "Bass - Varno-S");
        xcb_icccm_get_text_property_reply_wipe(&name);
        EXPECT_EQ(host.hide(), 0);
        EXPECT_TRUE(eventually([&] { return !client.isShown(host.widget()); }));
    }
}

TEST_F(WindowLife, onItsOwnReportsThatAUserHasClosedItAndComesBack) {
    WindowHost host(client, {.parent = Parent::NotOffered});
    host.show();
    EXPECT_EQ(host.turn(), 0);
    askToClose(host.widget());
    EXPECT_TRUE(eventually([&] { return host.turn() != 0; }));
    EXPECT_TRUE(eventually([&] { return !client.isShown(host.widget()); }));
    EXPECT_EQ(host.show(), 0);
    EXPECT_TRUE(shows(host, "METERGR1", 0));
    EXPECT_EQ(host.turn(), 0);
    client.destroyWindow(host.widget());
    EXPECT_TRUE(eventually([&] { return host.turn() != 0; }));
    EXPECT_NE(host.show(), 0) << "gone for ever";
    EXPECT_NE(host.hide(), 0);
    EXPECT_NE(host.turn(), 0);
}

TEST_F(WindowLife, inTheHostsWindowIsTheHostsToShow) {
    const auto host = show();
    EXPECT_NE(host->show(), 0);
    EXPECT_NE(host->hide(), 0);
}

TEST_F(WindowLife, outlivesTheHostsWindow) {
    const auto host = show();
    host->destroyParent();
    for (int i = 0; i < 10; ++i) {
        host->tell(kGain, 0.1F * static_cast<float>(i));
        host->turn();
    }
    host->close();
    expectAlive(*show());
}

TEST_F(WindowLife, letsGoOfWhatAHandStillHolds) {
    const auto host = show();
    point(*host, "Gain", pullOf(0.0));
    press(*host);
    host->close();
    EXPECT_EQ(host->takeEvents(),
              (std::vector<HostEvent>{{HostEvent::Kind::Touch, kGain}, {HostEvent::Kind::Release, kGain}}));
    pointer.release();
}

TEST_F(WindowLife, isRefusedWithoutADisplayOrAPluginOrAWindow) {
    EXPECT_FALSE(WindowHost(client, {.plugin = "urn:nobody"}).isOpen());
    for (const char* const name : {"", ":987654"}) {
        setenv("DISPLAY", name, 1);
        EXPECT_FALSE(WindowHost(client).isOpen()) << name;
        EXPECT_FALSE(WindowHost(client, {.parent = Parent::Null}).isOpen()) << name;
    }
    setenv("DISPLAY", display().c_str(), 1);
    expectAlive(*show());
}

TEST_F(WindowLife, isMadeWithoutAnyFeature) {
    const LV2UI_Descriptor* const descriptor = windowDescriptor();
    const LV2_Feature* const none[] = {nullptr};
    for (const LV2_Feature* const* const features :
         {static_cast<const LV2_Feature* const*>(none), static_cast<const LV2_Feature* const*>(nullptr)}) {
        auto* const handle = descriptor->instantiate(descriptor, "urn:morvak:varno-s#mono", nullptr, nullptr,
                                                     nullptr, nullptr, features);
        ASSERT_NE(handle, nullptr);
        descriptor->cleanup(handle);
    }
}

TEST_F(WindowLife, ofTwoEndsInAnyOrder) {
    const std::array<HostManners, 2> manners = {
        HostManners{.plugin = "urn:morvak:varno-s#mono"},
        HostManners{.plugin = "urn:morvak:varno-s#stereo", .onScreen = {0, 400}}};
    for (const std::size_t opened : {0U, 1U}) {
        for (const std::size_t closed : {0U, 1U}) {
            std::array<std::unique_ptr<WindowHost>, 2> hosts;
            hosts[opened] = show(manners[opened]);
            hosts[1 - opened] = show(manners[1 - opened]);
            expectAlive(*hosts[0]);
            expectAlive(*hosts[1]);
            hosts[closed]->close();
            EXPECT_EQ(client.countChildren(hosts[closed]->parent()), 0U);
            expectAlive(*hosts[1 - closed]);
            hosts[1 - closed]->close();
            EXPECT_EQ(client.countChildren(hosts[1 - closed]->parent()), 0U);
        }
    }
}

TEST_F(WindowLife, leavesNothingBehindHoweverOftenItIsOpened) {
    const int rounds = testScale() > 1 ? 500 : 200;
    constexpr int kWarmUp = 20;
    constexpr std::ptrdiff_t kGrowth = 1 << 20; // bytes, of which caches may take some
    const auto resources = countResources(client);
    std::ptrdiff_t descriptors = 0;
    std::ptrdiff_t threads = 0;
    ResidentGrowth growth(kWarmUp, rounds);
    for (int round = 0; round < rounds; ++round) {
        {
            WindowHost host(client, {.parent = round % 4 == 3 ? Parent::Null : Parent::Window});
            ASSERT_TRUE(host.isOpen());
            for (int turns = 0; turns < round % 3; ++turns) { // none in every third
                host.turn();
            }
            if (round % 8 == 1) { // in a host's window, with a menu that is open in the end
                click(host, varno::BarLayout::Button::kPresets);
            }
        }
        if (round == kWarmUp) {
            descriptors = openDescriptors();
            threads = threadsOfThisProcess();
        }
        growth.after(round);
    }
    EXPECT_LE(openDescriptors(), descriptors);
    EXPECT_LE(threadsOfThisProcess(), threads);
    // The server notices that a client has disconnected some time later.
    EXPECT_TRUE(eventually([&] { return isNoMore(countResources(client), resources); }));
    RecordProperty("growth_bytes", std::to_string(growth.bytes()));
    if (!kIsSanitized) { // sanitizers keep what was freed
        EXPECT_LT(growth.bytes(), kGrowth);
    }
}

} // namespace
