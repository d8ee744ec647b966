#include "Surround/Settings/EditedSettings.h"

#include "Host/InstanceHost.h"
#include "Surround/Settings/TrueValue.h"
#include "Tests/Integration/HostedEffect.h"
#include "Tests/Support/TestRun.h"

#include <functional>
#include <gmock/gmock.h>
#include <optional>
#include <random>

namespace varno::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// An instance whose editor is played by the test: it calls the data model as the editor does.
class EditedSettingsTest : public HostedEffect {
protected:
    void TearDown() override {
        mEdited.reset();
        instance.reset();
        HostedEffect::TearDown();
    }

    // A press on a control, all the values of a drag, and its release.
    void gesture(const std::string& id, const std::vector<double>& values) {
        model().TouchParameter(id.c_str());
        for (const double value : values) {
            request(id, value);
            edited.settle(); // a turn of the event loop
        }
        model().ReleaseParameter(id.c_str());
        edited.settle();
    }
    // A value without a press, as a timer call requests it.
    void request(const std::string& id, double value) {
        model().SetParameterNormalizedValue(id.c_str(), value);
    }
    void paste(const SettingValues& values) {
        DemoGain_PresetText::Apply(values, model());
        edited.settle();
    }
    void glide(const std::vector<double>& volumes) {
        for (const double volume : volumes) {
            request("Volume", volume);
            edited.settle();
        }
    }
    double value(const std::string& id) const { return instance->normalized(id); }
    AAX_IACFEffectParameters& model() { return instance->dataModel(); }

    // The names of the steps, the latest first, and all of them undone.
    std::vector<std::string> undoAll() {
        std::vector<std::string> names;
        while (edited.canUndo()) {
            names.push_back(edited.undoName());
            edited.undo();
        }
        return names;
    }

    std::unique_ptr<Instance> instance = makeInstance(module());
    CompareSlots slots{settingsOf(*instance)};
    std::optional<EditedSettings> mEdited{std::in_place, *instance, slots};
    EditedSettings& edited = *mEdited;
};

TEST_F(EditedSettingsTest, hasNoStepAtFirst) {
    edited.settle();
    EXPECT_FALSE(edited.canUndo());
    EXPECT_FALSE(edited.canRedo());
    EXPECT_FALSE(edited.undo());
    EXPECT_FALSE(edited.redo());
    EXPECT_EQ(edited.undoName(), "");
    EXPECT_EQ(edited.redoName(), "");
}

TEST_F(EditedSettingsTest, aDragIsOneStep) {
    gesture("Gain", {0.51, 0.52, 0.575});
    EXPECT_EQ(edited.undoName(), "Gain +3.0 dB");
    EXPECT_TRUE(edited.undo());
    EXPECT_EQ(value("Gain"), 0.5);
    EXPECT_FALSE(edited.canUndo());
    EXPECT_EQ(edited.redoName(), "Gain +3.0 dB");
    EXPECT_TRUE(edited.redo());
    EXPECT_EQ(value("Gain"), double{0.575F});
    EXPECT_FALSE(edited.canRedo());
}

TEST_F(EditedSettingsTest, aStepIsNamedByItsLastValue) {
    gesture("HP", {1.0});
    EXPECT_EQ(edited.undoName(), "High Pass on");
    gesture("Ratio", {0.0});
    EXPECT_EQ(edited.undoName(), "Ratio curve 1");
    gesture("Atk", {1.0});
    EXPECT_EQ(edited.undoName(), "Attack " + DemoGain_ValueText::Write(*DemoGain_FindParameter("Atk"), 1.0,
                                                                       unitSettings(*instance)));
    gesture("ASw", {1.0});
    EXPECT_EQ(edited.undoName(), "Auto Gain on");
}

