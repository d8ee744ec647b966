/// The description of the effect.
#ifndef VARNO_SOURCE_DEMOGAIN_DESCRIBE_H
#define VARNO_SOURCE_DEMOGAIN_DESCRIBE_H

#include "AAX_Init.h"

/// Identifier under which the effect is added to the collection.
inline constexpr char cDemoGain_EffectID[] = "com.morvak.varno-s.aax";

#endif
