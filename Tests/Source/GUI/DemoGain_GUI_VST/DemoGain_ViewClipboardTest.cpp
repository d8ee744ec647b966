#include "DemoGain_PresetText.h"
#include "Tests/Source/GUI/DemoGain_GUI_VST/ViewFixture.h"

#include "vstgui/lib/events.h"

#include <gmock/gmock.h>

#include <initializer_list>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using varno::test::ViewFixture;

constexpr char kPreset[] = "Varno-S 030001\n"
                           "Gain 0.1000000000 Volume 0.2000000000 Hipass 1.0000000000 Band 0.0000000000\n"
                           "Attack 0.3000000000 Release 0.4000000000 UK 1.0000000000 Hottitude 0.5000000000\n"
                           "Ratio 0.6000000000 Mix 0.7000000000 Auto 0.0000000000 HarmSw 1.0000000000\n"
                           "LinkSw 1.0000000000";

class DemoGain_ViewClipboard : public ViewFixture {
protected:
    // The calls of a click as the library makes them: down and then up again, both reported at the release.
    std::vector<std::string> click(const char* id, bool isInside = true) {
        VSTGUI::CControl* const button = view->GetControl(id);
        VSTGUI::CPoint in = button->getViewSize().getCenter();
        VSTGUI::CPoint out = button->getViewSize().getBottomRight() + VSTGUI::CPoint(10, 10);
        button->onMouseDown(in, VSTGUI::kLButton);
        EXPECT_EQ(clipboard->writes, mWritesBefore) << "a press alone does nothing";
        button->onMouseMoved(isInside ? in : out, VSTGUI::kLButton);
        button->onMouseUp(isInside ? in : out, VSTGUI::kLButton);
        mWritesBefore = clipboard->writes;
        return model->takeCalls();
    }
    // Whether the view has used the key.
    bool press(char32_t character, std::initializer_list<VSTGUI::ModifierKey> modifiers,
               VSTGUI::EventType type = VSTGUI::EventType::KeyDown) {
        VSTGUI::KeyboardEvent event;
        event.type = type;
        event.character = character;
        for (const VSTGUI::ModifierKey modifier : modifiers) {
            event.modifiers.add(modifier);
        }
        view->onKeyboardEvent(event, view->getFrame());
        return event.consumed;
    }

private:
    int mWritesBefore = 0;
};

TEST_F(DemoGain_ViewClipboard, CopyWritesTheSettingsOncePerClick) {
    automate("Gain", 0.25);
    EXPECT_THAT(click("PR1K"), ElementsAre("touch PR1K", "release PR1K"));
    EXPECT_EQ(clipboard->writes, 1);
    EXPECT_EQ(clipboard->content, DemoGain_PresetText::Write(*model));
    EXPECT_EQ(status(), "Preset to Clipboard");
    EXPECT_EQ(view->GetControl("PR1K")->getValue(), 0.0F);
}

TEST_F(DemoGain_ViewClipboard, AClickThatLeavesTheButtonDoesNothing) {
    EXPECT_THAT(click("PR1K", false), ElementsAre("touch PR1K", "release PR1K"));
    EXPECT_EQ(clipboard->writes, 0);
    clipboard->content = kPreset;
    EXPECT_THAT(click("PR2K", false), ElementsAre("touch PR2K", "release PR2K"));
    EXPECT_EQ(status(), "---");
}

TEST_F(DemoGain_ViewClipboard, CopyMatchesNothing) {
    automate("ASw", 1.0);
    click("PR1K");
    EXPECT_FALSE(view->IsMatchingRequested());
}

TEST_F(DemoGain_ViewClipboard, AClosingViewHandsItsTextOver) {
    click("PR1K");
    EXPECT_EQ(clipboard->handOvers, 0);
    view->Disconnect();
    EXPECT_EQ(clipboard->handOvers, 1);
}

TEST_F(DemoGain_ViewClipboard, CopyShowsItsTextWhateverTheClipboardReports) {
    clipboard->takes = false;
    click("PR1K");
    EXPECT_EQ(clipboard->writes, 1);
    EXPECT_EQ(status(), "Preset to Clipboard");
}

TEST_F(DemoGain_ViewClipboard, CopyWritesZeroForAValueThatCannotBeRead) {
    automate("HSw", 1.0);
    model->unreadable = {"HSw"};
    click("PR1K");
    ASSERT_TRUE(clipboard->content);
    EXPECT_THAT(*clipboard->content, testing::HasSubstr(" HarmSw 0.0000000000\n"));
    EXPECT_EQ(status(), "Preset to Clipboard");
}

