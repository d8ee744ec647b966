// What the user does to the controls and by key, and what the view does once per tick of the host's timer.
#include "GUI/DemoGain_GUI_VST/DemoGain_View.h"

#include "AAX_Assert.h"
#include "AAX_CEffectParameters.h"
#include "AAX_IController.h"
#include "DemoGain_Alg.h"
#include "DemoGain_MeterLaw.h"
#include "DemoGain_ParameterTable.h"
#include "DemoGain_PresetText.h"
#include "GUI/DemoGain_GUI_VST/DemoGain_Controls.h"
#include "GUI/DemoGain_GUI_VST/DemoGain_Gestures.h"
#include "Platform/Clipboard.h"

#include "vstgui/lib/events.h"

#include <algorithm>

using namespace DemoGain_ViewLayout;
using VSTGUI::CControl;

namespace {

// The letter of a key while Control is held. X11 reports such letters as the control characters 1 to 26.
char32_t LetterOf(char32_t character) {
    constexpr char32_t kLastControl = 26;
    constexpr char32_t kBeforeA = U'a' - 1;
    return character > 0 && character <= kLastControl ? character + kBeforeA : character;
}

} // namespace

// Gestures.

void DemoGain_View::controlBeginEdit(CControl* control) {
    const Control* const row = DemoGain_Gestures::ControlOf(control->getTag());
    if (const auto parameters = Parameters(); row != nullptr && parameters) {
        parameters->TouchParameter(row->mID);
    }
}

void DemoGain_View::controlEndEdit(CControl* control) {
    const Control* const row = DemoGain_Gestures::ControlOf(control->getTag());
    if (const auto parameters = Parameters(); row != nullptr && parameters) {
        parameters->ReleaseParameter(row->mID);
    }
}

void DemoGain_View::onMouseEvent(VSTGUI::MouseEvent& event, VSTGUI::CFrame* /*frame*/) {
    if (event.type == VSTGUI::EventType::MouseDown) {
        for (DemoGain_HostedControl* const control : mHosted) {
            control->EndOffer();
        }
    }
}

void DemoGain_View::valueChanged(CControl* control) {
    if (getParameters() == nullptr) {
        return;
    }
    const Control* const row = DemoGain_Gestures::ControlOf(control->getTag());
    if (row == nullptr) {
        AAX_ASSERT(0);
    } else if (DemoGain_Gestures::HoldsParameter(*row)) {
        ChangeParameter(*row, control->getValue());
    } else if (control->getValue() > control->getMin()) {
        // The button notifies with 1 once for each completed click.
        UseClipboard(*row);
    }
}

void DemoGain_View::ChangeParameter(const Control& row, float value) {
    const bool isAutoGainOn = IsAutoGainOn();
    const DemoGain_Gestures::Gesture& gesture = DemoGain_Gestures::GestureOf(row);
    RequestNormalized(row.mID, value);
    if (isAutoGainOn && row.mID == std::string_view(cDemoGain_GainID)) {
        CompensateGain(value);
    }
    if (isAutoGainOn && gesture.mRestartsMatching) {
        mVolumeMatch.RequestRestart();
    }
    ShowStatus(DemoGain_Gestures::StatusText(gesture, value));
}

// Setting a value is a request that the host carries out later, so the gain read here is still the old one.
// Only more gain is compensated at once; less gain never raises the volume.
void DemoGain_View::CompensateGain(double gain) {
    const double raise = gain - ReadNormalized(cDemoGain_GainID);
    const double volume = ReadNormalized(cDemoGain_VolumeID);
    if (raise > 0.0) {
        RequestNormalized(cDemoGain_VolumeID, std::clamp(volume - raise, 0.0, 1.0));
    }
}

void DemoGain_View::ShowStatus(const std::string& text) {
    mStatusLabel->setText(text.c_str());
    mStatusLabel->invalid();
}

