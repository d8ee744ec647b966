// Replaces the allocator of the program that links it.
#include "Tests/Support/TestAllocator.h"

#include <malloc.h>

#include <cstdlib>
#include <new>

namespace varno::test {
namespace {

constexpr int kNever = -1;
int gAllocationsUntilFailure = kNever;
std::size_t gLiveAllocations = 0;
std::size_t gLiveBytes = 0;

} // namespace

std::size_t liveAllocations() {
    return gLiveAllocations;
}

std::size_t liveBytes() {
    return gLiveBytes;
}

AllocationFailure::AllocationFailure(int allocations) {
    gAllocationsUntilFailure = allocations;
}

void AllocationFailure::end() {
    gAllocationsUntilFailure = kNever;
}

} // namespace varno::test

void* operator new(std::size_t size) {
    using namespace varno::test;
    if (gAllocationsUntilFailure == 0) {
        throw std::bad_alloc();
    }
    gAllocationsUntilFailure -= gAllocationsUntilFailure > 0 ? 1 : 0;
    void* const memory = std::malloc(size > 0 ? size : 1);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    ++gLiveAllocations;
    gLiveBytes += malloc_usable_size(memory);
    return memory;
}

void operator delete(void* memory) noexcept {
    using namespace varno::test;
    if (memory != nullptr) {
        --gLiveAllocations;
        gLiveBytes -= malloc_usable_size(memory);
        std::free(memory);
    }
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    operator delete(memory);
}
