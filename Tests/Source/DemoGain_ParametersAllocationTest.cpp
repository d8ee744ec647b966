// Memory that runs out while the data model is built. This program's allocator fails where the test requests
// it.
#include "Tests/Source/DataModelFixture.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

namespace {

constexpr int kNever = -1;
int gAllocationsUntilFailure = kNever;
int gLiveAllocations = 0;

} // namespace

void* operator new(std::size_t size) {
    if (gAllocationsUntilFailure == 0) {
        throw std::bad_alloc();
    }
    gAllocationsUntilFailure -= gAllocationsUntilFailure > 0 ? 1 : 0;
    void* const memory = std::malloc(size > 0 ? size : 1);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    ++gLiveAllocations;
    return memory;
}

void operator delete(void* memory) noexcept {
    gLiveAllocations -= memory != nullptr ? 1 : 0;
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    operator delete(memory);
}

namespace {

struct Outcome {
    AAX_Result result = AAX_SUCCESS;
    std::int32_t parameters = 0;
    int leakedAllocations = 0;
};

// Builds and ends a data model; the allocation after the first `allocations` of its initialisation fails.
Outcome initializeWith(int allocations) {
    Outcome outcome;
    const int before = gLiveAllocations;
    {
        varno::test::DataModelFixture fixture;
        gAllocationsUntilFailure = allocations;
        outcome.result = fixture.initialize();
        gAllocationsUntilFailure = kNever;
        fixture.model->GetNumberOfParameters(&outcome.parameters);
    }
    outcome.leakedAllocations = gLiveAllocations - before;
    return outcome;
}

TEST(ParametersAllocation, thatFailsIsAnErrorAndLeavesNothingBehind) {
    constexpr std::int32_t kAllParameters = 14;
    int allocations = 0;
    Outcome outcome = initializeWith(allocations);
    for (; outcome.result != AAX_SUCCESS; outcome = initializeWith(++allocations)) {
        ASSERT_EQ(outcome.result, AAX_ERROR_UNKNOWN_EXCEPTION) << "after " << allocations << " allocations";
        ASSERT_EQ(outcome.leakedAllocations, 0) << "after " << allocations << " allocations";
        ASSERT_LE(outcome.parameters, kAllParameters);
    }
    EXPECT_GT(allocations, kAllParameters);
    EXPECT_EQ(outcome.parameters, kAllParameters);
    EXPECT_EQ(outcome.leakedAllocations, 0);
}

} // namespace
