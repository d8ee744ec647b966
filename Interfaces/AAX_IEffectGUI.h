/// The editor as the plug-in implements it.
#ifndef VARNO_INTERFACES_AAX_IEFFECTGUI_H
#define VARNO_INTERFACES_AAX_IEFFECTGUI_H

#include "AAX_IACFEffectGUI.h"
#include "ACF/ACFDelegating.h"

/// The host's interface to the editor on the counted base of every object that the host holds.
class AAX_IEffectGUI : public ACFDelegating<AAX_IACFEffectGUI> {};

#endif
