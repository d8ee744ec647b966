/// The description of the effect. GetEffectDescriptions, which AAX_Init.h declares, is defined here.
#ifndef VARNO_SOURCE_DEMOGAIN_DESCRIBE_H
#define VARNO_SOURCE_DEMOGAIN_DESCRIBE_H

#include "AAX_IComponentDescriptor.h"
#include "AAX_Init.h"

/// Identifier under which the effect is added to the collection.
inline constexpr char cDemoGain_EffectID[] = "com.morvak.varno-s.aax";

/// Declares fields and routines of the mono or the stereo variant to `outDesc` (borrowed): the part of the
/// description that tests look at alone. Another stem format is reported and gets no routine. [main]
void DescribeAlgorithmComponent(AAX_EStemFormat inStemFormat, AAX_IComponentDescriptor* outDesc);

#endif