TEST_F(EditedSettingsTest, aGestureThatChangesNothingIsNoStep) {
    gesture("Gain", {});
    gesture("Gain", {0.75, 0.5});
    gesture("HP", {0.0});
    EXPECT_FALSE(edited.canUndo());
    gesture("Gain", {0.75});
    edited.undo();
    gesture("Gain", {0.25, 0.5});
    EXPECT_TRUE(edited.canRedo()) << "it drops nothing either";
}

TEST_F(EditedSettingsTest, whatIsRequestedWithinAGestureBelongsToIt) {
    // The editor compensates more gain with less volume while automatic gain is on.
    model().TouchParameter("Gain");
    request("Gain", 0.6);
    request("Volume", 0.4);
    edited.settle();
    EXPECT_TRUE(edited.isTouched());
    request("Gain", 0.7);
    request("Volume", 0.3);
    model().ReleaseParameter("Gain");
    edited.settle();
    EXPECT_FALSE(edited.isTouched());
    EXPECT_EQ(edited.undoName(), "Gain +8.0 dB");
    edited.undo();
    EXPECT_EQ(value("Gain"), 0.5);
    EXPECT_EQ(value("Volume"), 0.5);
    edited.redo();
    EXPECT_EQ(value("Gain"), double{0.7F});
    EXPECT_EQ(value("Volume"), double{0.3F});
    EXPECT_THAT(undoAll(), ElementsAre("Gain +8.0 dB"));
}

TEST_F(EditedSettingsTest, overlappingTouchesAreOneGesture) {
    model().TouchParameter("Mix");
    model().TouchParameter("Hot");
    request("Hot", 1.0);
    model().ReleaseParameter("Hot");
    edited.settle();
    EXPECT_EQ(value("Hot"), 1.0);
    request("Mix", 0.5);
    model().ReleaseParameter("Mix");
    edited.settle();
    EXPECT_THAT(undoAll(), ElementsAre("Mix 50.0 %"));
    EXPECT_EQ(value("Hot"), double{0.07F});
}

TEST_F(EditedSettingsTest, gesturesWithoutATurnBetweenThemAreSteps) {
    model().TouchParameter("HP");
    request("HP", 1.0);
    model().ReleaseParameter("HP");
    model().TouchParameter("Gain");
    request("Gain", 1.0);
    model().ReleaseParameter("Gain");
    model().TouchParameter("Gain");
    request("Gain", 0.75);
    model().ReleaseParameter("Gain");
    edited.undo();
    EXPECT_EQ(value("Gain"), 1.0) << "the value before the second gesture was not answered yet";
    edited.undo();
    EXPECT_EQ(value("Gain"), 0.5);
    EXPECT_EQ(edited.undoName(), "High Pass on");
}

TEST_F(EditedSettingsTest, aPasteIsOneStep) {
    SettingValues values{};
    values.fill(0.25F);
    paste(values);
    EXPECT_EQ(settingsOf(*instance), values);
    EXPECT_EQ(edited.undoName(), "Paste");
    edited.undo();
    EXPECT_EQ(settingsOf(*instance), defaultSettings(*instance));
    edited.redo();
    EXPECT_EQ(settingsOf(*instance), values);
}

TEST_F(EditedSettingsTest, aPasteThatChangesOneSettingIsAPaste) {
    SettingValues values = defaultSettings(*instance);
    values[0] = 0.0F;
    paste(values);
    EXPECT_THAT(undoAll(), ElementsAre("Paste"));
    paste(defaultSettings(*instance));
    EXPECT_THAT(undoAll(), IsEmpty());
}

TEST_F(EditedSettingsTest, aPasteAfterAGestureInTheSameTurnIsAStepOfItsOwn) {
    model().TouchParameter("Gain");
    request("Gain", 1.0);
    model().ReleaseParameter("Gain");
    SettingValues values{};
    paste(values);
    edited.undo();
    EXPECT_EQ(value("Gain"), 1.0);
    EXPECT_EQ(edited.undoName(), "Gain +20.0 dB");
}

