#include "Alg/DemoGain_Tables.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <iterator>

namespace varno::test::tables {

TEST(DemoGain_Tables, ConstantsAreExact) {
    EXPECT_EQ(std::bit_cast<std::uint32_t>(fCeilLin), 0x417D953BU);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(kLinTodBDivide), 0x441DB97CU);
    EXPECT_EQ(fFloorLin, 0.0001F);
    EXPECT_EQ(kfLinTodBStep, 0.0015850418F);
    EXPECT_EQ(kfLinTodBStep, (fCeilLin - fFloorLin) / 9999.0F);
    EXPECT_EQ(kLinTodBDivide, 9999.0F / (fCeilLin - fFloorLin));
    EXPECT_EQ(kdBToLinDivide, 96.144226F);
    EXPECT_NE(kdBToLinDivide, 9999.0F / 104.0F) << "the constant is its eight digits, not the quotient";
}

TEST(DemoGain_Tables, EveryEntryOfLinTodBFollowsTheRule) {
    ASSERT_EQ(std::size(kLinTodB), 10001U);
    const double step = 0.0015850418F;
    for (int i = 0; i <= 9998; ++i) {
        ASSERT_EQ(kLinTodB[i], static_cast<float>(20.0 * std::log10(0.0001 + i * step))) << i;
    }
    EXPECT_EQ(kLinTodB[0], -80.0F);
    EXPECT_EQ(kLinTodB[9999], 24.0F);
    EXPECT_EQ(kLinTodB[10000], 24.0F);
}

TEST(DemoGain_Tables, EveryEntryOfdBToLinFollowsTheRule) {
    ASSERT_EQ(std::size(kdBToLin), 10001U);
    for (int i = 0; i <= 9999; ++i) {
        ASSERT_EQ(kdBToLin[i], static_cast<float>(std::pow(10.0, (-80.0 + i * 104.0 / 9999.0) / 20.0))) << i;
    }
    EXPECT_EQ(kdBToLin[0], 0.0001F);
    EXPECT_EQ(kdBToLin[9999], 15.848932F);
    EXPECT_EQ(kdBToLin[10000], kdBToLin[9999]);
}

TEST(DemoGain_Tables, BothTablesRise) {
    for (int i = 1; i <= 9999; ++i) {
        ASSERT_LT(kLinTodB[i - 1], kLinTodB[i]) << i;
        ASSERT_LT(kdBToLin[i - 1], kdBToLin[i]) << i;
    }
}

} // namespace varno::test::tables
