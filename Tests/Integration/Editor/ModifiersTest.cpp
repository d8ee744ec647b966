// The keys that are held during a click or a drag.
#include "Tests/Integration/Editor/EditorTest.h"

#include "DemoGain_ParameterTable.h"

using namespace varno;
using namespace varno::test;
using DemoGain_ViewLayout::Kind;

namespace {

constexpr double kFineRange = kKnobRange * kFineDrag;

class Modifiers : public OneEditorTest {
protected:
    // Moves the pointer up from the middle of a knob.
    void pull(const std::string& id, int pixels) {
        const Place middle{areaOf(id).width / 2, areaOf(id).height / 2};
        drag(*window, id, middle + Place{0, -pixels});
    }
    void pressMiddle(const std::string& id) {
        point(*window, id, {areaOf(id).width / 2, areaOf(id).height / 2});
        press();
    }
};

float defaultOf(const std::string& id) {
    const auto* const parameter = std::ranges::find_if(
        kDemoGain_Parameters, [&id](const auto& candidate) { return candidate.mIdentifier == id; });
    return parameter->mDefault;
}

class DefaultTest : public Modifiers, public ::testing::WithParamInterface<std::string> {};

std::vector<std::string> resettable() {
    std::vector<std::string> ids = controlsOf(Kind::kKnob);
    for (const Kind kind : {Kind::kOnOffButton, Kind::kRatioSwitch}) {
        const std::vector<std::string> others = controlsOf(kind);
        ids.insert(ids.end(), others.begin(), others.end());
    }
    return ids;
}

INSTANTIATE_TEST_SUITE_P(Every, DefaultTest, ::testing::ValuesIn(resettable()), nameOfControl);

TEST_P(DefaultTest, altClickSetsIt) {
    const std::string& id = GetParam();
    instance->setNormalized(id, 1.0);
    click(*window, id, {Modifier::kAlt});
    EXPECT_NEAR(instance->normalized(id), defaultOf(id), kRounding);
    EXPECT_EQ(touches(*instance, id), 0);
    const std::int64_t before = allTouches(*instance);
    EXPECT_GT(before, 0);
    click(*window, id, {Modifier::kAlt});
    EXPECT_NEAR(instance->normalized(id), defaultOf(id), kRounding);
    EXPECT_EQ(allTouches(*instance), before + 1) << "a touch even where nothing moves";
}

TEST_P(DefaultTest, altWithAnotherKeyDoesNotSetIt) {
    const std::string& id = GetParam();
    const bool isSwitch = controlOf(id).mKind == Kind::kOnOffButton;
    for (const Modifier other : {Modifier::kShift, Modifier::kControl}) {
        instance->setNormalized(id, 1.0);
        point(*window, id, {areaOf(id).width - 5, areaOf(id).height / 2});
        hold({Modifier::kAlt, other});
        press();
        release();
        hold({});
        EXPECT_EQ(instance->normalized(id), isSwitch ? 0.0 : 1.0) << "a click like any other";
    }
}

TEST_F(Modifiers, controlDragsInFineSteps) {
    instance->setNormalized("Atk", 0.2);
    hold({Modifier::kControl});
    pressMiddle("Atk");
    pull("Atk", 4); // the key counts from the first move on
    const double before = instance->normalized("Atk");
    pull("Atk", 34);
    EXPECT_NEAR(instance->normalized("Atk"), before + 30 / kFineRange, kRounding);
    release();
}

TEST_F(Modifiers, shiftDragsInFineSteps) {
    instance->setNormalized("Atk", 0.2);
    hold({Modifier::kShift});
    pressMiddle("Atk");
    pull("Atk", 60);
    EXPECT_NEAR(instance->normalized("Atk"), 0.2 + 60 / kFineRange, kRounding);
    release();
}

TEST_F(Modifiers, aDragGoesOnWhereTheKeysChange) {
    instance->setNormalized("Atk", 0.2);
    hold({Modifier::kControl});
    pressMiddle("Atk");
    pull("Atk", 60);
    const double before = instance->normalized("Atk");
    hold({});
    pull("Atk", 61);
    EXPECT_NEAR(instance->normalized("Atk"), before + 1 / kKnobRange, 1 / kKnobRange) << "no jump";
    EXPECT_GT(instance->normalized("Atk"), before);
    release();
}

TEST_F(Modifiers, theHostsOwnKeysCount) {
    // The host has the keyboard's focus: only the host receives the key.
    instance->setNormalized("Hot", 1.0);
    window->container().setModifierSource([] { return AAX_eModifiers_Option; });
    click(*window, "Hot");
    window->container().setModifierSource({});
    EXPECT_NEAR(instance->normalized("Hot"), defaultOf("Hot"), kRounding);
}

TEST_F(Modifiers, theHostReceivesTheKeys) {
    click(*window, "HP", {Modifier::kShift, Modifier::kAlt});
    ASSERT_FALSE(window->offers().empty());
    for (const MouseOffer& offer : window->offers()) {
        if (offer.kind != MouseOffer::Kind::kDrag) {
            EXPECT_EQ(offer.modifiers,
                      static_cast<std::uint32_t>(AAX_eModifiers_Shift | AAX_eModifiers_Option));
        }
    }
    EXPECT_EQ(instance->normalized("HP"), 1.0);
}

} // namespace
