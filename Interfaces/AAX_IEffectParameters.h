/// The data model as the plug-in implements it.
#ifndef VARNO_INTERFACES_AAX_IEFFECTPARAMETERS_H
#define VARNO_INTERFACES_AAX_IEFFECTPARAMETERS_H

#include "AAX_IACFEffectParameters.h"
#include "ACF/ACFDelegating.h"

/// The host's interface to the data model on the counted base of every object that the host holds.
class AAX_IEffectParameters : public ACFDelegating<AAX_IACFEffectParameters> {};

#endif