TEST_F(EditedSettingsTest, aSeriesOfAutomaticGainIsOneStep) {
    gesture("UK", {1.0});
    glide({0.51, 0.52, 0.53});
    glide({0.5, 0.45, 0.4});
    EXPECT_EQ(edited.undoName(), EditedSettings::kAutoGainName);
    edited.undo();
    EXPECT_EQ(value("Volume"), 0.5);
    EXPECT_EQ(edited.undoName(), "UK Mode on");
    edited.redo();
    EXPECT_EQ(value("Volume"), double{0.4F});
}

TEST_F(EditedSettingsTest, aStepBetweenEndsASeries) {
    glide({0.51, 0.52});
    gesture("UK", {1.0});
    glide({0.53, 0.54});
    EXPECT_THAT(undoAll(), ElementsAre("Auto Gain", "UK Mode on", "Auto Gain"));
    EXPECT_EQ(value("Volume"), 0.5);
}

TEST_F(EditedSettingsTest, aSeriesWithinAGestureBelongsToIt) {
    model().TouchParameter("Atk");
    glide({0.51});
    request("Atk", 0.0);
    glide({0.52});
    model().ReleaseParameter("Atk");
    glide({0.53});
    EXPECT_THAT(undoAll(), ElementsAre("Auto Gain", "Attack 0.41 ms"));
    EXPECT_EQ(value("Volume"), 0.5);
}

TEST_F(EditedSettingsTest, aPressWithoutAValueDoesNotNameTheSeries) {
    model().TouchParameter("Atk");
    glide({0.51, 0.52});
    model().ReleaseParameter("Atk");
    glide({0.53});
    EXPECT_THAT(undoAll(), ElementsAre("Auto Gain"));
}

TEST_F(EditedSettingsTest, aSeriesThatGoesOnAfterUndoDropsNothing) {
    gesture("UK", {1.0});
    glide({0.51, 0.52});
    edited.undo();
    glide({0.53});
    EXPECT_EQ(edited.redoName(), "Auto Gain");
    edited.undo();
    glide({0.54});
    EXPECT_EQ(edited.redoName(), "UK Mode on");
    EXPECT_FALSE(edited.canUndo());
    edited.redo();
    edited.redo();
    EXPECT_EQ(value("Volume"), double{0.52F});
    glide({0.55});
    EXPECT_EQ(edited.undoName(), "Auto Gain");
    edited.undo();
    EXPECT_EQ(value("Volume"), 0.5) << "it extends the step that was done again";
}

TEST_F(EditedSettingsTest, requestsOfTheHostAreNoSteps) {
    instance->setNormalized("Gain", 0.9);
    edited.settle();
    EXPECT_FALSE(edited.canUndo());
    gesture("Mix", {0.5});
    instance->setNormalized("Gain", 0.1);
    instance->setNormalized("Mix", 0.75);
    edited.undo();
    EXPECT_EQ(value("Mix"), 0.0);
    EXPECT_EQ(value("Gain"), double{0.1F}) << "no setting of the step";
    edited.redo();
    EXPECT_EQ(value("Mix"), 0.5);
}

TEST_F(EditedSettingsTest, theBypassIsNoSetting) {
    gesture("MasterBypassID", {1.0});
    EXPECT_EQ(value("MasterBypassID"), 1.0);
    EXPECT_FALSE(edited.canUndo());
}

TEST_F(EditedSettingsTest, aNamedStepTakesEverything) {
    {
        const EditedSettings::NamedStep step(edited, "Both");
        gesture("HP", {1.0});
        request("Gain", 0.25);
        request("Volume", 0.25);
    }
    EXPECT_THAT(undoAll(), ElementsAre("Both"));
    EXPECT_EQ(settingsOf(*instance), defaultSettings(*instance));
}

TEST_F(EditedSettingsTest, aNamedStepEndsTheOneBefore) {
    request("Gain", 0.25);
    {
        const EditedSettings::NamedStep step(edited, "Named");
        request("Gain", 0.75);
    }
    request("Mix", 1.0);
    EXPECT_THAT(undoAll(), ElementsAre("Mix 100.0 %", "Named", "Gain -10.0 dB"));
}

