/// How often this program asks for memory.
#ifndef VARNO_BENCHMARKS_ALLOCATIONCOUNT_H
#define VARNO_BENCHMARKS_ALLOCATIONCOUNT_H

#include <cstdint>

namespace varno::bench {

/// Calls of operator new so far, by everything in the process. A program that asks links AllocationCount.cpp,
/// which replaces that operator.
std::int64_t allocationCount();

} // namespace varno::bench

#endif
