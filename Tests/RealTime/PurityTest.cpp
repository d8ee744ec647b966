// No callback of an audio thread calls what may wait, from the first block on and whatever other threads do.
#include "Tests/RealTime/Judges.h"
#include "Tests/Support/TestRun.h"

#include <gtest/gtest.h>

namespace varno::test {
namespace {

class Purity : public testing::TestWithParam<AudioClientEntry> {};

TEST_P(Purity, isConfirmedByTheSanitizerWithAnotherThreadBeside) {
    const std::int64_t blocks = 4000 * testScale();
    const Verdict verdict =
        judge(Judge::kSanitizer, {.make = GetParam().make, .blocks = blocks, .hasCompany = true});
    EXPECT_TRUE(verdict.isClean) << verdict.report;
    EXPECT_GE(verdict.blocks, blocks);
    EXPECT_GE(verdict.disturbances, kLeastDisturbances);
    RecordProperty("blocks", std::to_string(verdict.blocks));
    RecordProperty("disturbances", std::to_string(verdict.disturbances));
}

TEST_P(Purity, isConfirmedByTheKernel) {
    const std::int64_t blocks = 2000 * testScale();
    const Verdict verdict = judge(Judge::kSystemCalls, {.make = GetParam().make, .blocks = blocks});
    EXPECT_TRUE(verdict.isClean) << verdict.report;
    EXPECT_EQ(verdict.blocks, blocks);
    const Verdict unjudged = judge(Judge::kNone, {.make = GetParam().make, .blocks = blocks});
    EXPECT_TRUE(unjudged.isClean) << unjudged.report;
    EXPECT_EQ(verdict.outputHash, unjudged.outputHash);
}

INSTANTIATE_TEST_SUITE_P(Clients, Purity, testing::ValuesIn(audioClients().begin(), audioClients().end()),
                         [](const auto& client) { return std::string(client.param.name); });

} // namespace
} // namespace varno::test
