// Gestures that the host handles itself, and automation during a gesture.
#include "DemoGain_Coefficients.h"
#include "Tests/Integration/Editor/EditorTest.h"

#include <algorithm>

namespace varno::test {
namespace {

class HostGestures : public OneEditorTest {
protected:
    // The host handles gestures of this kind from now on.
    void takeGestures(MouseOffer::Kind kind) {
        window->answerOffers([kind](const MouseOffer& offer) {
            return offer.kind == kind ? AAX_SUCCESS : AAX_ERROR_UNIMPLEMENTED;
        });
    }
    void takeNone() { window->answerOffers({}); }

    std::vector<MouseOffer::Kind> offered() const {
        std::vector<MouseOffer::Kind> kinds;
        for (const MouseOffer& offer : window->offers()) {
            kinds.push_back(offer.kind);
        }
        return kinds;
    }
};

TEST_F(HostGestures, aPressThatTheHostTakesReachesNoControl) {
    const ParameterValues before = valuesOf(*instance);
    takeGestures(MouseOffer::Kind::kDown);
    for (const char* id : {"Gain", "HP", "Ratio", "PR1K", "PR2K"}) {
        click(*window, id);
        EXPECT_EQ(window->offers().back().parameters, std::vector<std::string>{id});
    }
    click(*window, "Hot", {Modifier::kAlt});
    EXPECT_EQ(valuesOf(*instance), before);
    EXPECT_EQ(allTouches(*instance), 0);
    awaitDrawing(*window, *instance);
    EXPECT_TRUE(says(*window, "---"));
}

TEST_F(HostGestures, aDragThatTheHostTakesTurnsNothing) {
    takeGestures(MouseOffer::Kind::kDrag);
    point(*window, "Gain", pullOf(0.0));
    press();
    EXPECT_EQ(touches(*instance, "Gain"), 1);
    point(*window, "Gain", pullOf(0.1));
    EXPECT_EQ(instance->normalized("Gain"), 0.5);
    takeNone();
    point(*window, "Gain", pullOf(0.2));
    EXPECT_NEAR(instance->normalized("Gain"), 0.7, kRounding);
    release();
    EXPECT_EQ(touches(*instance, "Gain"), 0);
}

TEST_F(HostGestures, aReleaseThatTheHostTakesStillEndsTheTouch) {
    takeGestures(MouseOffer::Kind::kUp);
    for (const char* id : {"Gain", "HP", "Ratio"}) {
        click(*window, id);
        EXPECT_EQ(touches(*instance, id), 0) << id;
    }
    EXPECT_EQ(instance->normalized("HP"), 0.0) << "a switch turns by its release";
}

TEST_F(HostGestures, areOfferedInTheirOrder) {
    point(*window, "Mix", pullOf(0.0));
    EXPECT_TRUE(window->offers().empty()) << "before a button is down";
    press();
    point(*window, "Mix", pullOf(0.1));
    release();
    point(*window, "Mix", pullOf(0.2));

    using Kind = MouseOffer::Kind;
    const std::vector<Kind> kinds = offered();
    ASSERT_GE(kinds.size(), 3U);
    EXPECT_EQ(kinds.front(), Kind::kDown);
    EXPECT_EQ(kinds.back(), Kind::kUp);
    EXPECT_TRUE(
        std::all_of(kinds.begin() + 1, kinds.end() - 1, [](Kind kind) { return kind == Kind::kDrag; }));
    for (const MouseOffer& offer : window->offers()) {
        EXPECT_EQ(offer.parameters, std::vector<std::string>{"Mix"});
        EXPECT_EQ(offer.modifiers, 0U);
    }
}

TEST_F(HostGestures, automationMovesOtherControlsMeanwhile) {
    point(*window, "Gain", pullOf(0.0));
    press();
    instance->setNormalized("Volume", 0.9);
    instance->setNormalized("LinkSw", 1.0);
    point(*window, "Gain", pullOf(-0.1));
    EXPECT_NEAR(instance->normalized("Gain"), 0.4, kRounding);
    EXPECT_TRUE(shows(*window, "Volume", knobPicture(0.9)));
    EXPECT_TRUE(shows(*window, "LinkSw", 1));
    EXPECT_EQ(touches(*instance, "Gain"), 1);
    EXPECT_EQ(touches(*instance, "Volume"), 0);
    release();
    EXPECT_EQ(instance->normalized("Volume"), static_cast<double>(0.9F));
}

TEST_F(HostGestures, automationOfTheHeldControlAndTheHandEachCount) {
    point(*window, "Gain", pullOf(0.0));
    press();
    point(*window, "Gain", pullOf(-0.05));
    instance->setNormalized("Gain", 0.9);
    EXPECT_TRUE(shows(*window, "Gain", knobPicture(0.9)));
    EXPECT_EQ(touches(*instance, "Gain"), 1) << "still held";
    point(*window, "Gain", pullOf(-0.1));
    const double hand = 0.4;
    EXPECT_NEAR(instance->normalized("Gain"), hand, kRounding) << "the hand has the last word";
    release();
    EXPECT_EQ(touches(*instance, "Gain"), 0);
    EXPECT_TRUE(shows(*window, "Gain", knobPicture(hand)));
    instance->setNormalized("Gain", 0.1);
    EXPECT_TRUE(shows(*window, "Gain", knobPicture(static_cast<double>(0.1F))));
}

TEST_F(HostGestures, automationMovesEveryControlWithoutATouch) {
    std::mt19937 random(20260201);
    for (int i = 0; i < 5; ++i) {
        automate(*instance, randomValues(random));
        for (const auto& [id, value] : valuesOf(*instance)) {
            if (id == "MasterBypassID") {
                continue;
            }
            const auto kind = controlOf(id).mKind;
            using DemoGain_ViewLayout::Kind;
            if (kind == Kind::kKnob) {
                EXPECT_TRUE(shows(*window, id, knobPicture(value)));
            } else if (kind == Kind::kRatioSwitch) {
                EXPECT_TRUE(shows(*window, id, DemoGain_CurveIndex(static_cast<float>(value))));
            }
        }
    }
    EXPECT_EQ(allTouches(*instance), 0);
    EXPECT_TRUE(says(*window, "---")) << "the line names what a hand did";
}

TEST_F(HostGestures, unknownParametersAreNoMatter) {
    // The preset buttons have identifiers for the host's mouse, but are no parameters.
    click(*window, "PR1K");
    EXPECT_EQ(window->offers().front().parameters, std::vector<std::string>{"PR1K"});
    EXPECT_EQ(allTouches(*instance), 0);
    window->editor().highlight("PR1K", false, AAX_eHighlightColor_Red);
    window->editor().highlight("no such parameter", false, AAX_eHighlightColor_Red);
}

} // namespace
} // namespace varno::test
