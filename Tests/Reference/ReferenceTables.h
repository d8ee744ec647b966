/// The conversion tables of the literal evaluation, computed at start-up.
#ifndef VARNO_TESTS_REFERENCE_REFERENCETABLES_H
#define VARNO_TESTS_REFERENCE_REFERENCETABLES_H

#include <array>

namespace varno::reference {

/// Entry i is the level in dB of the linear level 0.0001 + i * step; 0 to 9998 by the formula, then 24 twice.
extern const std::array<float, 10001> kLevelTable;
/// Entry i is the linear level of -80 + i * 104 / 9999 dB; 0 to 9999 by the formula, then the last one again.
extern const std::array<float, 10001> kGainTable;

} // namespace varno::reference

#endif
