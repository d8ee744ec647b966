/// The description of one variant of the algorithm; for the tests of DemoGain_Describe, whose own it is.
#ifndef VARNO_SOURCE_DEMOGAIN_DESCRIBEALGORITHM_H
#define VARNO_SOURCE_DEMOGAIN_DESCRIBEALGORITHM_H

#include "AAX_IComponentDescriptor.h"

/// Declares fields and routines of the mono or the stereo variant to `outDesc` (borrowed). Another stem
/// format is reported and gets no routine. [main]
void DescribeAlgorithmComponent(AAX_EStemFormat inStemFormat, AAX_IComponentDescriptor* outDesc);

#endif
