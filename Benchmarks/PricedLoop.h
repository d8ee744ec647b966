/// A measurement that counts allocations beside time.
#ifndef VARNO_BENCHMARKS_PRICEDLOOP_H
#define VARNO_BENCHMARKS_PRICEDLOOP_H

#include "Benchmarks/AllocationCount.h"

#include <benchmark/benchmark.h>

#include <chrono>

namespace varno::bench {

/// Measures `operation`, after `prepare`, which is neither timed nor counted, each time; adds the counter
/// "allocations", those of one operation. The first time of all does not count: memory that is kept for the
/// next time is there after it.
/// @param operations that one call of `operation` does
template<class Prepare, class Operation>
void measurePriced(benchmark::State& state, std::int64_t operations, Prepare prepare, Operation operation) {
    using Clock = std::chrono::steady_clock;
    std::int64_t allocations = 0;
    prepare();
    operation();
    for ([[maybe_unused]] auto _ : state) {
        prepare();
        const std::int64_t before = allocationCount();
        const auto start = Clock::now();
        operation();
        const auto end = Clock::now();
        allocations += allocationCount() - before;
        state.SetIterationTime(std::chrono::duration<double>(end - start).count());
    }
    const std::int64_t done = state.iterations() * operations;
    state.SetItemsProcessed(done);
    state.counters["allocations"] = static_cast<double>(allocations) / static_cast<double>(done);
}

} // namespace varno::bench

#endif
