/// Which instruction sets the processor has that this runs on.
#ifndef VARNO_SIMD_PROCESSOR_H
#define VARNO_SIMD_PROCESSOR_H

#include <cstdint>

namespace varno {

/// A bit for each instruction set that signal processing can be built for and that may be used here, as
/// Highway numbers it: of x86 processors HWY_SSSE3, HWY_AVX2 and HWY_AVX3, where the processor has and the
/// system allows all that Highway generates for it; of others HWY_NEON, where the whole build requires it;
/// always HWY_EMU128. Highway's own function for this is in a library that most systems lack. [any]
std::int64_t processorTargets();

} // namespace varno

#endif
