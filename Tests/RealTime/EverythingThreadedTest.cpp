// Everything that a host does at once is done without a race. The thread sanitizer is the judge.
#include "Tests/RealTime/AtOnce.h"
#include "Tests/Support/TestRun.h"

#include <gtest/gtest.h>
#include <utility>

namespace varno::test {
namespace {

// 50,000 in the long runs.
constexpr std::int64_t kBlocks = 1000;
// Fakes of sound systems are there once: the other clients, which come first, can be made at any time.
constexpr std::size_t kMadeAnew = 3;

TEST(EverythingAtOnce, isDoneWithoutARace) {
    std::vector<std::unique_ptr<AudioClient>> clients;
    for (const AudioClientEntry& entry : audioClients()) {
        clients.push_back(entry.make());
    }
    // Two of the same kind.
    clients.push_back(audioClients().front().make());
    AtOnce atOnce(std::move(clients), audioClients().first(kMadeAnew));
    atOnce.run(kBlocks * testScale());
    EXPECT_GE(atOnce.blocks(), kBlocks * testScale());
    EXPECT_TRUE(atOnce.isFinite());
    EXPECT_EQ(atOnce.complaints(), "");
    RecordProperty("blocks", std::to_string(atOnce.blocks()));
}

} // namespace
} // namespace varno::test
