// What is exchanged between the window and the ports of its host.
#include "Tests/Formats/LV2/UI/WindowTest.h"
#include "Tests/Integration/Editor/EditorWindow.h"
#include "Tests/Integration/Editor/KnobGeometry.h"
#include "Tests/Support/Popups.h"

#include <algorithm>
#include <cmath>
#include <limits>

using namespace varno::test;
using Kind = varno::test::HostEvent::Kind;

namespace {

// What float arithmetic may lose.
constexpr float kRounding = 1e-6F;

std::vector<HostEvent> writesOf(std::vector<HostEvent> events) {
    std::erase_if(events, [](const HostEvent& event) { return event.kind != Kind::Write; });
    return events;
}

std::vector<HostEvent> only(std::vector<HostEvent> events, std::uint32_t port) {
    std::erase_if(events, [port](const HostEvent& event) { return event.port != port; });
    return events;
}

class WindowPorts : public WindowTest {
protected:
    // A touch, writes of changing values up to this one, a release, and nothing else.
    static void expectGesture(const std::vector<HostEvent>& events, std::uint32_t port, float last) {
        ASSERT_GE(events.size(), 3U);
        EXPECT_EQ(events.front(), (HostEvent{Kind::Touch, port}));
        EXPECT_EQ(events.back(), (HostEvent{Kind::Release, port}));
        for (std::size_t i = 1; i + 1 < events.size(); ++i) {
            EXPECT_EQ(events[i].kind, Kind::Write);
            EXPECT_EQ(events[i].port, port);
            EXPECT_NE(events[i].value, events[i - 1].value);
        }
        EXPECT_NEAR(events[events.size() - 2].value, last, kRounding);
    }
    static Picture picture(WindowHost& host, varno::BarLayout::Button button) {
        const varno::Box box = varno::BarLayout::row(button).place;
        return host.picture({box.x, box.y, box.width, box.height});
    }
    // By a row of the menu: its heading is the first.
    void chooseQuality(WindowHost& host, int row) {
        constexpr int kRows = 5;
        click(host, varno::BarLayout::Button::kQuality);
        ASSERT_TRUE(await(host, [&] { return shownPopup(client, kMenuType).width > 0; }));
        const Area menu = shownPopup(client, kMenuType);
        pointer.move({menu.middle().x, menu.y + menu.height * (2 * row + 1) / (2 * kRows)});
        press(host);
        release(host);
        EXPECT_TRUE(await(host, [&] { return shownPopup(client, kMenuType).width == 0; }));
        host.turn();
    }
};

TEST_F(WindowPorts, hearOfADraggedKnob) {
    const auto host = show();
    EXPECT_TRUE(host->takeEvents().empty()) << "told before anybody did anything";
    turnKnob(*host, "Gain", 0.25);
    expectGesture(host->takeEvents(), kGain, 0.75F);
    EXPECT_TRUE(shows(*host, "Gain", knobPicture(0.75)));
    click(*host, "HP");
    EXPECT_EQ(host->takeEvents(),
              (std::vector<HostEvent>{
                  {Kind::Touch, kHighPass}, {Kind::Write, kHighPass, 1.0F}, {Kind::Release, kHighPass}}));
}

TEST_F(WindowPorts, bypassIsThePortOfThatName) {
    const auto host = show();
    click(*host, varno::BarLayout::Button::kBypass);
    EXPECT_EQ(host->takeEvents(), (std::vector<HostEvent>{{Kind::Write, kEnabled, 0.0F}}));
    click(*host, varno::BarLayout::Button::kBypass);
    EXPECT_EQ(host->takeEvents(), (std::vector<HostEvent>{{Kind::Write, kEnabled, 1.0F}}));
    // What the host has written is known to the button.
    host->tell(kEnabled, 0.0F);
    host->turn();
    click(*host, varno::BarLayout::Button::kBypass);
    EXPECT_EQ(host->takeEvents(), (std::vector<HostEvent>{{Kind::Write, kEnabled, 1.0F}}));
}

TEST_F(WindowPorts, qualityIsThePortOfThatName) {
    const auto host = show();
    const Picture one = picture(*host, varno::BarLayout::Button::kQuality);
    chooseQuality(*host, 3);
    EXPECT_EQ(host->takeEvents(), (std::vector<HostEvent>{{Kind::Write, kQuality, 4.0F}}));
    EXPECT_TRUE(await(*host, [&] { return picture(*host, varno::BarLayout::Button::kQuality) != one; }));
    // What the host has written is shown; of a factor that there is not, the next lower one.
    host->tell(kQuality, 1.9F);
    EXPECT_TRUE(await(*host, [&] { return picture(*host, varno::BarLayout::Button::kQuality) == one; }));
    EXPECT_TRUE(host->takeEvents().empty());
}

TEST_F(WindowPorts, qualityIsWhatTheSampleRateAllows) {
    const auto host = show({.rateHz = 96'000.0F});
    host->tell(kQuality, 4.0F);
    host->turn();
    const Picture four = picture(*host, varno::BarLayout::Button::kQuality);
    host->tell(kQuality, 8.0F);
    EXPECT_TRUE(await(*host, [&] { return picture(*host, varno::BarLayout::Button::kQuality) != four; }))
        << "a mark";
    const Picture limited = picture(*host, varno::BarLayout::Button::kQuality);
    chooseQuality(*host, 4); // the wish is the port's
    EXPECT_EQ(host->takeEvents(), (std::vector<HostEvent>{{Kind::Write, kQuality, 8.0F}}));
    const auto unlimited = show();
    unlimited->tell(kQuality, 8.0F);
    unlimited->turn();
    EXPECT_NE(picture(*unlimited, varno::BarLayout::Button::kQuality), limited);
}

TEST_F(WindowPorts, hearOfAPresetAndOfWhatTakesItBack) {
    const auto host = show();
    click(*host, varno::BarLayout::Button::kNextPreset);
    const auto loaded = only(writesOf(host->takeEvents()), kGain);
    ASSERT_EQ(loaded.size(), 1U);
    EXPECT_NE(loaded.front().value, 0.5F);
    click(*host, varno::BarLayout::Button::kUndo);
    EXPECT_EQ(only(writesOf(host->takeEvents()), kGain),
              (std::vector<HostEvent>{{Kind::Write, kGain, 0.5F}}));
}

TEST_F(WindowPorts, ofTheMonoPluginHaveOtherNumbers) {
    const auto host = show({.plugin = "urn:morvak:varno-s#mono"});
    turnKnob(*host, "Gain", -0.25);
    expectGesture(host->takeEvents(), kGain - 2, 0.25F);
}

TEST_F(WindowPorts, hearOfValuesWithoutTouchWhereTheHostDoesNotOfferIt) {
    const auto host = show({.offersTouch = false});
    click(*host, "HP");
    EXPECT_EQ(host->takeEvents(), (std::vector<HostEvent>{{Kind::Write, kHighPass, 1.0F}}));
}

TEST_F(WindowPorts, moveTheControls) {
    WindowHost host(client);
    for (const float value : {0.2F, 0.9F}) {
        // Also before the first idle call.
        host.tell(kMix, value);
        host.tell(kGain, 1.0F - value);
        EXPECT_TRUE(shows(host, "Gain", knobPicture(1.0F - value)));
        EXPECT_TRUE(shows(host, "Mix", knobPicture(value)));
    }
    EXPECT_TRUE(host.takeEvents().empty()) << "what the host tells is not told back";
    turnKnob(host, "Mix", -0.1);
    expectGesture(host.takeEvents(), kMix, 0.8F);
}

TEST_F(WindowPorts, moveTheMeters) {
    const auto host = show();
    host->tell(kReductionLeft, 1.0F);
    const auto full = art.control(controlOf("METERGR1"), DemoGain_ViewLayout::Art::kMeterOn, 0);
    EXPECT_TRUE(shows(*host, "METERGR1", full));
    EXPECT_TRUE(shows(*host, "METERGR2", 0)) << "each shows its own channel";
    host->tell(kReductionLeft, 0.0F);
    EXPECT_TRUE(shows(*host, "METERGR1", 0));
}

TEST_F(WindowPorts, mayReportInvalidValues) {
    const auto host = show();
    const double number = 0.9;
    host->tell(kMix, sizeof number, 0, &number);
    host->tell(kMix, sizeof(float), 7, &number);
    host->tell(kMix, sizeof(float), 0, nullptr);
    host->tell(kMix, std::numeric_limits<float>::quiet_NaN());
    host->tell(kReductionLeft, std::numeric_limits<float>::infinity());
    for (const std::uint32_t port : {0U, 3U, kEnabled, 22U, 23U, 4711U}) {
        host->tell(port, 0.7F);
    }
    host->tell(kGain, 3.0F);
    EXPECT_TRUE(shows(*host, "Gain", knobPicture(1.0)));
    EXPECT_TRUE(shows(*host, "Mix", 0));
    EXPECT_TRUE(shows(*host, "METERGR1", 0));
    EXPECT_TRUE(host->takeEvents().empty());
}

TEST_F(WindowPorts, mayRepeatWhatTheyReceive) {
    const auto host = show({.repeatsWrites = true});
    turnKnob(*host, "Gain", 0.25);
    expectGesture(host->takeEvents(), kGain, 0.75F);
    EXPECT_TRUE(shows(*host, "Gain", knobPicture(0.75)));
    host->turn();
    EXPECT_TRUE(host->takeEvents().empty());
}

TEST_F(WindowPorts, doNotPullAKnobOutOfAHand) {
    const auto host = show();
    point(*host, "Gain", pullOf(0.0));
    press(*host);
    point(*host, "Gain", pullOf(0.25));
    host->tell(kGain, 0.1F);
    host->tell(kMix, 0.6F);
    EXPECT_TRUE(shows(*host, "Mix", knobPicture(0.6F)));
    EXPECT_TRUE(shows(*host, "Gain", knobPicture(0.75)));
    release(*host);
    EXPECT_TRUE(shows(*host, "Gain", knobPicture(0.1F))) << "what the host has told last";
}

TEST_F(WindowPorts, forgetWhatAHandHasOvertaken) {
    const auto host = show();
    point(*host, "Gain", pullOf(0.0));
    press(*host);
    host->tell(kGain, 0.1F);
    point(*host, "Gain", pullOf(0.25));
    release(*host);
    EXPECT_NEAR(only(host->takeEvents(), kGain).at(1).value, 0.75F, kRounding);
    EXPECT_TRUE(shows(*host, "Gain", knobPicture(0.75)));
}

TEST_F(WindowPorts, hearOfTheVolumeThatFollowsTheGain) {
    const auto host = show();
    host->tell(kAuto, 1.0F);
    EXPECT_TRUE(shows(*host, "ASw", 1));
    turnKnob(*host, "Gain", 0.2);
    const std::vector<HostEvent> events = host->takeEvents();
    expectGesture(only(events, kGain), kGain, 0.7F);
    const std::vector<HostEvent> volume = writesOf(only(events, kVolume));
    ASSERT_FALSE(volume.empty());
    EXPECT_NEAR(volume.back().value, 0.3F, kRounding);
}

TEST_F(WindowPorts, hearOfEveryChangeThatAPresetBrings) {
    const auto host = show();
    click(*host, "PR1K"); // copies
    host->tell(kGain, 0.9F);
    host->tell(kMix, 0.4F);
    EXPECT_TRUE(shows(*host, "Mix", knobPicture(0.4F)));
    host->takeEvents();
    click(*host, "PR2K"); // pastes
    EXPECT_TRUE(shows(*host, "Mix", 0));
    std::vector<HostEvent> events = writesOf(host->takeEvents());
    EXPECT_EQ(only(events, kGain), (std::vector<HostEvent>{{Kind::Write, kGain, 0.5F}}));
    EXPECT_EQ(only(events, kMix), (std::vector<HostEvent>{{Kind::Write, kMix, 0.0F}}));
    // The host has not reported the other values yet.
    std::ranges::sort(events, {}, &HostEvent::port);
    EXPECT_EQ(std::ranges::adjacent_find(events, {}, &HostEvent::port), events.end()) << "told twice";
    EXPECT_EQ(events.size(), 13U);
    click(*host, "PR2K");
    EXPECT_TRUE(writesOf(host->takeEvents()).empty()) << "nothing has changed";
}

} // namespace
