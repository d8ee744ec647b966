#include "Surround/Settings/Suggestion.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

const std::vector<std::string> kKnown = {"MasterBypassID", "Gain", "HP", "Volume", "Hot", "Ratio"};

TEST(Suggestion, ProposesWhatDiffersByASlip) {
    EXPECT_EQ(suggestion("Gian", kKnown), "; did you mean \"Gain\"?");
    EXPECT_EQ(suggestion("Gaim", kKnown), "; did you mean \"Gain\"?");
    EXPECT_EQ(suggestion("Ratoi", kKnown), "; did you mean \"Ratio\"?");
    EXPECT_EQ(suggestion("Ratios", kKnown), "; did you mean \"Ratio\"?");
    EXPECT_EQ(suggestion("Volme", kKnown), "; did you mean \"Volume\"?");
    EXPECT_EQ(suggestion("MasterBypass", kKnown), "; did you mean \"MasterBypassID\"?");
}

TEST(Suggestion, CaseIsNoDifference) {
    EXPECT_EQ(suggestion("hot", kKnown), "; did you mean \"Hot\"?");
    EXPECT_EQ(suggestion("hp", kKnown), "; did you mean \"HP\"?");
}

TEST(Suggestion, ProposesTheNearest) {
    EXPECT_EQ(suggestion("Hat", {"Cat", "hat"}), "; did you mean \"hat\"?");
}

TEST(Suggestion, ProposesNothingForAnotherWord) {
    EXPECT_EQ(suggestion("Treble", kKnown), "");
    EXPECT_EQ(suggestion("", kKnown), "");
    EXPECT_EQ(suggestion("xy", {"HP"}), "");
    EXPECT_EQ(suggestion("Gain", {}), "");
}

} // namespace
} // namespace varno