ACFPtr<AAX_IACFEffectParameters> DemoGain_View::Parameters() const {
    return ACFPtr<AAX_IACFEffectParameters>::Retain(getParameters());
}

double DemoGain_View::ReadNormalized(const char* paramID) const {
    double value = 0.0;
    if (const auto parameters = Parameters()) {
        parameters->GetParameterNormalizedValue(paramID, &value);
    }
    return value;
}

void DemoGain_View::RequestNormalized(const char* paramID, double value) {
    if (const auto parameters = Parameters()) {
        parameters->SetParameterNormalizedValue(paramID, value);
    }
}

bool DemoGain_View::IsAutoGainOn() const {
    return ReadNormalized(cDemoGain_AutoGainID) > double{kAlgSwitchThreshold};
}

// The clipboard, by button and by key.

void DemoGain_View::UseClipboard(const Control& row) {
    if (row.mArt == Art::kCopy) {
        CopyPreset(row);
    } else {
        PastePreset(row);
    }
}

void DemoGain_View::CopyPreset(const Control& row) {
    if (const auto parameters = Parameters()) {
        mClipboard->setText(DemoGain_PresetText::Write(*parameters));
        ShowStatus(DemoGain_Gestures::GestureOf(row).mText);
    }
}

void DemoGain_View::PastePreset(const Control& row) {
    const DemoGain_Gestures::Gesture& gesture = DemoGain_Gestures::GestureOf(row);
    if (IsAutoGainOn() && gesture.mRestartsMatching) {
        mVolumeMatch.RequestRestart();
    }
    const std::optional<std::string> text = mClipboard->text();
    const auto parameters = Parameters();
    if (!text || !parameters) {
        return;
    }
    const auto values = DemoGain_PresetText::Parse(*text);
    if (values) {
        DemoGain_PresetText::Apply(*values, *parameters);
    }
    ShowStatus(values ? gesture.mText : DemoGain_Gestures::kFailedText);
}

void DemoGain_View::onKeyboardEvent(VSTGUI::KeyboardEvent& event, VSTGUI::CFrame*) {
    if (event.type != VSTGUI::EventType::KeyDown || !event.modifiers.is(VSTGUI::ModifierKey::Control)) {
        return;
    }
    const char32_t letter = LetterOf(event.character);
    if (letter == U'c' || letter == U'v') {
        PressButton(letter == U'c' ? Art::kCopy : Art::kPaste);
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

// The host's timer.

void DemoGain_View::TimerWakeup() {
    Tick(static_cast<uint32_t>(getFrame()->getTicks()));
}

void DemoGain_View::Tick(uint32_t ticksMs) {
    if (getParameters() == nullptr) {
        return;
    }
    UpdateMeters();
    const std::optional<double> volume = mVolumeMatch.Tick(
        ticksMs, ReadMeter(eMeterTap_Input), ReadMeter(eMeterTap_Output), ReadNormalized(cDemoGain_VolumeID));
    if (volume) {
        RequestNormalized(cDemoGain_VolumeID, *volume);
    }
}

void DemoGain_View::UpdateMeters() {
    std::size_t tap = eMeterTap_GainReductionLeft;
    for (std::size_t i = 0; i < mControls.size(); ++i) {
        if (kControls[i].mKind == Kind::kMeter) {
            mControls[i]->setValue(DemoGain_MeterValue(ReadMeter(tap)));
            mControls[i]->invalid();
            ++tap;
        }
    }
}

float DemoGain_View::ReadMeter(std::size_t tap) const {
    float value = 0.0F;
    const auto held = Parameters();
    auto* const parameters = dynamic_cast<AAX_CEffectParameters*>(held.Get());
    const AAX_IController* const own = parameters != nullptr ? parameters->Controller() : nullptr;
    const AAX_IController* const controller = own != nullptr ? own : mController;
    if (controller != nullptr) {
        controller->GetCurrentMeterValue(cDemoGain_MeterID[tap], &value);
    }
    return value;
}
