/// The kinds of plots: each measures the effect and says how the figure is drawn.
#ifndef VARNO_APPS_VARNO_PLOT_PLOTS_H
#define VARNO_APPS_VARNO_PLOT_PLOTS_H

#include "Measure/MeasuredEffect.h"
#include "Plot/Plot.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace varno {

/// The level of a steady tone in the output over that in the input, by curve. [main]
Plot plotCurves(const EffectMaker& effect);

/// Gain reduction over time, during a burst and after it, by the places of Attack and Release. [main]
Plot plotBurst(const EffectMaker& effect);

/// What the detector hears with each of its filters, over the frequency. [main]
Plot plotDetector(const EffectMaker& effect);

/// Harmonics over the drive, without and with Harmonic Select. [main]
Plot plotHarmonics(const EffectMaker& effect);

/// Output samples over input samples, by drive. [main]
Plot plotTransfer(const EffectMaker& effect);

/// Makes the effect at a factor of oversampling.
using MakeAtQuality = std::function<EffectMaker(std::int32_t factor)>;
/// Receives the seconds of audio that have been processed, and their share of the whole.
using PlotProgress = std::function<void(double seconds, double share)>;

/// Sum and largest product of what is no harmonic, over the tone, by quality. [main]
/// @param factors of oversampling
Plot plotAliasing(const MakeAtQuality& make, const std::vector<std::int32_t>& factors,
                  const PlotProgress& progress);

/// The same sum over level and drive, the worst of five tones. [main]
/// @param quality "2x"
Plot plotAliasingMap(const EffectMaker& effect, const std::string& quality, const PlotProgress& progress);

} // namespace varno

#endif
