// What a host and a person see of the window, and what the host receives of what the person does.
#include "Tests/Formats/CLAP/Window/ClapWindowTest.h"

#include "CLAP/Clap/ContextMenu.h"
#include "CLAP/Clap/ParamIndication.h"
#include "Tests/Integration/Editor/EditorWindow.h"
#include "Tests/Integration/Editor/KnobGeometry.h"
#include "Tests/Support/Popups.h"
#include "Tests/Support/XServer.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <utility>

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

// The marks that a host has beside controls.
class ClapIndications : public ClapWindowTest {
protected:
    ClapIndications() { expectShown(host); }

    // A control with what is around it, before the host has changed anything.
    Picture around(const std::string& id) {
        constexpr int kAround = 12;
        const Area area = shownArea(id);
        return Picture::ofWindow(
            client, host.window(),
            {area.x - kAround, area.y - kAround, area.width + 2 * kAround, area.height + 2 * kAround});
    }
    // The place of what has been marked, relative to the control; empty for nothing.
    Area markOf(const std::string& id) {
        for (int round = 0; round < 3; ++round) {
            host.turn();
        }
        const auto marked = differingArea(mBefore.at(id), around(id));
        return marked ? *marked : Area{};
    }
    // What a mark has covered is drawn again a while later.
    bool becomes(const std::string& id, const Area& mark) {
        return await(host, [&] { return markOf(id) == mark; });
    }
    void automate(clap_id id, std::uint32_t state, const clap_color_t* color = nullptr) {
        mIndications.set_automation(host.table(), id, state, color);
    }

    ClapWindowHost host{client};
    const clap_plugin_param_indication_t& mIndications = *static_cast<const clap_plugin_param_indication_t*>(
        requireExtension(host.table(), CLAP_EXT_PARAM_INDICATION));
    const std::map<std::string, Picture> mBefore = [this] {
        std::map<std::string, Picture> before;
        for (const std::string id : {"Gain", "Volume"}) {
            EXPECT_TRUE(await(host, [&] {
                const Picture last = std::exchange(before[id], around(id));
                return last == before[id] && last.countColours() > 20;
            }));
        }
        return before;
    }();
};

constexpr clap_id kGainId = 1;

TEST_F(ClapIndications, differInFormAlone) {
    const clap_color_t color{255, 200, 40, 90};
    std::vector<Picture> forms{around("Gain")};
    for (const std::uint32_t state :
         {CLAP_PARAM_INDICATION_AUTOMATION_PRESENT, CLAP_PARAM_INDICATION_AUTOMATION_PLAYING,
          CLAP_PARAM_INDICATION_AUTOMATION_RECORDING, CLAP_PARAM_INDICATION_AUTOMATION_OVERRIDING}) {
        automate(kGainId, state, &color);
        Picture shown = forms.front();
        EXPECT_TRUE(await(host, [&] {
            const Picture last = std::exchange(shown, around("Gain"));
            return last == shown && std::ranges::count(forms, shown) == 0;
        })) << state;
        forms.push_back(shown);
        EXPECT_TRUE(becomes("Volume", Area{}));
    }
    automate(kGainId, CLAP_PARAM_INDICATION_AUTOMATION_NONE);
    EXPECT_TRUE(becomes("Gain", Area{}));
}

TEST_F(ClapIndications, haveTheColourOfTheHost) {
    const clap_color_t color{255, 200, 40, 90};
    automate(kGainId, CLAP_PARAM_INDICATION_AUTOMATION_PLAYING, &color);
    Area line;
    EXPECT_TRUE(await(host, [&] {
        line = markOf("Gain");
        return line.width == shownArea("Gain").width;
    }));
    EXPECT_EQ(around("Gain").at({line.x, line.y}), 0xC8285AU);
    const clap_color_t unseen{0, 200, 40, 90};
    automate(kGainId, CLAP_PARAM_INDICATION_AUTOMATION_PLAYING, &unseen);
    EXPECT_TRUE(await(host, [&] { return around("Gain").at({line.x, line.y}) != 0xC8285AU; }));
}

TEST_F(ClapIndications, ofAMappingAreAtTheLeftAndSurviveTheWindow) {
    mIndications.set_mapping(host.table(), kGainId, true, nullptr, "CC 7", "\xFF a text of the host's");
    Area line;
    EXPECT_TRUE(await(host, [&] {
        line = markOf("Gain");
        return line.height == shownArea("Gain").height;
    }));
    EXPECT_LT(line.width, 5);
    clickBar(host, BarLayout::Button::kCurve); // everything is put into place anew
    clickBar(host, BarLayout::Button::kCurve);
    EXPECT_TRUE(becomes("Gain", line));
    mIndications.set_mapping(host.table(), kGainId, false, nullptr, nullptr, nullptr);
    EXPECT_TRUE(becomes("Gain", Area{}));
}

// Between whole scales: every mark is where its control is then, and as thick as a line of two pixels there.
TEST_F(ClapIndications, followTheScaleOfTheWindow) {
    constexpr double kScale = 1.25;
    ASSERT_TRUE(host.gui().set_scale(host.table(), kScale));
    const auto scaled = [](int length) { return static_cast<int>(std::lround(length * kScale)); };
    const Area face = areaOf("Gain");
    const Area control{scaled(face.x), scaled(BarLayout::kHeight) + scaled(face.y), scaled(face.width),
                       scaled(face.height)};
    constexpr int kAround = 15;
    const Area surroundings{control.x - kAround, control.y - kAround, control.width + 2 * kAround,
                            control.height + 2 * kAround};
    const auto look = [&] { return Picture::ofWindow(client, host.window(), surroundings); };
    Picture before;
    ASSERT_TRUE(await(host, [&] {
        const Picture last = std::exchange(before, look());
        return last == before && last.countColours() > 20;
    }));
    const auto markIs = [&](const Area& expected) {
        return await(host, [&] {
            const auto marked = differingArea(before, look());
            return marked && *marked == expected;
        });
    };
    constexpr int kThickness = 3;
    const clap_color_t color{255, 200, 40, 90};
    automate(kGainId, CLAP_PARAM_INDICATION_AUTOMATION_PLAYING, &color);
    EXPECT_TRUE(markIs({kAround, kAround + control.height - kThickness, control.width, kThickness}));
    automate(kGainId, CLAP_PARAM_INDICATION_AUTOMATION_NONE);
    EXPECT_TRUE(await(host, [&] { return !differingArea(before, look()); }));
    mIndications.set_mapping(host.table(), kGainId, true, &color, "CC 7", "");
    EXPECT_TRUE(markIs({kAround - 2 * kThickness, kAround, kThickness, control.height}));
}

TEST_F(ClapIndications, ofParametersThatAreNotThereAreIgnored) {
    automate(99, CLAP_PARAM_INDICATION_AUTOMATION_PLAYING);
    automate(kGainId, 77);
    mIndications.set_mapping(host.table(), CLAP_INVALID_ID, true, nullptr, nullptr, nullptr);
    EXPECT_TRUE(becomes("Gain", Area{}));
    EXPECT_EQ(requireExtension(host.table(), CLAP_EXT_PARAM_INDICATION_COMPAT), &mIndications);
}

} // namespace
} // namespace varno::test
