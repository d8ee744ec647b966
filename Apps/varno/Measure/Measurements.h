/// What the program measures of the effect. Each makes its signals, runs the effect over them and returns
/// what it found.
#ifndef VARNO_APPS_VARNO_MEASURE_MEASUREMENTS_H
#define VARNO_APPS_VARNO_MEASURE_MEASUREMENTS_H

#include "Measure/Figure.h"
#include "Measure/MeasuredEffect.h"

namespace varno {

/// Change of level of a steady tone by each gain reduction curve, over its level.
Figure measureCurves(const EffectMaker& effect);

/// Time constants of attack and release at the ends and in the middle of their knobs.
Figure measureTimes(const EffectMaker& effect);

/// How much louder or softer the detector hears a frequency with each of its filters.
Figure measureDetector(const EffectMaker& effect);

/// Change of level and distortion by the drive, over its knob and the level.
Figure measureDrive(const EffectMaker& effect);

/// What is no harmonic of a tone in the output, over the tone, its level and the drive.
Figure measureAliasing(const EffectMaker& effect);

} // namespace varno

#endif
