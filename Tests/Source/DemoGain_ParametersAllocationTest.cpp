// Memory of the data model: allocations that fail while it is created and while it is initialised.
#include "Tests/Source/DataModelFixture.h"
#include "Tests/Support/FailingCreation.h"
#include "Tests/Support/TestAllocator.h"

#include <gtest/gtest.h>

namespace varno::test {
namespace {

struct Outcome {
    AAX_Result result = AAX_SUCCESS;
    std::int32_t parameters = 0;
    bool isLeaking = false;
};

// Builds and ends a data model; the allocation after the first `allocations` of its initialisation fails.
Outcome initializeWith(int allocations) {
    Outcome outcome;
    const std::size_t before = liveAllocations();
    {
        DataModelFixture fixture;
        const AllocationFailure failure(allocations);
        outcome.result = fixture.initialize();
        AllocationFailure::end();
        fixture.model->GetNumberOfParameters(&outcome.parameters);
    }
    outcome.isLeaking = liveAllocations() != before;
    return outcome;
}

TEST(ParametersAllocation, thatFailsIsAnErrorAndLeavesNothingBehind) {
    constexpr std::int32_t kAllParameters = 14;
    int allocations = 0;
    Outcome outcome = initializeWith(allocations);
    for (; outcome.result != AAX_SUCCESS; outcome = initializeWith(++allocations)) {
        ASSERT_EQ(outcome.result, AAX_ERROR_UNKNOWN_EXCEPTION) << "after " << allocations << " allocations";
        ASSERT_FALSE(outcome.isLeaking) << "after " << allocations << " allocations";
        ASSERT_LE(outcome.parameters, kAllParameters);
    }
    EXPECT_GT(allocations, kAllParameters);
    EXPECT_EQ(outcome.parameters, kAllParameters);
    EXPECT_FALSE(outcome.isLeaking);
}

TEST(ParametersCreation, ThatFailsReturnsNullWithOneTraceLine) {
    expectCreationFails(DemoGain_Parameters::Create, "DemoGain_Parameters::Create", true);
}

TEST(ParametersCreation, ThatFailsReturnsNullToAHostThatHasNoMemoryEither) {
    expectCreationFails(DemoGain_Parameters::Create, "DemoGain_Parameters::Create", false);
}

} // namespace
} // namespace varno::test