TEST_F(EditedSettingsTest, severalRequestsInOneTurnAreOneStep) {
    request("Gain", 0.25);
    request("Mix", 0.25);
    edited.settle();
    EXPECT_THAT(undoAll(), ElementsAre("Several Settings"));
}

TEST_F(EditedSettingsTest, setsAndResetsAsSteps) {
    edited.set(*settingOf("Volume"), 0.25F);
    EXPECT_EQ(edited.undoName(), "Volume -10.0 dB");
    EXPECT_EQ(value("Volume"), 0.25);
    edited.set(*settingOf("Volume"), 0.25F);
    edited.reset(*settingOf("Volume"));
    EXPECT_EQ(edited.undoName(), "Reset of Volume");
    EXPECT_EQ(value("Volume"), 0.5);
    edited.reset(*settingOf("Volume"));
    SettingValues values = defaultSettings(*instance);
    values[2] = 1.0F;
    edited.setAll(values, "Preset Drum Bus");
    EXPECT_EQ(settingsOf(*instance), values);
    EXPECT_THAT(undoAll(), ElementsAre("Preset Drum Bus", "Reset of Volume", "Volume -10.0 dB"));
}

TEST_F(EditedSettingsTest, joinsChangesOfOneSetting) {
    using Join = EditedSettings::Join;
    const auto gain = *settingOf("Gain");
    const auto mix = *settingOf("Mix");
    edited.set(gain, 0.6F, Join::kYes);
    edited.set(gain, 0.7F, Join::kYes);
    edited.set(gain, 0.75F, Join::kYes);
    EXPECT_EQ(edited.undoName(), "Gain +10.0 dB");
    edited.set(mix, 0.1F, Join::kYes);
    edited.set(mix, 0.2F, Join::kNo);
    edited.set(gain, 1.0F, Join::kYes);
    EXPECT_THAT(undoAll(), ElementsAre("Gain +20.0 dB", "Mix 20.0 %", "Mix 10.0 %", "Gain +10.0 dB"));
    EXPECT_EQ(value("Gain"), 0.5);
}

TEST_F(EditedSettingsTest, undoWithinAGestureTakesBackWhatItDidSoFar) {
    model().TouchParameter("Gain");
    request("Gain", 0.75);
    edited.undo();
    EXPECT_EQ(value("Gain"), 0.5);
    EXPECT_EQ(edited.redoName(), "Gain +10.0 dB");
    request("Gain", 1.0);
    model().ReleaseParameter("Gain");
    EXPECT_THAT(undoAll(), ElementsAre("Gain +20.0 dB"));
    EXPECT_EQ(value("Gain"), 0.5);
}

TEST_F(EditedSettingsTest, aGestureUnderWayLeavesNothingToRedo) {
    gesture("Mix", {1.0});
    edited.undo();
    model().TouchParameter("Gain");
    request("Gain", 0.75);
    EXPECT_FALSE(edited.redo());
    model().ReleaseParameter("Gain");
    EXPECT_THAT(undoAll(), ElementsAre("Gain +10.0 dB"));
}

TEST_F(EditedSettingsTest, aGestureUnderWayBelongsToTheSlotThatItChanged) {
    model().TouchParameter("Gain");
    request("Gain", 0.75);
    edited.changeSlot();
    EXPECT_EQ(value("Gain"), 0.5);
    EXPECT_FALSE(edited.canUndo());
    request("Gain", 1.0);
    model().ReleaseParameter("Gain");
    EXPECT_EQ(edited.undoName(), "Gain +20.0 dB");
    edited.changeSlot();
    EXPECT_EQ(value("Gain"), 0.75);
    EXPECT_EQ(edited.undoName(), "Gain +10.0 dB");
}

