/// The memory that a test program takes with operator new: counted, and failing where a test requests it.
#ifndef VARNO_TESTS_SUPPORT_TESTALLOCATOR_H
#define VARNO_TESTS_SUPPORT_TESTALLOCATOR_H

#include <cstddef>

namespace varno::test {

/// Allocations that are not freed yet.
std::size_t liveAllocations();
/// Their bytes, as the system's allocator rounds them.
std::size_t liveBytes();

/// While it lives, the allocation after the first `allocations` fails, and every later one.
class AllocationFailure {
public:
    explicit AllocationFailure(int allocations);
    AllocationFailure(const AllocationFailure&) = delete;
    AllocationFailure& operator=(const AllocationFailure&) = delete;
    ~AllocationFailure() { end(); }

    /// Allocations succeed again.
    static void end();
};

} // namespace varno::test

#endif
