/// The conversion to a multiple of a sample rate and back, written down sample by sample.
#ifndef VARNO_TESTS_REFERENCE_REFERENCEHALFBAND_H
#define VARNO_TESTS_REFERENCE_REFERENCEHALFBAND_H

#include <cstddef>
#include <vector>

namespace varno::reference {

/// The sound of one channel, before which there was silence, at `factor` (1, 2, 4 or 8) times its rate: as
/// many samples as belong to its frames.
std::vector<float> raised(std::vector<float> sound, int factor);

/// The sound at that part of its rate: a sample for each `factor` whole samples.
std::vector<float> lowered(std::vector<float> sound, int factor);

} // namespace varno::reference

#endif
