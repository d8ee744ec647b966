#include "Surround/SurroundAccess.h"

#include "DemoGain_ParameterTable.h"
#include "Tests/Integration/HostedEffect.h"

#include <gmock/gmock.h>
#include <utility>

namespace varno::test {
namespace {

using testing::ElementsAre;

class SurroundAccessTest : public HostedEffect, private SurroundAccess::Owner {
protected:
    SurroundView accessView() override { return view; }
    void press(BarLayout::Button button) override { pressed.push_back(button); }
    void press(const FaceLayout::Control& control) override { clicked.emplace_back(control.mID); }
    bool focus(const std::string& id) override {
        focused.push_back(id);
        return id != "bar";
    }
    SurroundAccess::Owner& owner() { return *this; }

    static std::vector<std::string> idsOf(const AccessNode& node) {
        std::vector<std::string> ids;
        for (const AccessNode& child : node.children) {
            ids.push_back(child.id);
        }
        return ids;
    }
    static const AccessNode* find(const AccessNode& node, const std::string& id) {
        if (node.id == id) {
            return &node;
        }
        for (const AccessNode& child : node.children) {
            if (const AccessNode* const found = find(child, id)) {
                return found;
            }
        }
        return nullptr;
    }
    static AccessNode part(const AccessNode& window, const std::string& id) {
        const AccessNode* const found = find(window, id);
        return found != nullptr ? *found : AccessNode{};
    }

