#include "Surround/Settings/NameOrder.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <random>
#include <string>
#include <vector>

namespace varno::test {
namespace {

using testing::ElementsAre;

std::vector<std::string> sorted(std::vector<std::string> names) {
    std::ranges::sort(names, standsBefore);
    return names;
}

TEST(NameOrder, isThatOfPeople) {
    EXPECT_THAT(sorted({"Kick 10", "kick 2", "Bass", "Kick 1", "apple", ""}),
                ElementsAre("", "apple", "Bass", "Kick 1", "kick 2", "Kick 10"));
    EXPECT_THAT(sorted({"Zebra", "Ähre", "Bar", "Äpfel", "Éclair", "Straße", "Strauß"}),
                ElementsAre("Ähre", "Äpfel", "Bar", "Éclair", "Straße", "Strauß", "Zebra"));
    EXPECT_THAT(sorted({"a2b10", "a2b9", "a02b9", "a10"}), ElementsAre("a02b9", "a2b9", "a2b10", "a10"));
    EXPECT_THAT(sorted({"99999999999999999999999", "100000000000000000000000"}),
                ElementsAre("99999999999999999999999", "100000000000000000000000"));
    EXPECT_THAT(sorted({"B", "a", "A", "b"}), ElementsAre("A", "a", "B", "b"));
    EXPECT_THAT(sorted({"Mix", "Mix 2", "Mix-2", "Mi"}), ElementsAre("Mi", "Mix", "Mix 2", "Mix-2"));
    EXPECT_THAT(sorted({"x×2", "xz"}), ElementsAre("xz", "x×2")) << "a sign stands beside no letter";
    EXPECT_THAT(sorted({"日本", "Zug"}), ElementsAre("Zug", "日本"));
}

// What std::sort needs.
TEST(NameOrder, isAnOrder) {
    std::mt19937 random(7); // NOLINT(bugprone-random-generator-seed): the same cases in each run
    const std::string letters = "aA1029 -\xC3\x84\x97\xFF";
    std::vector<std::string> names(60);
    for (std::string& name : names) {
        for (auto length = random() % 6; length > 0; --length) {
            name += letters[random() % letters.size()];
        }
    }
    for (const std::string& a : names) {
        EXPECT_FALSE(standsBefore(a, a));
        for (const std::string& b : names) {
            EXPECT_EQ(standsBefore(a, b) || standsBefore(b, a), a != b) << a << '|' << b;
            EXPECT_FALSE(standsBefore(a, b) && standsBefore(b, a)) << a << '|' << b;
            for (const std::string& c : names) {
                if (standsBefore(a, b) && standsBefore(b, c)) {
                    ASSERT_TRUE(standsBefore(a, c)) << a << '|' << b << '|' << c;
                }
            }
        }
    }
}

} // namespace
} // namespace varno::test
