// Memory of the data model: allocations that fail while it is created and while it is initialised.
#include "Tests/Source/DataModelFixture.h"
#include "Tests/Support/FailingCreation.h"
#include "Tests/Support/TestAllocator.h"
#include "Tests/Support/TestEffect.h"

#include <gtest/gtest.h>

#include <string>

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

// Builds everything twice, so that each parameter is rejected once.
class BuiltTwice : public DemoGain_Parameters {
protected:
    AAX_Result EffectInit() override {
        DemoGain_Parameters::EffectInit();
        return DemoGain_Parameters::EffectInit();
    }
};

// Bytes by which the heap grows while `model` is initialised, with and without an end before it, and used.
std::size_t growthOf(AAX_CEffectParameters& model) {
    constexpr int kRounds = 10'000;
    QuietHost host;
    const auto run = [&](int rounds) {
        for (int round = 0; round < rounds; ++round) {
            EXPECT_EQ(model.Initialize(&host), AAX_SUCCESS);
            EXPECT_EQ(model.GenerateCoefficients(), AAX_SUCCESS);
            EXPECT_EQ(round % 2 == 0 ? model.Uninitialize() : AAX_SUCCESS, AAX_SUCCESS);
        }
        EXPECT_EQ(model.Uninitialize(), AAX_SUCCESS);
    };
    run(2);
    const std::size_t before = liveBytes();
    run(kRounds);
    return liveBytes() - before;
}

TEST(ParametersAllocation, doesNotGrowWithTheLivesOfAnInstance) {
    const auto model = ACFPtr<AAX_CEffectParameters>::Retain(DemoGain_Parameters::Create());
    EXPECT_EQ(growthOf(*model), 0U);
}

TEST(ParametersAllocation, doesNotGrowWithRejectedParameters) {
    const auto model = ACFPtr<AAX_CEffectParameters>::Retain(new BuiltTwice);
    EXPECT_EQ(growthOf(*model), 0U);
}

TEST(ParametersAllocation, isGivenBackAfterAForeignChunk) {
    constexpr std::size_t kForeignBytes = 16U << 20U;
    constexpr std::size_t kKeptBytes = 64U << 10U;
    std::string foreign(kForeignBytes, '\0'); // an entry without tag and name every four bytes
    foreign.replace(0, kChunkMarker.size(), kChunkMarker);
    ChunkRecord chunk(foreign);
    QuietHost host;
    const auto model = ACFPtr<AAX_CEffectParameters>::Retain(DemoGain_Parameters::Create());
    EXPECT_EQ(model->Initialize(&host), AAX_SUCCESS);
    const std::size_t before = liveBytes();
    std::uint8_t isEqual = 7;
    EXPECT_EQ(model->CompareActiveChunk(chunk.get(), &isEqual), AAX_SUCCESS);
    EXPECT_EQ(isEqual, 0);
    EXPECT_LE(liveBytes(), before + kKeptBytes);
    EXPECT_EQ(model->SetChunk(AAX_FourCC("elck"), chunk.get()), AAX_SUCCESS);
    EXPECT_EQ(host.automation.requested, -1.0) << "nothing of it is for this effect";
    EXPECT_LE(liveBytes(), before + kKeptBytes);
    EXPECT_EQ(model->Uninitialize(), AAX_SUCCESS);
}

TEST(ParametersCreation, ThatFailsReturnsNullWithOneTraceLine) {
    expectCreationFails(DemoGain_Parameters::Create, "DemoGain_Parameters::Create", true);
}

TEST(ParametersCreation, ThatFailsReturnsNullToAHostThatHasNoMemoryEither) {
    expectCreationFails(DemoGain_Parameters::Create, "DemoGain_Parameters::Create", false);
}

} // namespace
} // namespace varno::test