TEST_F(EditedSettingsTest, aCopyWithinAGestureHasItsValues) {
    model().TouchParameter("Gain");
    request("Gain", 0.75);
    edited.copyToOtherSlot();
    request("Gain", 1.0);
    model().ReleaseParameter("Gain");
    EXPECT_EQ(slots.otherValues()[*settingOf("Gain")], 0.75F);
    EXPECT_THAT(undoAll(), ElementsAre("Gain +20.0 dB"));
}

TEST_F(EditedSettingsTest, takesAGestureBack) {
    gesture("Mix", {1.0});
    edited.takeBackGesture();
    EXPECT_EQ(value("Mix"), 1.0) << "it is over";
    model().TouchParameter("Gain");
    edited.takeBackGesture();
    request("Gain", 0.75);
    request("Volume", 0.25);
    edited.takeBackGesture(); // before the requests are answered
    EXPECT_EQ(value("Gain"), 0.5);
    EXPECT_EQ(value("Volume"), 0.5);
    model().ReleaseParameter("Gain");
    EXPECT_THAT(undoAll(), ElementsAre("Mix 100.0 %"));
}

TEST_F(EditedSettingsTest, aGestureMayGoOnAfterItWasTakenBack) {
    model().TouchParameter("Gain");
    request("Gain", 0.75);
    edited.takeBackGesture();
    request("Gain", 1.0);
    model().ReleaseParameter("Gain");
    EXPECT_THAT(undoAll(), ElementsAre("Gain +20.0 dB"));
    EXPECT_EQ(value("Gain"), 0.5);
}

TEST_F(EditedSettingsTest, countsTheTurnsOfAutomaticGain) {
    gesture("Volume", {0.6, 0.7});
    edited.set(*settingOf("Volume"), 0.5F);
    EXPECT_EQ(edited.autoGainTurns(), 0U);
    glide({0.6, 0.7, 0.8});
    EXPECT_EQ(edited.autoGainTurns(), 3U);
    edited.undo();
    EXPECT_EQ(edited.autoGainTurns(), 3U);
    glide({0.6});
    EXPECT_EQ(edited.autoGainTurns(), 4U) << "also where it is no step";
}

TEST_F(EditedSettingsTest, beginsWithinAGesture) {
    auto& automation = instance->host().automation();
    model().TouchParameter("Gain");
    {
        EditedSettings late(*instance, slots);
        model().ReleaseParameter("Gain");
        EXPECT_FALSE(late.isTouched());
        model().TouchParameter("Mix");
        EXPECT_TRUE(late.isTouched());
        model().ReleaseParameter("Mix");
    }
    EXPECT_EQ(automation.touches("Gain"), 0);
}

TEST_F(EditedSettingsTest, otherListenersReceiveWhatUndoSets) {
    class Values : public AutomationListener {
    public:
        void valueRequested(const std::string& id, double normalized) override {
            calls.push_back(id + ' ' + std::to_string(normalized));
        }
        void touched(const std::string&) override {}
        void released(const std::string&) override {}
        std::vector<std::string> calls;
    };
    gesture("Gain", {0.75});
    Values values;
    instance->host().automation().addListener(values);
    edited.undo();
    edited.redo();
    EXPECT_THAT(values.calls, ElementsAre("Gain 0.500000", "Gain 0.750000"));
    instance->host().automation().removeListener(values);
}

TEST_F(EditedSettingsTest, comparesTwoSettings) {
    EXPECT_EQ(edited.slot(), CompareSlot::kA);
    EXPECT_FALSE(edited.differsFromOther());
    gesture("Gain", {0.75});
    EXPECT_TRUE(edited.differsFromOther());
    edited.changeSlot();
    EXPECT_EQ(edited.slot(), CompareSlot::kB);
    EXPECT_EQ(value("Gain"), 0.5);
    EXPECT_FALSE(edited.canUndo()) << "a change of the slot is no step";
    gesture("Mix", {1.0});
    edited.changeSlot();
    EXPECT_EQ(value("Gain"), 0.75);
    EXPECT_EQ(value("Mix"), 0.0);
    EXPECT_EQ(edited.undoName(), "Gain +10.0 dB");
    edited.changeSlot();
    EXPECT_EQ(edited.undoName(), "Mix 100.0 %");
}

