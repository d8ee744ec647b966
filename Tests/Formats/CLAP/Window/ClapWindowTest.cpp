// What a host and a person see of the window, and what the host receives of what the person does.
#include "Tests/Formats/CLAP/Window/ClapWindowTest.h"

#include "CLAP/Clap/ContextMenu.h"
#include "Tests/Integration/Editor/EditorWindow.h"
#include "Tests/Integration/Editor/KnobGeometry.h"
#include "Tests/Support/Popups.h"
#include "Tests/Support/XServer.h"

#include <cstdlib>

namespace varno::test {

namespace {

const std::string& sharedDisplay() {
    static const XServer server;
    return server.display();
}

// Below the bar.
Area shownArea(const std::string& id) {
    Area area = areaOf(id);
    area.y += BarLayout::kHeight;
    return area;
}

} // namespace

ClapWindowTest::ClapWindowTest()
    : client(sharedDisplay()) {
    setenv("DISPLAY", sharedDisplay().c_str(), 1);
    // What somebody has chosen for all windows does not matter here.
    setenv("XDG_CONFIG_HOME", "/nowhere", 1);
    setenv("XDG_DATA_HOME", "/nowhere", 1);
    pointer.move({client.screen().width_in_pixels - 1, client.screen().height_in_pixels - 1});
}

Picture ClapWindowTest::pictureOf(ClapWindowHost& host, const std::string& id) const {
    return Picture::ofWindow(client, host.window(), shownArea(id));
}

void ClapWindowTest::expectShown(ClapWindowHost& host) {
    EXPECT_TRUE(await(host, [&] { return pictureOf(host, "Gain").countColours() > 20; }))
        << "the editor does not appear";
}

void ClapWindowTest::pointAt(ClapWindowHost& host, Place inWindow) {
    const XReply<xcb_translate_coordinates_reply_t> corner(xcb_translate_coordinates_reply(
        client.connection(),
        xcb_translate_coordinates(client.connection(), host.window(), client.screen().root, 0, 0), nullptr));
    pointer.move(Place{corner->dst_x, corner->dst_y} + inWindow);
    host.turn();
    host.turn();
}

void ClapWindowTest::point(ClapWindowHost& host, const std::string& id, Place inControl) {
    const Area area = shownArea(id);
    pointAt(host, Place{area.x, area.y} + inControl);
}

void ClapWindowTest::press(ClapWindowHost& host) {
    pointer.press();
    host.turn();
    host.turn();
}

void ClapWindowTest::release(ClapWindowHost& host) {
    pointer.release();
    host.turn();
    host.turn();
}

void ClapWindowTest::click(ClapWindowHost& host, const std::string& id) {
    const Area area = areaOf(id);
    point(host, id, {area.width / 2, area.height / 2});
    press(host);
    release(host);
}

void ClapWindowTest::clickBar(ClapWindowHost& host, BarLayout::Button button) {
    const Box box = BarLayout::row(button).place;
    pointAt(host, {box.x + box.width / 2, box.y + box.height / 2});
    press(host);
    release(host);
}

namespace {

// A buffer of silence.
void processOnce(HostedClap& plugin) {
    std::vector<float> left(64);
    std::vector<float> right(64);
    float* const channels[] = {left.data(), right.data()};
    plugin.process(channels, channels, 64);
}

TEST_F(ClapWindowTest, handsTheHostAGestureWithItsValues) {
    ClapWindowHost host(client);
    expectShown(host);
    host.plugin().takeSent();
    point(host, "Gain", pullOf(0.0));
    press(host);
    processOnce(host.plugin());
    EXPECT_EQ(host.plugin().takeSent(), SentEvents{"begin 1"});
    point(host, "Gain", pullOf(0.25));
    EXPECT_GT(host.host().flushes, 0);
    processOnce(host.plugin());
    const SentEvents moved = host.plugin().takeSent();
    ASSERT_EQ(moved.size(), 1U);
    EXPECT_EQ(moved[0].substr(0, 5), "1=0.7") << moved[0];
    release(host);
    host.plugin().flush();
    const SentEvents ended = host.plugin().takeSent();
    ASSERT_FALSE(ended.empty());
    EXPECT_EQ(ended.back(), "end 1");
    EXPECT_NEAR(host.plugin().value("Gain"), 0.75, 0.02);
}

TEST_F(ClapWindowTest, showsTheValuesOfTheHostAndHandsThemBackToNobody) {
    ClapWindowHost host(client);
    expectShown(host);
    const Picture before = pictureOf(host, "Gain");
    host.plugin().add({{0, 1, 1.0}});
    processOnce(host.plugin());
    EXPECT_TRUE(await(host, [&] { return pictureOf(host, "Gain") != before; }));
    host.plugin().flush();
    EXPECT_EQ(host.plugin().takeSent(), SentEvents());
}

TEST_F(ClapWindowTest, showsALoadedState) {
    ClapWindowHost host(client);
    expectShown(host);
    const std::string usual = host.plugin().save();
    const Picture before = pictureOf(host, "Gain");
    host.plugin().add({{0, 1, 0.9}});
    processOnce(host.plugin());
    EXPECT_TRUE(await(host, [&] { return pictureOf(host, "Gain") != before; }));
    EXPECT_TRUE(host.plugin().load(usual));
    EXPECT_TRUE(await(host, [&] { return pictureOf(host, "Gain") == before; }));
    host.plugin().flush();
    EXPECT_EQ(host.plugin().takeSent(), SentEvents()) << "the host reads the values itself";
}

TEST_F(ClapWindowTest, bypassesWithTheBar) {
    ClapWindowHost host(client);
    expectShown(host);
    clickBar(host, BarLayout::Button::kBypass);
    processOnce(host.plugin());
    EXPECT_EQ(host.plugin().takeSent(), SentEvents{"0=1."});
    EXPECT_EQ(host.plugin().value("Bypass"), 1.0);
}

// By a row of the menu: its heading is the first.
TEST_F(ClapWindowTest, changesTheQualityWithTheBarAndHasTheHostRestartIt) {
    constexpr int kRows = 5;
    constexpr int kFourTimes = 3;
    ClapWindowHost host(client);
    expectShown(host);
    clickBar(host, BarLayout::Button::kQuality);
    ASSERT_TRUE(await(host, [&] { return shownPopup(client, kMenuType).width > 0; }));
    const Area menu = shownPopup(client, kMenuType);
    pointer.move({menu.middle().x, menu.y + menu.height * (2 * kFourTimes + 1) / (2 * kRows)});
    press(host);
    release(host);
    EXPECT_TRUE(await(host, [&] { return host.plugin().value("Quality") == 2.0; }));
    EXPECT_EQ(host.plugin().latency(), 1U);
    processOnce(host.plugin());
    EXPECT_EQ(host.plugin().takeSent(), SentEvents{"1000=2."});
    EXPECT_EQ(host.host().restarts, 1);
    host.plugin().activate();
    EXPECT_EQ(host.plugin().latency(), 46U);
}

// A host with a menu for parameters.
constexpr clap_host_context_menu_t kHostMenu = {
    [](const clap_host_t* host, const clap_context_menu_target_t* target,
       const clap_context_menu_builder_t* builder) {
        hostOf(host).log += "menu of " + std::to_string(target->id) + '\n';
        const clap_context_menu_submenu_t inner{"MIDI", true};
        const clap_context_menu_entry_t learn{"Learn", true, 17};
        const clap_context_menu_check_entry_t follow{"Follow", true, true, 18};
        return !builder->supports(builder, 99) && !builder->add_item(builder, 99, &learn) &&
               builder->add_item(builder, CLAP_CONTEXT_MENU_ITEM_BEGIN_SUBMENU, &inner) &&
               builder->add_item(builder, CLAP_CONTEXT_MENU_ITEM_ENTRY, &learn) &&
               builder->add_item(builder, CLAP_CONTEXT_MENU_ITEM_SEPARATOR, nullptr) &&
               builder->add_item(builder, CLAP_CONTEXT_MENU_ITEM_END_SUBMENU, nullptr) &&
               builder->add_item(builder, CLAP_CONTEXT_MENU_ITEM_CHECK_ENTRY, &follow);
    },
    [](const clap_host_t* host, const clap_context_menu_target_t* target, clap_id action) {
        hostOf(host).log += "action " + std::to_string(action) + " of " + std::to_string(target->id) + '\n';
        return true;
    },
    [](const clap_host_t*) { return false; },
    [](const clap_host_t*, const clap_context_menu_target_t*, std::int32_t, std::int32_t, std::int32_t) {
        return false;
    },
};

TEST_F(ClapWindowTest, hasTheHostsItemsInTheMenuOfAControl) {
    constexpr int kInTheLastRow = 12; // pixels above the menu's end
    ClapWindowHost host(client);
    host.host().offer(CLAP_EXT_CONTEXT_MENU, &kHostMenu);
    expectShown(host);
    point(host, "Gain", pullOf(0.0));
    pointer.press(Button::kRight);
    pointer.release(Button::kRight);
    ASSERT_TRUE(await(host, [&] { return shownPopup(client, kMenuType).width > 0; }));
    EXPECT_EQ(host.host().log, "menu of 1\n");
    const Area menu = shownPopup(client, kMenuType);
    pointer.move({menu.middle().x, menu.y + menu.height - kInTheLastRow});
    press(host);
    release(host);
    EXPECT_TRUE(await(host, [&] { return host.host().log == "menu of 1\naction 18 of 1\n"; }))
        << host.host().log;
}

// The host's value for a control waits while the user holds it.
TEST_F(ClapWindowTest, letsTheUserKeepAControl) {
    ClapWindowHost host(client);
    expectShown(host);
    point(host, "Gain", pullOf(0.0));
    press(host);
    point(host, "Gain", pullOf(0.2));
    const Picture held = pictureOf(host, "Gain");
    host.plugin().add({{0, 1, 0.0}});
    processOnce(host.plugin());
    for (int round = 0; round < 5; ++round) {
        host.turn();
    }
    EXPECT_EQ(pictureOf(host, "Gain"), held);
    release(host);
    EXPECT_TRUE(await(host, [&] { return pictureOf(host, "Gain") != held; }));
}

// Meters fall to nothing and rise with the sound.
TEST_F(ClapWindowTest, showsTheMetersOfTheSound) {
    ClapWindowHost host(client);
    expectShown(host);
    const Picture quiet = pictureOf(host, "METERGR1");
    std::vector<float> loud(512);
    EXPECT_TRUE(await(host, [&] {
        for (std::size_t frame = 0; frame < loud.size(); ++frame) {
            loud[frame] = frame % 64 < 32 ? 1.0F : -1.0F;
        }
        float* const channels[] = {loud.data(), loud.data()};
        host.plugin().process(channels, channels, 512);
        return pictureOf(host, "METERGR1") != quiet;
    }));
}

} // namespace
} // namespace varno::test
