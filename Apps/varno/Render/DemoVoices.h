#ifndef VARNO_APPS_VARNO_RENDER_DEMOVOICES_H
#define VARNO_APPS_VARNO_RENDER_DEMOVOICES_H

#include <cstdint>
#include <vector>

namespace varno {

/// The sounds of the demo loop: one note each, mono, full scale about +-1, at kDemoLoopRateHz.
using Note = std::vector<double>;

/// A bass drum, whose pitch falls.
Note kickNote();

/// The shell of a snare drum.
Note snareBodyNote();

/// The wires of a snare drum. @param variant differs left from right, so that they sound wide
Note snareWiresNote(std::uint64_t variant);

/// A pair of cymbals. @param decayS until it has fallen to 1/e: 0.02 closed, 0.2 open
Note hatNote(double decayS, std::uint64_t variant);

/// A shaken box of grains.
Note shakerNote(std::uint64_t variant);

/// A plucked synthesiser bass. @param accent 0 to 1 opens its filter
Note bassNote(double pitchHz, double lengthS, double accent);

} // namespace varno

#endif
