/// How often this program asks for memory.
#ifndef VARNO_ALLOCATIONCOUNT_H
#define VARNO_ALLOCATIONCOUNT_H

#include <cstdint>

namespace varno::bench {

/// Calls of operator new so far, by everything in the process. A program that asks links AllocationCount.cpp,
/// which replaces that operator.
int64_t allocationCount();

} // namespace varno::bench

#endif
