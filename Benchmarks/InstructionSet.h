/// The instruction set that the routine is measured with.
#ifndef VARNO_BENCHMARKS_INSTRUCTIONSET_H
#define VARNO_BENCHMARKS_INSTRUCTIONSET_H

#include <string>

namespace varno::bench {

/// The name of the version of the routine: what VARNO_SIMD in the environment asks for, else the best that
/// the processor has.
std::string instructionSetInUse();

/// Why the processor cannot do what VARNO_SIMD asks for; empty where it can.
std::string whyInstructionSetIsMissing();

} // namespace varno::bench

#endif
