/// The signal path written down sample by sample, as it is defined, without any optimisation.
#ifndef VARNO_TESTS_REFERENCE_REFERENCEROUTINE_H
#define VARNO_TESTS_REFERENCE_REFERENCEROUTINE_H

#include "DemoGain_Alg.h"

namespace varno::reference {

/// Level (linear, finite, 0 or more) in dB.
float levelToDB(float level);
/// Gain (dB, finite) as a factor.
float gainToFactor(float gainDB);
/// Rounded magnitude of the detector's signal.
float detectorLevel(float v);
/// Rounded magnitude that decides the clip gain.
float clipLevel(float v, float bias);

/// Processes one buffer of one instance of one channel. Runs in the floating-point mode of its caller; input
/// must be finite and at most 1e30 in magnitude.
void processMono(SDemoGain_Alg_Context& context);
/// The same for two channels.
void processStereo(SDemoGain_Alg_Context& context);

} // namespace varno::reference

#endif
