/// What the program measures of the effect. Each makes its signals, runs the effect over them and returns
/// what it found.
#ifndef VARNO_APPS_VARNO_MEASURE_MEASUREMENTS_H
#define VARNO_APPS_VARNO_MEASURE_MEASUREMENTS_H

#include "Measure/Figure.h"
#include "Measure/MeasuredEffect.h"

#include <functional>
#include <vector>

namespace varno {

/// Where a figure is measured along one of its axes, in the axis' unit, rising.
using Grid = std::vector<double>;

/// Change of level of a steady tone by each gain reduction curve, over its level.
Figure measureCurves(const EffectMaker& effect);

/// Time constants of attack and release at the ends and in the middle of their knobs.
Figure measureTimes(const EffectMaker& effect);

/// The length of measureBurst()'s burst.
inline constexpr double kBurstMS = 300.0;

/// The gain reduction during and after a burst, over the time since its start and the places of the knobs for
/// attack and release.
Figure measureBurst(const EffectMaker& effect, const Grid& timesMS);

/// How much louder or softer the detector hears a frequency with each of its filters. Frequencies from half
/// the sample rate on are left out.
Figure measureDetector(const EffectMaker& effect, const Grid& frequenciesHz);

/// Change of level and distortion by the drive, over its knob and the level.
Figure measureDrive(const EffectMaker& effect);

/// Each harmonic of a tone, over the drive (0 to 1), without and with Harmonic Select.
Figure measureHarmonics(const EffectMaker& effect, const Grid& drives);

/// Samples of the output over those of the input, in one period of a steady tone, by the drive (0 to 1).
Figure measureTransfer(const EffectMaker& effect, const Grid& drives);

/// Drives from none to all that show how the transfer bends.
const Grid& transferDrives();

/// Tones for measureAliasing(), Hz. Folded harmonics of round frequencies would lie under harmonics: primes,
/// or close to them.
const std::vector<int>& aliasingTonesHz();

/// The tones of measureAliasing().
struct AliasingGrid {
    Grid levelsDB; ///< of their peak, dBFS
    Grid drives;   ///< 0 to 1
    std::vector<int> tonesHz;
};

/// What is no harmonic of a tone in the output, over the tone, its level and the drive.
/// @param afterEach called after each tone
Figure measureAliasing(
    const EffectMaker& effect, const AliasingGrid& grid, const std::function<void()>& afterEach = [] {});

} // namespace varno

#endif
