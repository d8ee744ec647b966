#include "Alg/DemoGain_Routine.h"

#include "Alg/DemoGain_AlgSettings.h"
#include "Alg/DemoGain_ChunkRows.h"
#include "Alg/DemoGain_DenormalMode.h"
#include "Alg/DemoGain_Lanes.h"
#include "Alg/DemoGain_Neighbours.h"
#include "Alg/DemoGain_State.h"
#include "Simd/Processor.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <string_view>

// This file is compiled once for each instruction set, each time with the stages.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Alg/DemoGain_Routine.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "Alg/DemoGain_Pipeline-inl.h"

HWY_BEFORE_NAMESPACE();
namespace DemoGain {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

template<std::size_t kInstances, std::size_t kChannels, std::size_t kFrames = kChunkFrames>
void processGroup(const SDemoGain_Alg_Context* const* contexts) {
    const SDemoGain_Alg_Context* group[kInstances];
    std::copy_n(contexts, kInstances, group);
    Pipeline<kInstances, kChannels, kFrames> pipeline(group);
    pipeline.run();
    pipeline.store();
}

// Whether a vector over time holds as many samples as it may. Vectors of 128 bits hold half.
inline constexpr bool kHasWideVectors = hn::MaxLanes(Samples()) == kMostSamples;

// Frames of a buffer from which on long chunks gain more in the turns of all stages than they cost in the
// first and last ones.
inline constexpr int32_t kLongBufferFrames = 192;

// Whether the output of a mono instance lies in its input's memory, but not in its place.
inline bool isOutputShifted(const SDemoGain_Alg_Context& context) {
    const float* const in = context.mAudioIn[0];
    const float* const out = context.mAudioOut[0];
    const std::less<> isBefore;
    return in != out && isBefore(in, out + *context.mBufferSize) && isBefore(out, in + *context.mBufferSize);
}

// One mono instance. A chunk is a single wide vector, or two of 128 bits, which need no longer chunks. A
// shifted output depends on how many frames are read before they are written: as many as in a group.
void processMono(const SDemoGain_Alg_Context* const* contexts) {
    if constexpr (kHasWideVectors) {
        if (*contexts[0]->mBufferSize >= kLongBufferFrames && !isOutputShifted(*contexts[0])) {
            processGroup<1, 1, kLongChunkFrames>(contexts);
            return;
        }
    }
    processGroup<1, 1>(contexts);
}

// The level averages of four mono instances take eight lanes, which vectors of 128 bits do not have.
constexpr DemoGain_ProcessGroup chooseFourMono() {
    if constexpr (kHasWideVectors) {
        return &processGroup<4, 1>;
    } else {
        return nullptr;
    }
}

constexpr SDemoGain_Processes kProcesses[2] = {{&processMono, &processGroup<2, 1>, chooseFourMono()},
                                               {&processGroup<1, 2>, &processGroup<2, 2>, nullptr}};

} // namespace HWY_NAMESPACE
} // namespace DemoGain
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace {

constexpr SDemoGain_Routine kRoutines[] = {
#if HWY_TARGETS & HWY_AVX3
    {"avx512", HWY_AVX3, DemoGain::N_AVX3::kProcesses},
#endif
#if HWY_TARGETS & HWY_AVX2
    {"avx2", HWY_AVX2, DemoGain::N_AVX2::kProcesses},
#endif
#if HWY_TARGETS & HWY_SSSE3
    {"baseline", HWY_SSSE3, DemoGain::N_SSSE3::kProcesses},
#endif
#if HWY_TARGETS & HWY_NEON
    {"neon", HWY_NEON, DemoGain::N_NEON::kProcesses},
#endif
#if HWY_TARGETS & HWY_EMU128
    {"emulated", HWY_EMU128, DemoGain::N_EMU128::kProcesses},
#endif
};

// Processes the first instances: as many as can be processed side by side. Returns how many they are.
std::size_t processFirst(const SDemoGain_Processes& processes, std::size_t channels,
                         SDemoGain_Alg_Context* const* begin, SDemoGain_Alg_Context* const* end) {
    if (*(*begin)->mBufferSize < 1) {
        return 1;
    }
    constexpr std::size_t kPair = 2;
    const std::size_t most = processes.mFour != nullptr ? DemoGain::kMostLanes : kPair;
    const std::size_t neighbours = DemoGain_CountNeighbours(channels, begin, end, most);
    std::size_t count = 1;
    DemoGain_ProcessGroup process = processes.mOne;
    if (processes.mFour != nullptr && neighbours == DemoGain::kMostLanes) {
        count = DemoGain::kMostLanes;
        process = processes.mFour;
    } else if (neighbours >= kPair) {
        count = kPair;
        process = processes.mTwo;
    }
    process(begin);
    for (SDemoGain_Alg_Context* const* instance = begin; instance != begin + count; ++instance) {
        SDemoGain_Alg_State& state = *(*instance)->mState;
        if (!DemoGain_IsStateFinite(state)) {
            DemoGain_RecoverState(state);
        }
    }
    return count;
}

} // namespace

std::span<const SDemoGain_Routine> DemoGain_Routines() {
    return kRoutines;
}

bool DemoGain_CanRun(const SDemoGain_Routine& routine) {
    return (varno::processorTargets() & routine.mTarget) != 0;
}

void DemoGain_ProcessInstances(const SDemoGain_Routine& routine, std::size_t channels,
                               SDemoGain_Alg_Context* const* begin, SDemoGain_Alg_Context* const* end) {
    // Called through a pointer, so that the compiler cannot move arithmetic out of the audio mode.
    const DemoGain_DenormalMode audioMode;
    const SDemoGain_Processes& processes = routine.mProcesses[channels - 1];
    while (begin != end) {
        begin += processFirst(processes, channels, begin, end);
    }
}

const SDemoGain_Routine& DemoGain_ChooseRoutine() {
    const char* const variable = std::getenv("VARNO_SIMD");
    const std::string_view name = variable != nullptr ? variable : "";
    const auto isRequested = [&](const SDemoGain_Routine& routine) {
        return routine.mName == name && DemoGain_CanRun(routine);
    };
    const auto* const end = std::end(kRoutines);
    const auto* const requested = std::find_if(std::begin(kRoutines), end, isRequested);
    return requested != end ? *requested : *std::find_if(std::begin(kRoutines), end, DemoGain_CanRun);
}

#endif
