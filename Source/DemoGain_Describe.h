/// The description of the effect.
#ifndef DEMOGAIN_DESCRIBE_H
#define DEMOGAIN_DESCRIBE_H

#include "AAX_Init.h"

/// Identifier under which the effect is added to the collection.
inline constexpr char cDemoGain_EffectID[] = "com.morvak.varno-s.aax";

#endif
