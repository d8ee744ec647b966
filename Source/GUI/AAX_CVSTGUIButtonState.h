/// The buttons and modifier keys of a mouse event, as bits of VSTGUI and of the host.
#ifndef VARNO_SOURCE_GUI_AAX_CVSTGUIBUTTONSTATE_H
#define VARNO_SOURCE_GUI_AAX_CVSTGUIBUTTONSTATE_H

#include "vstgui/lib/cbuttonstate.h"

#include <cstdint>

class AAX_IViewContainer;

/// Both values hold the keys that either side reports: VSTGUI's controls also get the keys that only the host
/// sees.
class AAX_CVSTGUIButtonState {
public:
    /// `state` comes with the event; `container` (borrowed, may be null) is asked for the keys that are down.
    /// [main]
    AAX_CVSTGUIButtonState(const VSTGUI::CButtonState& state, AAX_IViewContainer* container);

    /// The host's bits, AAX_EModifiers. [any]
    uint32_t GetModifiers() const { return mModifiers; }
    /// VSTGUI's bits. [any]
    VSTGUI::CButtonState GetButtonState() const { return {static_cast<int32_t>(mButtonState)}; }

private:
    uint32_t mModifiers = 0;
    uint32_t mButtonState = 0;
};

#endif
