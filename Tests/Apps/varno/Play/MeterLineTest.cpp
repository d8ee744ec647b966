#include "Play/MeterLine.h"

#include <gtest/gtest.h>

#include <cmath>

namespace varno {
namespace {

constexpr std::size_t kWide = 200;

TEST(MeterLine, ShowsLevelsAndTheParameter) {
    MeterLine line{{{"in", "-12.3"}, {"out", "-8.0"}, {"reduction", "3.2"}}, "Hot 0.07"};
    EXPECT_EQ(line.text(kWide), "in -12.3 dB  out  -8.0 dB  reduction   3.2 dB  [Hot 0.07]");
    line.isBypassed = true;
    line.overruns = 1;
    EXPECT_EQ(line.text(kWide),
              "in -12.3 dB  out  -8.0 dB  reduction   3.2 dB  bypassed  [Hot 0.07]  1 overrun");
}

TEST(MeterLine, KeepsToTheTerminal) {
    const MeterLine line{{{"in", "-12.3"}}, "Hot 0.07", false, 2};
    EXPECT_EQ(line.text(kWide), "in -12.3 dB  [Hot 0.07]  2 overruns");
    EXPECT_EQ(line.text(10), "in -12.3 d");
}

TEST(MeterLine, LevelsAreInDecibels) {
    EXPECT_EQ(levelTextDB(1.0), "0.0");
    EXPECT_EQ(levelTextDB(0.5), "-6.0");
    EXPECT_EQ(levelTextDB(2.0), "6.0");
    EXPECT_EQ(levelTextDB(std::pow(10.0, -99.8 / 20.0)), "-99.8");
    EXPECT_EQ(levelTextDB(1e-6), "-inf");
    EXPECT_EQ(levelTextDB(0.0), "-inf");
}

} // namespace
} // namespace varno
