#include "Surround/BarControl.h"

#include "Tests/Integration/HostedEffect.h"
#include "Tests/Support/TemporaryFolder.h"

#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>

namespace varno::test {
namespace {

using BarLayout::Button;
using testing::HasSubstr;

class BarControlTest : public HostedEffect, public BarOwner {
protected:
    bool isBypassed() const override { return bypassed; }
    void setBypassed(bool isBypassed) override { bypassed = isBypassed; }
    Quality quality() const override { return {wish, std::min(wish, 4), 96'000.0}; }
    void setQuality(std::int32_t factor) override { wish = factor; }

    void setGain(float value) { parts->edited.set(*settingOf("Gain"), value); }
    double gain() const { return parts->instance->normalized("Gain"); }
    BarState state() { return parts->control.state(*parts->instance); }
    std::filesystem::path file(const std::string& name) const {
        return std::filesystem::path(folder.path()) / "presets" / (name + ".txt");
    }

    // Everything of the module ends before it does.
    void TearDown() override {
        parts.reset();
        HostedEffect::TearDown();
    }

    struct Parts {
        Parts(const std::shared_ptr<Module>& module, const std::filesystem::path& userPresets,
              BarOwner& owner)
            : instance(makeInstance(module)),
              presets(VARNO_FACTORY_PRESETS, userPresets),
              control(edited, presets, slots, owner) {}

        std::unique_ptr<Instance> instance;
        CompareSlots slots{settingsOf(*instance)};
        EditedSettings edited{*instance, slots};
        PresetStore presets;
        BarControl control;
    };

    bool bypassed = false;
    std::int32_t wish = 1;
    TemporaryFolder folder;
    std::unique_ptr<Parts> parts =
        std::make_unique<Parts>(module(), std::filesystem::path(folder.path()) / "presets", *this);
};

TEST_F(BarControlTest, BypassIsTheOwners) {
    EXPECT_TRUE(parts->control.press(Button::kBypass));
    EXPECT_TRUE(bypassed);
    EXPECT_TRUE(state().isBypassed);
    EXPECT_FALSE(state().isModuleBypassed);
    EXPECT_TRUE(parts->control.press(Button::kBypass));
    EXPECT_FALSE(bypassed);
    parts->instance->setNormalized("MasterBypassID", 1.0);
    EXPECT_TRUE(state().isModuleBypassed);
    EXPECT_FALSE(state().isBypassed);
}

TEST_F(BarControlTest, TheQualityIsTheOwnersAndNoStepOfUndo) {
    EXPECT_EQ(state().quality, (Quality{1, 1, 96'000.0}));
    parts->control.chooseQuality(4);
    EXPECT_EQ(wish, 4);
    EXPECT_EQ(state().message, "quality 4x");
    EXPECT_EQ(parts->control.tip(Button::kQuality), "4x");
    parts->control.chooseQuality(8);
    EXPECT_EQ(state().quality, (Quality{8, 4, 96'000.0}));
    EXPECT_EQ(state().message, "quality 4x, since 8x needs 768000 Hz");
    EXPECT_EQ(parts->control.tip(Button::kQuality), "4x, since 8x needs 768000 Hz");
    parts->control.press(Button::kNextPreset);
    parts->control.press(Button::kSlotB);
    EXPECT_EQ(wish, 8);
    parts->control.press(Button::kSlotA);
    parts->control.press(Button::kUndo);
    EXPECT_FALSE(state().canUndo);
    EXPECT_EQ(wish, 8);
}

TEST_F(BarControlTest, UndoAndRedoNameWhatTheyDo) {
    EXPECT_FALSE(state().canUndo);
    setGain(0.575F);
    EXPECT_EQ(parts->control.tip(Button::kUndo), "Gain +3.0 dB");
    EXPECT_EQ(parts->control.tip(Button::kRedo), "");
    parts->control.press(Button::kUndo);
    EXPECT_EQ(gain(), 0.5);
    EXPECT_EQ(state().message, "undone: Gain +3.0 dB");
    EXPECT_TRUE(state().canRedo);
    EXPECT_EQ(parts->control.tip(Button::kRedo), "Gain +3.0 dB");
    parts->control.press(Button::kRedo);
    EXPECT_NEAR(gain(), 0.575, 1e-6);
    EXPECT_EQ(state().message, "done again: Gain +3.0 dB");
}

TEST_F(BarControlTest, EachSlotHasItsSettingsAndItsPreset) {
    parts->control.press(Button::kNextPreset);
    const std::string first = state().preset;
    EXPECT_EQ(first, "Bass Firm");
    parts->control.press(Button::kSlotB);
    EXPECT_TRUE(state().isB);
    EXPECT_EQ(state().preset, "");
    EXPECT_EQ(gain(), 0.5);
    parts->control.press(Button::kSlotB); // is present already
    EXPECT_TRUE(state().isB);
    parts->control.press(Button::kSlotA);
    EXPECT_EQ(state().preset, first);
    EXPECT_FALSE(state().isPresetChanged);
    EXPECT_NE(gain(), 0.5);
    parts->control.press(Button::kCopySlot);
    EXPECT_EQ(state().message, "copied A to B");
    parts->control.press(Button::kSlotB);
    EXPECT_NE(gain(), 0.5);
}

TEST_F(BarControlTest, AChangedPresetIsMarked) {
    parts->control.press(Button::kNextPreset);
    EXPECT_FALSE(state().isPresetChanged);
    setGain(0.9F);
    EXPECT_TRUE(state().isPresetChanged);
    parts->control.press(Button::kUndo);
    EXPECT_FALSE(state().isPresetChanged);
}

TEST_F(BarControlTest, PresetsAreSavedRenamedAndBroughtBack) {
    setGain(0.75F);
    parts->control.savePresetAs("Drums/Loud");
    EXPECT_EQ(state().message, "saved preset Drums/Loud");
    EXPECT_TRUE(std::filesystem::exists(file("Drums/Loud")));
    EXPECT_EQ(state().preset, "Loud");
    setGain(0.8F);
    parts->control.savePreset();
    EXPECT_FALSE(state().isPresetChanged);
    parts->control.renamePreset("Louder");
    EXPECT_TRUE(std::filesystem::exists(file("Drums/Louder")));
    parts->control.removePreset();
    EXPECT_FALSE(std::filesystem::exists(file("Drums/Louder")));
    EXPECT_THAT(state().message, HasSubstr("brings it back"));
    parts->control.undoRemovePreset();
    EXPECT_TRUE(std::filesystem::exists(file("Drums/Louder")));
    EXPECT_NEAR(gain(), 0.8, 1e-6);
}

TEST_F(BarControlTest, SavingNeverReplacesAnotherPreset) {
    parts->control.savePresetAs("one");
    setGain(0.75F);
    parts->control.savePresetAs("one");
    EXPECT_THAT(state().message, HasSubstr("one"));
    EXPECT_THAT(state().message, testing::Not(HasSubstr("saved")));
    parts->presets.rescan();
    EXPECT_EQ(parts->presets.find(file("one"))->values[0], 0.5F);
}

TEST_F(BarControlTest, FactoryPresetsStay) {
    parts->control.press(Button::kNextPreset);
    const std::string name = state().preset;
    parts->control.removePreset();
    parts->control.renamePreset("mine");
    parts->control.savePreset();
    EXPECT_EQ(state().preset, name);
    EXPECT_FALSE(std::filesystem::exists(file("mine")));
}

TEST_F(BarControlTest, ShowsThatAVolumeIsMatched) {
    parts->control.showMessage("before");
    parts->edited.settle();
    EXPECT_EQ(state().message, "before");
    parts->instance->requestNormalized("Volume", 0.6); // as the editor's timer does
    parts->edited.settle();
    EXPECT_EQ(state().message, "matching volume");
    parts->edited.settle();
    EXPECT_EQ(state().message, "before");
}

TEST_F(BarControlTest, OtherButtonsAreNotItsOwn) {
    for (const Button button : {Button::kPresets, Button::kQuality, Button::kCurve, Button::kSize}) {
        EXPECT_FALSE(parts->control.press(button));
    }
}

} // namespace
} // namespace varno::test
