// Settings as text on the clipboard, by button and by key.
#include "GUI/DemoGain_GUI_VST/DemoGain_View.h"

#include "DemoGain_PresetText.h"
#include "GUI/DemoGain_GUI_VST/DemoGain_Gestures.h"
#include "Platform/Clipboard.h"

#include "vstgui/lib/events.h"

#include <algorithm>

using namespace DemoGain_ViewLayout;

namespace {

// What a key stands for while Control is held. X11 tells such letters as the control characters 1 to 26.
char32_t LetterOf(char32_t character) {
    constexpr char32_t kLastControl = 26;
    constexpr char32_t kBeforeA = U'a' - 1;
    return character > 0 && character <= kLastControl ? character + kBeforeA : character;
}

} // namespace

void DemoGain_View::UseClipboard(const Control& row) {
    if (row.mArt == Art::Copy) {
        CopyPreset(row);
    } else {
        PastePreset(row);
    }
}

void DemoGain_View::CopyPreset(const Control& row) {
    const std::string text = DemoGain_PresetText::Write(*getParameters());
    if (!text.empty() && mClipboard->setText(text)) {
        ShowStatus(DemoGain_Gestures::GestureOf(row).mText);
    }
}

void DemoGain_View::PastePreset(const Control& row) {
    const DemoGain_Gestures::Gesture& gesture = DemoGain_Gestures::GestureOf(row);
    if (IsAutoGainOn() && gesture.mRestartsMatching) {
        mVolumeMatch.RequestRestart();
    }
    const std::optional<std::string> text = mClipboard->text();
    if (!text) {
        return;
    }
    const auto values = DemoGain_PresetText::Parse(*text);
    if (values) {
        DemoGain_PresetText::Apply(*values, *getParameters());
    }
    ShowStatus(values ? gesture.mText : DemoGain_Gestures::kFailedText);
}

void DemoGain_View::onKeyboardEvent(VSTGUI::KeyboardEvent& event, VSTGUI::CFrame*) {
    if (event.type != VSTGUI::EventType::KeyDown || !event.modifiers.is(VSTGUI::ModifierKey::Control)) {
        return;
    }
    const char32_t letter = LetterOf(event.character);
    if (letter == U'c' || letter == U'v') {
        PressButton(letter == U'c' ? Art::Copy : Art::Paste);
        event.consumed = true;
    }
}

void DemoGain_View::PressButton(Art art) {
    const auto* const row = std::ranges::find(kControls, art, &Control::mArt);
    VSTGUI::CControl* const button = GetControl(row->mID);
    button->beginEdit();
    button->setValue(button->getMax());
    button->valueChanged();
    button->setValue(button->getMin());
    button->endEdit();
}
