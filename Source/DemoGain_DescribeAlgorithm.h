/// The description of one variant of the algorithm; for DemoGain_Describe and its tests alone.
#ifndef DEMOGAIN_DESCRIBEALGORITHM_H
#define DEMOGAIN_DESCRIBEALGORITHM_H

#include "AAX_Assert.h"
#include "AAX_IComponentDescriptor.h"

/// Under this name failed host calls of the description are reported.
inline constexpr char cDemoGain_DescribeSource[] = "DemoGain_Describe";

/// Reports a failed call of the host's; the description carries on. [main]
inline void DemoGain_ExpectSuccess(AAX_Result err, int32_t line = __builtin_LINE()) {
    AAX_ReportUnless(err == AAX_SUCCESS, cDemoGain_DescribeSource, line, "err == AAX_SUCCESS");
}

/// Declares fields and routines of the mono or the stereo variant to `outDesc` (borrowed). Another stem
/// format is reported and gets no routine. [main]
void DescribeAlgorithmComponent(AAX_EStemFormat inStemFormat, AAX_IComponentDescriptor* outDesc);

#endif
