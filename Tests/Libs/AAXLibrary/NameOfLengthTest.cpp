#include "NameOfLength.h"

#include <gtest/gtest.h>

#include <string>

namespace varno {
namespace {

TEST(NameOfLength, IsTheLongestSpellingThatFits) {
    EXPECT_EQ(NameOfLength("Volume\nVol", 6), "Volume");
    EXPECT_EQ(NameOfLength("Volume\nVol", 100), "Volume");
    EXPECT_EQ(NameOfLength("Volume\nVol", 5), "Vol");
    EXPECT_EQ(NameOfLength("Volume\nVol", 4), "Vol");
    EXPECT_EQ(NameOfLength("Vol\nVolume", 6), "Volume");
}

TEST(NameOfLength, IsTheFirstOfEquallyLongOnes) {
    EXPECT_EQ(NameOfLength("Volume\nVol\nLvl", 4), "Vol");
}

TEST(NameOfLength, IsTheBeginningWhereNothingFits) {
    EXPECT_EQ(NameOfLength("Volume\nVol", 2), "Vo");
    EXPECT_EQ(NameOfLength("Volume", 3), "Vol");
    EXPECT_EQ(NameOfLength("Volume", 0), "");
    EXPECT_EQ(NameOfLength("Volume", -1), "");
}

TEST(NameOfLength, TakesAnEmptySpellingWhereNoOtherFits) {
    EXPECT_EQ(NameOfLength("Volume\n\nVol", 2), "");
    EXPECT_EQ(NameOfLength("\nVolume", 5), "");
    EXPECT_EQ(NameOfLength("Volume\n", 3), "");
    EXPECT_EQ(NameOfLength("Volume\n", 6), "Volume");
    EXPECT_EQ(NameOfLength("\n\nVol\n", 3), "Vol");
    EXPECT_EQ(NameOfLength("\nVolume", -1), "");
    EXPECT_EQ(NameOfLength("", 3), "");
}

TEST(NameOfLength, LooksAt255CharactersOnly) {
    const std::string longName(300, 'x');
    EXPECT_EQ(NameOfLength(longName, 400), longName.substr(0, 255));
    EXPECT_EQ(NameOfLength(longName, 254), longName.substr(0, 254));
    EXPECT_EQ(NameOfLength(longName + "\nVol", 10), longName.substr(0, 10))
        << "the short spelling is too far";
}

} // namespace
} // namespace varno
