#include "GUI/AAX_CVSTGUIButtonState.h"

#include "AAX_Enums.h"
#include "AAX_IViewContainer.h"

namespace {

struct Bits {
    uint32_t mHost;
    uint32_t mVSTGUI;
};

// On macOS kApple is the Control key and kControl the Command key; elsewhere kControl is the Control key and
// kApple does not occur.
constexpr Bits kBits[] = {
    {AAX_eModifiers_Shift, VSTGUI::kShift},
    {AAX_eModifiers_Control, VSTGUI::kApple},
    {AAX_eModifiers_Option, VSTGUI::kAlt},
    {AAX_eModifiers_Command, VSTGUI::kControl},
    {AAX_eModifiers_SecondaryButton, VSTGUI::kRButton},
};

// Translates the bits of one side to those of the other.
uint32_t Translate(uint32_t word, uint32_t Bits::*from, uint32_t Bits::*to) {
    uint32_t translated = 0;
    for (const Bits& bits : kBits) {
        translated |= (word & bits.*from) != 0 ? bits.*to : 0U;
    }
    return translated;
}

} // namespace

AAX_CVSTGUIButtonState::AAX_CVSTGUIButtonState(const VSTGUI::CButtonState& state,
                                               AAX_IViewContainer* container)
    : mButtonState(static_cast<uint32_t>(state())) {
    mModifiers = Translate(mButtonState, &Bits::mVSTGUI, &Bits::mHost);
    if (container != nullptr) {
        uint32_t hostModifiers = 0;
        container->GetModifiers(&hostModifiers);
        mModifiers |= hostModifiers;
    }
    mButtonState |= Translate(mModifiers, &Bits::mHost, &Bits::mVSTGUI);
}
