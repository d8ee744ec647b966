// Each control under the mouse: its parameter, its picture and the line of text.
#include "DemoGain_Coefficients.h"
#include "Tests/Integration/Editor/EditorTest.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>

using namespace varno;
using namespace varno::test;
using DemoGain_ViewLayout::Kind;

namespace {

// The line of text that a control shows for a value.
struct Wording {
    const char* label;
    double factor = 0.0; // 0 for a text without a number.
    double offset = 0.0;
};

const std::map<std::string, Wording> kWordings = {
    {"Gain", {"Gain", 200.0, -100.0}},
    {"Volume", {"Volume", 200.0, -100.0}},
    {"Atk", {"Attack", 100.0}},
    {"Rls", {"Release", 100.0}},
    {"Hot", {"Hottitude", 100.0}},
    {"Mix", {"Mix", 100.0}},
    {"HP", {"Hi Pass"}},
    {"Band", {"Band Pass"}},
    {"UK", {"UK Mode"}},
    {"ASw", {"Auto Gain"}},
    {"LinkSw", {"Stereo Link"}},
    {"HSw", {"Harmonic select"}},
    {"Ratio", {"Ratio"}},
};

std::string wordingOf(const std::string& id, float value) {
    const Wording& wording = kWordings.at(id);
    if (wording.factor == 0.0) {
        return wording.label;
    }
    char text[48];
    std::snprintf(text, sizeof text, "%s %.2f", wording.label,
                  static_cast<double>(value) * wording.factor + wording.offset);
    return text;
}

// The number of a control's picture for a value.
int pictureOf(const std::string& id, double value) {
    switch (controlOf(id).mKind) {
    case Kind::kKnob:
        return knobPicture(value);
    case Kind::kRatioSwitch:
        return static_cast<int>(std::lround(value * 7.0));
    default:
        return value > 0.5 ? 1 : 0;
    }
}

class Controls : public OneEditorTest {
protected:
    // Whether nothing but this parameter has another value than before.
    void expectOnlyChange(const ParameterValues& before, const std::string& id) {
        for (const auto& [other, value] : valuesOf(*instance)) {
            if (other != id) {
                EXPECT_EQ(value, before.at(other)) << other << " moved with " << id;
            }
        }
    }
};

class KnobTest : public Controls, public ::testing::WithParamInterface<std::string> {};
class SwitchTest : public Controls, public ::testing::WithParamInterface<std::string> {};

INSTANTIATE_TEST_SUITE_P(Every, KnobTest, ::testing::ValuesIn(controlsOf(Kind::kKnob)), nameOfControl);
INSTANTIATE_TEST_SUITE_P(Every, SwitchTest, ::testing::ValuesIn(controlsOf(Kind::kOnOffButton)),
                         nameOfControl);

TEST_F(Controls, beginWithTheParametersValues) {
    for (const auto& [id, value] : valuesOf(*instance)) {
        if (kWordings.contains(id)) {
            EXPECT_TRUE(shows(*window, id, pictureOf(id, value)));
        }
    }
    EXPECT_TRUE(shows(*window, "PR1K", 0));
    EXPECT_TRUE(shows(*window, "PR2K", 0));
    EXPECT_TRUE(says(*window, "---"));
    EXPECT_EQ(window->editor().size().horz, 690.0F);
    EXPECT_EQ(window->editor().size().vert, 390.0F);
}

TEST_P(KnobTest, followsTheHand) {
    const std::string& id = GetParam();
    const ParameterValues before = valuesOf(*instance);
    for (const double aim : {0.83, 0.21, 1.0, 0.0, 0.5}) {
        const float value = turnKnob(*window, *instance, id, aim);
        EXPECT_NEAR(instance->normalized(id), value, kRounding) << aim;
        EXPECT_TRUE(says(*window, wordingOf(id, value)));
        EXPECT_TRUE(shows(*window, id, knobPicture(instance->normalized(id))));
    }
    expectOnlyChange(before, id);
}

TEST_P(KnobTest, goesUpWithTheHandUpAndToTheRight) {
    const std::string& id = GetParam();
    instance->setNormalized(id, 0.5);
    point(*window, id, pullOf(0.0));
    press();
    struct Move {
        Place by;
        double change;
    };
    for (const Move& move : {Move{{0, -20}, 0.1}, Move{{0, 20}, -0.1}, Move{{20, 0}, 0.1},
                             Move{{-20, 0}, -0.1}, Move{{10, -10}, 0.1}, Move{{15, 15}, 0.0}}) {
        point(*window, id, pullOf(0.0) + move.by);
        EXPECT_NEAR(instance->normalized(id), 0.5 + move.change, kRounding);
    }
    release();
}

TEST_P(KnobTest, staysAtItsEndWhereTheHandGoesOn) {
    const std::string& id = GetParam();
    instance->setNormalized(id, 0.95);
    point(*window, id, pullOf(0.0));
    press();
    for (const double change : {0.3, 0.1}) {
        point(*window, id, pullOf(change));
        EXPECT_EQ(instance->normalized(id), 1.0);
    }
    point(*window, id, pullOf(-0.05));
    EXPECT_NEAR(instance->normalized(id), 0.9, kRounding);
    release();
}

TEST_P(KnobTest, isTouchedFromPressToRelease) {
    const std::string& id = GetParam();
    const double before = instance->normalized(id);
    EXPECT_EQ(touches(*instance, id), 0);
    point(*window, id, pullOf(0.0));
    press();
    EXPECT_EQ(touches(*instance, id), 1);
    EXPECT_EQ(instance->normalized(id), before) << "a press alone turns nothing";
    drag(*window, id, {200, -60});
    EXPECT_EQ(touches(*instance, id), 1) << "with the pointer far away";
    release();
    EXPECT_EQ(touches(*instance, id), 0);
    const double after = instance->normalized(id);
    point(*window, id, pullOf(-0.2));
    EXPECT_EQ(instance->normalized(id), after) << "turned without a button";
}

TEST_P(KnobTest, heedsOnlyTheLeftButton) {
    const std::string& id = GetParam();
    for (const Button button : {Button::kMiddle, Button::kRight}) {
        const ParameterValues before = valuesOf(*instance);
        point(*window, id, pullOf(0.0));
        press(button);
        point(*window, id, pullOf(0.2));
        release(button);
        EXPECT_EQ(valuesOf(*instance), before);
    }
    EXPECT_EQ(allTouches(*instance), 0);
}

TEST_P(KnobTest, turnsByTheWheelWithinATouch) {
    const std::string& id = GetParam();
    instance->setNormalized(id, 0.5);
    point(*window, id, {20, 20});
    press(Button::kWheelUp);
    release(Button::kWheelUp);
    const double up = instance->normalized(id);
    EXPECT_NEAR(up, 0.5 + 2.0 / 130.0, kRounding) << "two pictures";
    EXPECT_TRUE(says(*window, wordingOf(id, static_cast<float>(up))));
    press(Button::kWheelDown);
    release(Button::kWheelDown);
    EXPECT_NEAR(instance->normalized(id), 0.5, kRounding);
    EXPECT_TRUE(loop.await([&] { return touches(*instance, id) == 0; })) << "never let go";
}

TEST_P(SwitchTest, turnsOnAndOff) {
    const std::string& id = GetParam();
    const ParameterValues before = valuesOf(*instance);
    for (const double value : {1.0, 0.0, 1.0}) {
        click(*window, id);
        EXPECT_EQ(instance->normalized(id), value);
        EXPECT_TRUE(shows(*window, id, value > 0.5 ? 1 : 0));
        EXPECT_TRUE(says(*window, wordingOf(id, static_cast<float>(value))));
    }
    expectOnlyChange(before, id);
    EXPECT_EQ(touches(*instance, id), 0);
}

TEST_P(SwitchTest, stayWhereTheHandLeavesItBeforeTheRelease) {
    const std::string& id = GetParam();
    point(*window, id, {10, 10});
    press();
    EXPECT_EQ(touches(*instance, id), 1);
    drag(*window, id, {10, 60});
    release();
    EXPECT_EQ(instance->normalized(id), 0.0);
    EXPECT_EQ(touches(*instance, id), 0);
}

TEST_F(Controls, theRatioSwitchHasEightPositions) {
    const Area area = areaOf("Ratio");
    const ParameterValues before = valuesOf(*instance);
    for (int position = 7; position >= 0; --position) {
        point(*window, "Ratio", {position * area.width / 8 + 3, 10});
        press();
        release();
        EXPECT_NEAR(instance->normalized("Ratio"), position / 7.0, kRounding);
        EXPECT_TRUE(shows(*window, "Ratio", position));
        EXPECT_TRUE(says(*window, "Ratio"));
    }
    expectOnlyChange(before, "Ratio");
    EXPECT_EQ(touches(*instance, "Ratio"), 0);
}

// Curve 1 is the first picture; the effect chooses the curve whose value is nearest.
TEST_F(Controls, theRatioSwitchShowsTheCurveThatSounds) {
    for (const float value : {0.0F, 0.07F, 0.08F, 0.21F, 0.22F, 0.36F, 0.5F, 0.64F, 0.65F, 0.93F, 1.0F}) {
        instance->setNormalized("Ratio", value);
        EXPECT_TRUE(shows(*window, "Ratio", DemoGain_CurveIndex(value))) << value;
    }
}

TEST_F(Controls, theRatioSwitchFollowsADrag) {
    const Area area = areaOf("Ratio");
    point(*window, "Ratio", {5, 10});
    press();
    for (int position = 0; position < 8; ++position) {
        point(*window, "Ratio", {position * area.width / 8 + 20, 10});
        EXPECT_NEAR(instance->normalized("Ratio"), position / 7.0, kRounding);
    }
    drag(*window, "Ratio", {area.width + 200, 10});
    EXPECT_EQ(instance->normalized("Ratio"), 1.0);
    release();
    EXPECT_EQ(touches(*instance, "Ratio"), 0);
}

TEST_F(Controls, aGestureInOneBurstEndsWhereItPassedThrough) {
    // The host does not run its loop meanwhile, like a busy host. The drawing library asks the server for
    // motion hints only: it receives the first step, and the last position once it has asked for it.
    const Area area = areaOf("Mix");
    const std::vector<double> way = {0.1, 0.2, 0.3, 0.4};
    pointer.move(window->onScreen(Place{area.x, area.y} + pullOf(0.0)));
    pointer.press();
    for (const double value : way) {
        pointer.move(window->onScreen(Place{area.x, area.y} + pullOf(value)));
    }
    pointer.release();
    EXPECT_TRUE(loop.await([&] { return instance->normalized("Mix") > 0.0; }));
    EXPECT_TRUE(std::ranges::any_of(way, [&](double value) {
        return std::abs(instance->normalized("Mix") - value) < kRounding;
    })) << instance->normalized("Mix");
    EXPECT_EQ(touches(*instance, "Mix"), 0);
    const float next = turnKnob(*window, *instance, "Mix", 0.7);
    EXPECT_NEAR(instance->normalized("Mix"), next, kRounding);
}

TEST_F(Controls, theBackgroundTakesNoClick) {
    const ParameterValues before = valuesOf(*instance);
    pointer.move(window->onScreen({5, 5}));
    press();
    release();
    click(*window, "METERGR1");
    EXPECT_EQ(valuesOf(*instance), before);
    EXPECT_EQ(allTouches(*instance), 0);
    awaitDrawing(*window, *instance);
    EXPECT_TRUE(says(*window, "---"));
}

} // namespace