    SurroundView view{.title = "Varno-S", .place = {100, 200, 690, 452}, .barHeight = 62};
    std::vector<BarLayout::Button> pressed;
    std::vector<std::string> clicked;
    std::vector<std::string> focused;
};

TEST_F(SurroundAccessTest, SaysWhatTheHostShows) {
    const auto instance = makeInstance(module());
    const AccessNode plain = describeSurround(view, *instance);
    view.hostTexts = {{"Gain", "Automation is played."}, {accessIDOf(BarLayout::Button::kBypass), "Mapped."}};
    const AccessNode window = describeSurround(view, *instance);
    EXPECT_EQ(part(window, "Gain").description, part(plain, "Gain").description + " Automation is played.");
    EXPECT_EQ(part(window, "Volume"), part(plain, "Volume"));
    const std::string bypass = accessIDOf(BarLayout::Button::kBypass);
    EXPECT_EQ(part(window, bypass).description, part(plain, bypass).description + " Mapped.");
}

TEST_F(SurroundAccessTest, HasTheControlsInReadingOrder) {
    const auto instance = makeInstance(module());
    const AccessNode window = describeSurround(view, *instance);
    EXPECT_EQ(window.role, AccessRole::kWindow);
    EXPECT_EQ(window.name, "Varno-S");
    EXPECT_THAT(idsOf(window), ElementsAre("bar", "face"));
    EXPECT_THAT(idsOf(part(window, "face")),
                ElementsAre("Gain", "HP", "Band", "Atk", "Rls", "ASw", "Volume", "HSw", "UK", "Hot", "Ratio",
                            "LinkSw", "Mix", "PR1K", "PR2K"));
    view.barHeight = 0;
    EXPECT_THAT(idsOf(describeSurround(view, *instance)), ElementsAre("face"));
}

TEST_F(SurroundAccessTest, AControlHasItsTrueValue) {
    const auto instance = makeInstance(module());
    instance->setNormalized("Atk", 1.0);
    instance->setNormalized("HP", 1.0);
    instance->setNormalized("Ratio", 4.0 / 7.0);
    view.focused = "Atk";
    const AccessNode window = describeSurround(view, *instance);
    const AccessNode gain = part(window, "Gain");
    EXPECT_EQ(gain.role, AccessRole::kDial);
    EXPECT_EQ(gain.name, "Gain");
    EXPECT_EQ(gain.valueText, "0.0 dB");
    EXPECT_EQ(gain.description, DemoGain_FindParameter("Gain")->mHelp);
    EXPECT_EQ(gain.range, (AccessRange{0.0, 130.0, 1.0, 65.0}));
    EXPECT_TRUE(gain.states.isFocusable);
    EXPECT_FALSE(gain.states.isFocused);
    const AccessNode attack = part(window, "Atk");
    EXPECT_EQ(attack.range->current, 130.0);
    EXPECT_NE(attack.valueText.find("ms"), std::string::npos) << attack.valueText;
    EXPECT_TRUE(attack.states.isFocused);
    const AccessNode highPass = part(window, "HP");
    EXPECT_EQ(highPass.role, AccessRole::kCheckBox);
    EXPECT_TRUE(highPass.states.isChecked);
    EXPECT_FALSE(highPass.range.has_value());
    const AccessNode ratio = part(window, "Ratio");
    EXPECT_EQ(ratio.role, AccessRole::kSlider);
    EXPECT_EQ(ratio.range, (AccessRange{0.0, 7.0, 1.0, 4.0}));
    EXPECT_EQ(ratio.valueText, "curve 5");
}

TEST_F(SurroundAccessTest, PartsLieBelowTheBarAtTheScaleOfTheWindow) {
    const auto instance = makeInstance(module());
    EXPECT_EQ(part(describeSurround(view, *instance), "Gain").rectangle,
              (AccessRectangle{124, 200 + 62 + 56, 62, 62}));
    view.scale = 2.0;
    view.barHeight = 124;
    const AccessNode window = describeSurround(view, *instance);
    EXPECT_EQ(part(window, "Gain").rectangle, (AccessRectangle{148, 200 + 124 + 112, 124, 124}));
    EXPECT_EQ(part(window, "bar.Bypass").rectangle, (AccessRectangle{116, 212, 148, 48}));
}

TEST_F(SurroundAccessTest, TheBarHasItsState) {
    const auto instance = makeInstance(module());
    view.bar = {.isBypassed = true,
                .isModuleBypassed = false,
                .isB = true,
                .canUndo = true,
                .canRedo = false,
                .preset = "Drum Bus",
                .isPresetChanged = true,
                .quality = {.wish = 8, .used = 4, .rateHz = 96'000.0},
                .isCurveShown = false,
                .size = "100 %",
                .message = "saved"};
    view.meters.levels[0].nowDB = -12.34;
    view.meters.reductionDB = -3.0;
    const AccessNode window = describeSurround(view, *instance);
    EXPECT_EQ(part(window, "bar.Bypass").role, AccessRole::kToggleButton);
    EXPECT_TRUE(part(window, "bar.Bypass").states.isChecked);
    EXPECT_EQ(part(window, "bar.Settings A").role, AccessRole::kRadioButton);
    EXPECT_FALSE(part(window, "bar.Settings A").states.isChecked);
    EXPECT_TRUE(part(window, "bar.Settings B").states.isChecked);
    EXPECT_TRUE(part(window, "bar.Undo").states.isEnabled);
    EXPECT_FALSE(part(window, "bar.Redo").states.isEnabled);
    EXPECT_EQ(part(window, "bar.Presets").valueText, "Drum Bus, changed");
    EXPECT_EQ(part(window, "bar.Quality").valueText, "4x, since 8x needs 768000 Hz");
    EXPECT_EQ(part(window, "bar.Quality").role, AccessRole::kComboBox);
    EXPECT_EQ(part(window, "bar.Size").valueText, "100 %");
    EXPECT_FALSE(part(window, "bar.Curve").states.isChecked);
    EXPECT_EQ(part(window, "bar.Input level").valueText, "-12.3 dB");
    EXPECT_EQ(part(window, "bar.Output level").valueText, "silence");
    EXPECT_EQ(part(window, "bar.reduction").valueText, "3.0 dB");
    EXPECT_EQ(part(window, "bar.message").name, "saved");
    EXPECT_EQ(part(window, "bar.Bypass").description, BarLayout::kButtons[0].help);
    view.bar.isModuleBypassed = true;
    EXPECT_TRUE(part(describeSurround(view, *instance), "bar.Bypass")
                    .description.starts_with("The effect's own bypass is on. "));
}

TEST_F(SurroundAccessTest, ValuesAreSetAsSteps) {
    const auto instance = makeInstance(module());
    CompareSlots slots(settingsOf(*instance));
    EditedSettings edited(*instance, slots);
    SurroundAccess access(*instance, edited, owner());
    EXPECT_TRUE(access.setValue("Gain", 130.0));
    EXPECT_EQ(instance->normalized("Gain"), 1.0);
    EXPECT_TRUE(access.setValue("Ratio", 3.0));
    EXPECT_EQ(part(access.describe(), "Ratio").range->current, 3.0);
    EXPECT_TRUE(access.setValueText("Gain", "0 dB"));
    EXPECT_EQ(instance->normalized("Gain"), 0.5);
    EXPECT_TRUE(edited.undo());
    EXPECT_EQ(instance->normalized("Gain"), 1.0);
    EXPECT_FALSE(access.setValueText("Gain", "loud"));
    EXPECT_FALSE(access.setValueText("bar.Bypass", "on"));
    EXPECT_FALSE(access.setValue("bar.reduction", 1.0));
    EXPECT_EQ(instance->normalized("Gain"), 1.0);
}

TEST_F(SurroundAccessTest, SwitchesAndButtonsArePressed) {
    const auto instance = makeInstance(module());
    CompareSlots slots(settingsOf(*instance));
    EditedSettings edited(*instance, slots);
    SurroundAccess access(*instance, edited, owner());
    EXPECT_TRUE(access.press("ASw"));
    EXPECT_THAT(std::exchange(clicked, {}), ElementsAre("ASw"));
    EXPECT_FALSE(access.press("Gain"));
    for (const BarLayout::ButtonRow& row : BarLayout::kButtons) {
        EXPECT_TRUE(access.press(accessIDOf(row.button)));
        EXPECT_EQ(pressed.back(), row.button);
    }
    for (const char* const button : {"PR1K", "PR2K"}) {
        const AccessNode node = part(access.describe(), button);
        EXPECT_EQ(node.role, AccessRole::kPushButton);
        EXPECT_EQ(node.action, "press");
        EXPECT_EQ(node.name, clicked.empty() ? "Copy Preset" : "Paste Preset");
        EXPECT_TRUE(node.states.isFocusable);
        EXPECT_TRUE(access.press(button));
        EXPECT_EQ(clicked.back(), button);
    }
    EXPECT_FALSE(access.press("bar.message"));
    EXPECT_FALSE(access.press("METERGR1"));
    EXPECT_EQ(clicked.size(), 2U);
    EXPECT_TRUE(access.grabFocus("Gain"));
    EXPECT_FALSE(access.grabFocus("bar"));
    EXPECT_THAT(focused, ElementsAre("Gain", "bar"));
}

} // namespace
} // namespace varno::test
