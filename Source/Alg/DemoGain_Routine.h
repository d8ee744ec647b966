/// The signal path of instances, in one version for each instruction set.
#ifndef VARNO_SOURCE_ALG_DEMOGAIN_ROUTINE_H
#define VARNO_SOURCE_ALG_DEMOGAIN_ROUTINE_H

#include "DemoGain_Alg.h"

#include <cstddef>
#include <span>

/// Processes one buffer of each instance of a group: reads the fields, writes output and taps, updates the
/// state. All versions produce the same samples and taps to the bit, in every group, and the same state but
/// for that of the post sections, which agrees to 2e-6. The instances are neighbours
/// (DemoGain_CountNeighbours); their buffers have 1 frame or more. To be called in the audio mode of the
/// processor. [audio]
using DemoGain_ProcessGroup = void (*)(const SDemoGain_Alg_Context* const* contexts);

/// What processes groups of one, two and four instances; null where there is none.
struct SDemoGain_Processes {
    DemoGain_ProcessGroup mOne;
    DemoGain_ProcessGroup mTwo;
    DemoGain_ProcessGroup mFour;
};

/// The routine as built for one instruction set.
struct SDemoGain_Routine {
    /// "avx512"; "avx2"; "baseline": vectors of 128 bits, with the oldest instructions that Highway generates
    /// (SSSE3); "neon": any 64-bit ARM processor; "emulated": any other.
    const char* mName;
    int64_t mTarget;                       ///< The instruction set, as Highway numbers it.
    const SDemoGain_Processes* mProcesses; ///< For one channel, for two.
};

/// Every version that was built, the fastest first; the last one runs on every processor of this
/// architecture. [any]
std::span<const SDemoGain_Routine> DemoGain_Routines();

/// Whether this processor has what the version needs. [any]
bool DemoGain_CanRun(const SDemoGain_Routine& routine);

/// Processes whole buffers of several instances of `channels` channels in the audio mode of the processor,
/// with the result of one after the other. Neighbours share vectors where that is possible. A state that is
/// not finite afterwards is recovered. [audio]
void DemoGain_ProcessInstances(const SDemoGain_Routine& routine, std::size_t channels,
                               SDemoGain_Alg_Context* const* begin, SDemoGain_Alg_Context* const* end);

/// The version named in the environment variable VARNO_SIMD if it was built and this processor can run it,
/// and otherwise the fastest one that it can run. Tests and benchmarks set the variable. [main]
const SDemoGain_Routine& DemoGain_ChooseRoutine();

#endif
