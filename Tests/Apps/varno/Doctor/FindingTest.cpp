#include "Doctor/Finding.h"

#include <gtest/gtest.h>

// Findings as lines between varno-window and varno.

namespace varno::test {
namespace {

TEST(Finding, ComesBackFromItsLine) {
    for (const auto state : {PartState::kGood, PartState::kMissing, PartState::kFailing}) {
        const Finding sent{"JACK", state, "no server \"default\" answers", "jackd2"};
        const std::string line = findingLine(sent);
        ASSERT_EQ(line.find('\n'), line.size() - 1);
        const auto received = findingOf(std::string_view(line).substr(0, line.size() - 1));
        ASSERT_TRUE(received.has_value());
        EXPECT_EQ(received->part, sent.part);
        EXPECT_EQ(received->state, sent.state);
        EXPECT_EQ(received->detail, sent.detail);
        EXPECT_EQ(received->package, sent.package);
    }
}

TEST(Finding, MayBeWithoutDetailAndPackage) {
    const auto received = findingOf("ALSA\tok\t\t");
    ASSERT_TRUE(received.has_value());
    EXPECT_EQ(received->detail + received->package, "");
}

TEST(Finding, RemainsOneLineOfFourMembers) {
    EXPECT_EQ(findingLine({"a\tb", PartState::kMissing, "c\nd\x1b", "e"}), "a b\tmissing\tc d \te\n");
}

TEST(Finding, OtherLinesAreNone) {
    for (const char* line :
         {"", "JACK", "JACK\tok\tdetail", "JACK\tok\tdetail\tpackage\tmore", "JACK\tgood\td\tp"}) {
        EXPECT_FALSE(findingOf(line).has_value()) << line;
    }
}

} // namespace
} // namespace varno::test
