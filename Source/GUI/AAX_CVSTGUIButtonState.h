/// The buttons and modifier keys of a mouse event in VSTGUI's words and in the host's.
#ifndef VARNO_SOURCE_GUI_AAX_CVSTGUIBUTTONSTATE_H
#define VARNO_SOURCE_GUI_AAX_CVSTGUIBUTTONSTATE_H

#include "vstgui/lib/cbuttonstate.h"

#include <cstdint>

class AAX_IViewContainer;

/// Both words hold what either side knows: keys that only the host sees become visible to VSTGUI's controls.
class AAX_CVSTGUIButtonState {
public:
    /// `state` comes with the event; `container` (borrowed, may be null) is asked for the keys that are down.
    /// [main]
    AAX_CVSTGUIButtonState(const VSTGUI::CButtonState& state, AAX_IViewContainer* container);

    /// The host's word, AAX_EModifiers bits. [any]
    uint32_t GetModifiers() const { return mModifiers; }
    /// VSTGUI's word. [any]
    VSTGUI::CButtonState GetButtonState() const { return {static_cast<int32_t>(mButtonState)}; }

private:
    uint32_t mModifiers = 0;
    uint32_t mButtonState = 0;
};

#endif