TEST_F(DemoGain_ViewClipboard, PasteWritesEveryValueInTheTextsOrder) {
    clipboard->content = kPreset;
    EXPECT_THAT(click("PR2K"),
                ElementsAre("touch PR2K", "set Gain 0.1", "set Volume 0.2", "set HP 1", "set Band 0",
                            "set Atk 0.3", "set Rls 0.4", "set UK 1", "set Hot 0.5", "set Ratio 0.6",
                            "set Mix 0.7", "set ASw 0", "set HSw 1", "set LinkSw 1", "release PR2K"));
    EXPECT_EQ(status(), "Preset From Clipboard");
    EXPECT_FALSE(view->IsMatchingRequested()) << "automatic gain is off";
}

TEST_F(DemoGain_ViewClipboard, APastedCopyRestoresEverything) {
    double value = 0.05;
    for (const DemoGain_PresetText::Item& item : DemoGain_PresetText::kItems) {
        automate(item.mParameterID, value += 0.0701234);
    }
    click("PR1K");
    std::vector<double> before;
    for (const DemoGain_PresetText::Item& item : DemoGain_PresetText::kItems) {
        before.push_back(valueOf(item.mParameterID));
        automate(item.mParameterID, 0.5);
    }
    click("PR2K");
    answer();
    std::size_t i = 0;
    for (const DemoGain_PresetText::Item& item : DemoGain_PresetText::kItems) {
        EXPECT_NEAR(valueOf(item.mParameterID), before[i++], 1e-7) << item.mParameterID;
    }
}

TEST_F(DemoGain_ViewClipboard, TextThatIsNoPresetChangesNoParameter) {
    const std::string preset = kPreset;
    for (const std::string& text :
         {std::string(), std::string("Hello world"), preset.substr(0, preset.rfind("LinkSw")),
          "Varno-S 030000" + preset.substr(preset.find('\n'))}) {
        openView();
        clipboard->content = text;
        EXPECT_THAT(click("PR2K"), ElementsAre("touch PR2K", "release PR2K")) << text;
        EXPECT_EQ(status(), "Failed From Clipboard");
    }
}

TEST_F(DemoGain_ViewClipboard, AnEmptyClipboardIsPassedOverInSilence) {
    EXPECT_THAT(click("PR2K"), ElementsAre("touch PR2K", "release PR2K"));
    EXPECT_EQ(status(), "---");
    EXPECT_FALSE(view->IsMatchingRequested());
}

TEST_F(DemoGain_ViewClipboard, WithAutoGainOnEveryPasteMatchesTheVolumeAnew) {
    automate("ASw", 1.0);
    for (const std::optional<std::string>& text :
         {std::optional<std::string>(), std::optional<std::string>("Hello"),
          std::optional<std::string>(kPreset)}) {
        openView();
        clipboard->content = text;
        click("PR2K");
        EXPECT_TRUE(view->IsMatchingRequested()) << text.value_or("no text");
    }
}

TEST_F(DemoGain_ViewClipboard, KeysDoWhatTheButtonsDo) {
    using VSTGUI::ModifierKey;
    // X11 reports Control with a letter as a control character.
    for (const char32_t copy : {U'c', U'\x03'}) {
        clipboard->content.reset();
        EXPECT_TRUE(press(copy, {ModifierKey::Control}));
        EXPECT_THAT(model->takeCalls(), ElementsAre("touch PR1K", "release PR1K"));
        EXPECT_EQ(clipboard->content, DemoGain_PresetText::Write(*model));
        EXPECT_EQ(status(), "Preset to Clipboard");
    }
    for (const char32_t paste : {U'v', U'\x16'}) {
        clipboard->content = "Hello";
        EXPECT_TRUE(press(paste, {ModifierKey::Control}));
        EXPECT_THAT(model->takeCalls(), ElementsAre("touch PR2K", "release PR2K"));
        EXPECT_EQ(status(), "Failed From Clipboard");
    }
    EXPECT_EQ(view->GetControl("PR1K")->getValue(), 0.0F);
    EXPECT_EQ(view->GetControl("PR2K")->getValue(), 0.0F);
}

TEST_F(DemoGain_ViewClipboard, OtherKeysAreLeftToOthers) {
    using VSTGUI::ModifierKey;
    EXPECT_FALSE(press(U'c', {ModifierKey::Control}, VSTGUI::EventType::KeyUp));
    EXPECT_FALSE(press(U'c', {ModifierKey::Control, ModifierKey::Shift}));
    EXPECT_FALSE(press(U'c', {ModifierKey::Alt}));
    EXPECT_FALSE(press(U'c', {}));
    for (const char32_t other : {U'x', U'\x18', U'\x1B', U'\0', U'\x1D'}) {
        EXPECT_FALSE(press(other, {ModifierKey::Control}));
    }
    EXPECT_EQ(clipboard->writes, 0);
    EXPECT_THAT(model->takeCalls(), IsEmpty());
}

} // namespace