TEST_F(EditedSettingsTest, copiesToTheOtherSlot) {
    gesture("Gain", {0.75});
    edited.copyToOtherSlot();
    EXPECT_FALSE(edited.differsFromOther());
    EXPECT_EQ(edited.undoName(), "Gain +10.0 dB");
    edited.changeSlot();
    EXPECT_EQ(value("Gain"), 0.75);
    EXPECT_EQ(edited.undoName(), "Copy of A");
    edited.undo();
    EXPECT_EQ(value("Gain"), 0.5);
    EXPECT_TRUE(edited.differsFromOther());
}

TEST_F(EditedSettingsTest, aStepOfOneSlotIsNoneOfTheOther) {
    request("Gain", 0.75); // not settled
    edited.changeSlot();
    EXPECT_FALSE(edited.canUndo());
    edited.changeSlot();
    EXPECT_EQ(edited.undoName(), "Gain +10.0 dB");
    EXPECT_EQ(value("Gain"), 0.75);
}

TEST_F(EditedSettingsTest, anotherInstanceContinuesWithTheSteps) {
    gesture("Gain", {0.75});
    const auto next = makeInstance(module(), 2, 96000.0);
    next->setNormalized("Gain", 0.75);
    EditedSettings continued(*next, slots);
    EXPECT_EQ(continued.undoName(), "Gain +10.0 dB");
    continued.undo();
    EXPECT_EQ(next->normalized("Gain"), 0.5);
    EXPECT_EQ(value("Gain"), 0.75);
}

// Random doings of user, host and automatic gain; the model keeps what each step left.
TEST_F(EditedSettingsTest, undoingAllGivesTheStartAndRedoingAllTheEnd) {
    for (int seed = 1; seed <= 20 * testScale(); ++seed) {
        std::mt19937 random(static_cast<unsigned>(seed));
        const auto chance = [&](unsigned of) { return static_cast<unsigned>(random() % of); };
        const auto number = [&] { return static_cast<float>(random() % 1001) / 1000.0F; };
        const SettingValues start = edited.values();
        for (int i = 0; i < 60; ++i) {
            const std::size_t setting = random() % kSettingCount;
            const std::string id = settingID(setting);
            switch (chance(6)) {
            case 0:
                glide({number(), number()});
                break;
            case 1: {
                SettingValues values{};
                std::ranges::generate(values, number);
                paste(values);
                break;
            }
            case 2:
                edited.set(setting, number(),
                           chance(2) == 0 ? EditedSettings::Join::kYes : EditedSettings::Join::kNo);
                break;
            case 3:
                edited.reset(setting);
                break;
            default:
                gesture(id, {number(), number(), number()});
                break;
            }
            if (chance(8) == 0) {
                const SettingValues before = edited.values();
                const unsigned steps = 1 + chance(4);
                unsigned undone = 0;
                while (undone < steps && edited.undo()) {
                    ++undone;
                }
                while (undone-- > 0) {
                    EXPECT_TRUE(edited.redo());
                }
                ASSERT_EQ(edited.values(), before) << "seed " << seed;
            }
        }
        const SettingValues end = edited.values();
        std::size_t steps = 0;
        while (edited.undo()) {
            ++steps;
        }
        ASSERT_EQ(edited.values(), start) << "seed " << seed;
        ASSERT_GT(steps, 20U);
        ASSERT_LE(steps, 120U);
        while (edited.redo()) {
        }
        ASSERT_EQ(edited.values(), end) << "seed " << seed;
        slots = CompareSlots(end);
    }
}

} // namespace
} // namespace varno::test
