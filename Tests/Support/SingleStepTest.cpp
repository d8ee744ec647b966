#include "Tests/Support/SingleStep.h"

#include <atomic>
#include <gtest/gtest.h>

#if VARNO_HAS_SINGLE_STEP

namespace varno::test {
namespace {

// At how many instructions of one call of an operation that adds 1 another call was lost.
template<class Add>
int lossesOf(std::atomic<int>& count, Add add) {
    int losses = 0;
    const int instructions = callAtEachInstruction(
        add, add, [&count] { count = 0; }, [&] { losses += count == 2 ? 0 : 1; });
    EXPECT_GT(instructions, 3);
    EXPECT_EQ(count, 1); // the last time, nothing came in between
    return losses;
}

TEST(SingleStep, findsNoFaultInOneOperation) {
    std::atomic<int> count{0};
    EXPECT_EQ(lossesOf(count, [&count] { count.fetch_add(1, std::memory_order_relaxed); }), 0);
}

// The fault that racing threads mostly miss.
TEST(SingleStep, findsACountOfTwoAtomicHalvesEachTime) {
    for (int round = 0; round < 3; ++round) {
        std::atomic<int> count{0};
        ASSERT_GT(lossesOf(count, [&count] { count.store(count.load() + 1); }), 0);
    }
}

TEST(SingleStep, comesAtOneInstructionOnly) {
    int calls = 0;
    volatile int sum = 0;
    const auto work = [&sum] {
        for (int i = 0; i < 100; ++i) {
            sum = sum + i;
        }
    };
    EXPECT_TRUE(callAtInstruction(50, work, [&calls] { ++calls; }));
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(sum, 4950);
    EXPECT_FALSE(callAtInstruction(1000000, work, [&calls] { ++calls; }));
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(sum, 2 * 4950);
}

} // namespace
} // namespace varno::test

#endif
