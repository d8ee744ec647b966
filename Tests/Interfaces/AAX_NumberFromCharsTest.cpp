#include "AAX_NumberFromChars.h"

#include "AAX_NumberText.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <random>
#include <string>

// Only standard libraries that convert floating-point numbers have it.
#ifdef __cpp_lib_to_chars

namespace {

// Both readings, bit by bit.
void expectSame(const std::string& text) {
    EXPECT_EQ(std::bit_cast<std::uint64_t>(AAX_NearestDouble(text)),
              std::bit_cast<std::uint64_t>(AAX_NumberFromChars<double>(text)))
        << text;
    EXPECT_EQ(std::bit_cast<std::uint32_t>(AAX_NearestFloat(text)),
              std::bit_cast<std::uint32_t>(AAX_NumberFromChars<float>(text)))
        << text;
}

TEST(AAX_NumberFromChars, ReadsWhatTheCLibraryReads) {
    for (const char* const text : {"0",
                                   "-0",
                                   "+0",
                                   "1",
                                   "+1.5",
                                   "-1.5",
                                   ".5",
                                   "5.",
                                   "0.1",
                                   "16777217",
                                   "1e3",
                                   "1E-3",
                                   "1e+3",
                                   "0x1p3",
                                   "0X.8",
                                   "0x1.fffffffp0",
                                   "0x1P-3",
                                   "0x.",
                                   "0x1p",
                                   "1e",
                                   "1e+",
                                   "0000000012",
                                   "0.30000001192092896"}) {
        expectSame(text);
    }
}

TEST(AAX_NumberFromChars, RoundsOnceAtTheBoundsOfWhatItHolds) {
    for (const char* const text :
         {"3.4028235677973366e38", "3.4028235677973362e38", "1.7976931348623159e308",
          "1.7976931348623157e308", "1.401298464324817e-45", "7.006492321624085e-46", "7.006492321624086e-46",
          "4.9e-324", "2.4e-324", "2.5e-324", "1.00000017881393421514957253748434595763683319091796875001"}) {
        expectSame(text);
        expectSame('-' + std::string(text));
    }
}

TEST(AAX_NumberFromChars, TooLargeIsInfinityAndTooSmallIsZero) {
    const std::string zeros(400, '0');
    const std::string texts[] = {"1e400",
                                 "1e-400",
                                 "-1e400",
                                 "-1e-400",
                                 "1e99999999999999999999",
                                 "1e-99999999999999999999",
                                 "0." + zeros + "1",
                                 "0." + zeros + "1e5",
                                 "0." + zeros + "1e900",
                                 '1' + zeros,
                                 '1' + zeros + ".5e-5",
                                 '1' + zeros + "e-900",
                                 "0x1p1100",
                                 "0x1p-1200",
                                 "0x0." + zeros + "1",
                                 "0x1" + zeros,
                                 "0x1" + zeros + "p-1400",
                                 "0x1" + zeros + "p-3000"};
    for (const std::string& text : texts) {
        expectSame(text);
    }
}

TEST(AAX_NumberFromChars, AgreesOnNumbersOfEveryMagnitude) {
    std::mt19937 random(20261123);
    std::uniform_int_distribution<int> digit(0, 9);
    std::uniform_int_distribution<int> exponent(-60, 60);
    for (int count = 0; count < 2000; ++count) {
        std::string text = count % 2 == 0 ? "-" : "";
        for (int place = 0; place < 12; ++place) {
            text += std::to_string(digit(random));
            text += place == count % 12 ? "." : "";
        }
        expectSame(text);
        expectSame(text + 'e' + std::to_string(exponent(random)));
    }
}

} // namespace

#endif
