/// What is set side by side in each measurement of the routine.
#ifndef VARNO_BENCHMARKS_WAY_H
#define VARNO_BENCHMARKS_WAY_H

#include "Benchmarks/InstructionSet.h"
#include "Benchmarks/LoopedSignal.h"
#include "Tests/Support/AlgFixture.h"

#include <benchmark/benchmark.h>

namespace varno::bench {

enum class Way {
    kProduct, ///< The product's routine.
    kLiteral, ///< The literal evaluation of Tests/Reference, compiled with -O2.
    kCopy,    ///< Nothing but a copy of the input: the floor.
};

/// Processes the signal's present buffer.
template<Way kWay>
void processBuffer(test::AlgInstance& instance, LoopedSignal& signal) {
    if constexpr (kWay == Way::kProduct) {
        instance.process(signal.inputs(), signal.outputs(), signal.bufferFrames());
    } else if constexpr (kWay == Way::kLiteral) {
        instance.processLiterally(signal.inputs(), signal.outputs(), signal.bufferFrames());
    } else {
        signal.copy();
    }
    benchmark::ClobberMemory();
}

/// Labels the product's measurements with the instruction set; false where the processor lacks the one that
/// is asked for, and the measurement is to be left out.
template<Way kWay>
bool canMeasure(benchmark::State& state) {
    if constexpr (kWay == Way::kProduct) {
        if (const std::string reason = whyInstructionSetIsMissing(); !reason.empty()) {
            state.SkipWithError(reason.c_str());
            return false;
        }
        state.SetLabel(instructionSetInUse());
    }
    return true;
}

/// Frames as items, so that each row tells its frames per second.
inline void countFrames(benchmark::State& state, std::int64_t framesPerIteration) {
    state.SetItemsProcessed(state.iterations() * framesPerIteration);
}

} // namespace varno::bench

#endif
