// The steps that gestures in the editor become, with the editor itself.
#include "Surround/Settings/EditedSettings.h"

#include "Surround/Settings/TrueValue.h"
#include "Tests/Integration/Editor/EditorTest.h"

#include <gmock/gmock.h>
#include <optional>

namespace varno::test {
namespace {

using testing::ElementsAre;

class EditedInEditor : public OneEditorTest {
protected:
    void TearDown() override {
        mEdited.reset();
        OneEditorTest::TearDown();
    }

    std::vector<std::string> undoAll() {
        std::vector<std::string> names;
        while (edited.canUndo()) {
            names.push_back(edited.undoName());
            edited.undo();
        }
        return names;
    }
    std::string nameOf(const std::string& id, double value) const {
        return settingName(*settingOf(id)) + ' ' + spokenValue(id, value, unitSettings(*instance));
    }
    double value(const std::string& id) const { return instance->normalized(id); }

    CompareSlots slots{settingsOf(*instance)};
    std::optional<EditedSettings> mEdited{std::in_place, *instance, slots};
    EditedSettings& edited = *mEdited;
};

TEST_F(EditedInEditor, aDragOfAKnobIsOneStep) {
    turnKnob(*window, *instance, "Mix", 0.6);
    const double after = value("Mix");
    EXPECT_NEAR(after, 0.6, kRounding);
    EXPECT_THAT(undoAll(), ElementsAre(nameOf("Mix", after)));
    EXPECT_EQ(value("Mix"), 0.0);
    EXPECT_TRUE(shows(*window, "Mix", 0)) << "the editor follows";
    EXPECT_TRUE(edited.redo());
    EXPECT_EQ(value("Mix"), after);
}

TEST_F(EditedInEditor, everyControlMakesStepsOfItsOwn) {
    for (const std::string& id : controlsOf(DemoGain_ViewLayout::Kind::kKnob)) {
        turnKnob(*window, *instance, id, value(id) < 0.5 ? 0.75 : 0.25);
        const std::string name = nameOf(id, value(id));
        EXPECT_THAT(undoAll(), ElementsAre(name));
    }
    for (const std::string& id : controlsOf(DemoGain_ViewLayout::Kind::kOnOffButton)) {
        click(*window, id);
        EXPECT_THAT(undoAll(), ElementsAre(settingName(*settingOf(id)) + " on"));
    }
    EXPECT_EQ(settingsOf(*instance), defaultSettings(*instance));
}

TEST_F(EditedInEditor, aPressAloneIsNoStep) {
    click(*window, "Gain");
    EXPECT_FALSE(edited.canUndo());
}

TEST_F(EditedInEditor, theWheelMakesSteps) {
    point(*window, "Gain", {20, 20});
    press(Button::kWheelUp);
    release(Button::kWheelUp);
    ASSERT_TRUE(loop.await([&] { return !edited.isTouched() && value("Gain") > 0.5; }));
    const std::string name = nameOf("Gain", value("Gain"));
    EXPECT_THAT(undoAll(), ElementsAre(name));
    EXPECT_EQ(value("Gain"), 0.5);
}

TEST_F(EditedInEditor, copyAndPasteAreOneStep) {
    instance->setNormalized("Gain", 0.75);
    click(*window, "PR1K");
    EXPECT_FALSE(edited.canUndo());
    instance->setNormalized("Gain", 0.25);
    instance->setNormalized("HP", 1.0);
    click(*window, "PR2K");
    ASSERT_TRUE(loop.await([&] { return value("Gain") == 0.75; }));
    EXPECT_THAT(undoAll(), ElementsAre("Paste"));
    EXPECT_EQ(value("Gain"), 0.25);
    EXPECT_EQ(value("HP"), 1.0);
}

TEST_F(EditedInEditor, moreGainWithAutomaticGainIsOneStep) {
    instance->setNormalized("ASw", 1.0);
    instance->setNormalized("Gain", 0.4);
    turnKnob(*window, *instance, "Gain", 0.6);
    const std::string name = nameOf("Gain", value("Gain"));
    EXPECT_LT(value("Volume"), 0.4);
    EXPECT_THAT(undoAll(), ElementsAre(name));
    EXPECT_EQ(value("Gain"), double{0.4F});
    EXPECT_EQ(value("Volume"), 0.5);
}

TEST_F(EditedInEditor, aSeriesOfAutomaticGainIsOneStep) {
    instance->setNormalized("ASw", 1.0);
    setMeter(*instance, eMeterTap_Input, 0.0F);
    setMeter(*instance, eMeterTap_Output, 0.0F);
    click(*window, "UK");
    for (const float output : {0.5F, 2.0F}) {
        const double before = value("Volume");
        setMeter(*instance, eMeterTap_Input, 1.0F);
        setMeter(*instance, eMeterTap_Output, output);
        ASSERT_TRUE(loop.await([&] {
            edited.settle();
            return value("Volume") != before;
        }));
    }
    EXPECT_THAT(undoAll(), ElementsAre("Auto Gain", "UK Mode on"));
    EXPECT_EQ(value("Volume"), 0.5);
}

} // namespace
} // namespace varno::test
