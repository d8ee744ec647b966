#include "Host/HostOptions.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace varno {
namespace {

constexpr SampleRateRange kRange = {16000.0, 384000.0};

TEST(SampleRateRangeTest, AcceptsTheBoundsAndWhatLiesBetween) {
    for (const double rate : {16000.0, 44100.0, 48000.0, 12345.678 * 4.0, 192000.0, 384000.0}) {
        EXPECT_EQ(std::nullopt, sampleRateRefusal(kRange, rate)) << rate;
    }
}

TEST(SampleRateRangeTest, RefusesEverythingElseInOneLine) {
    EXPECT_EQ("sample rate 15999.9 Hz is not supported: expected 16000 to 384000 Hz",
              sampleRateRefusal(kRange, 15999.9));
    EXPECT_EQ("sample rate 768000 Hz is not supported: expected 16000 to 384000 Hz",
              sampleRateRefusal(kRange, 768000.0));
    EXPECT_EQ("sample rate 0 Hz is not supported: expected 16000 to 384000 Hz",
              sampleRateRefusal(kRange, 0.0));
    for (const double rate : {-48000.0, std::nan(""), std::numeric_limits<double>::infinity()}) {
        EXPECT_NE(std::nullopt, sampleRateRefusal(kRange, rate));
    }
}

TEST(SampleRateRangeTest, RefusesByDefaultOnlyWhatIsNoRate) {
    for (const double rate : {1.0, 8000.0, 768000.0}) {
        EXPECT_EQ(std::nullopt, sampleRateRefusal({}, rate)) << rate;
    }
    for (const double rate : {0.0, -48000.0, std::nan(""), std::numeric_limits<double>::infinity()}) {
        EXPECT_NE(std::nullopt, sampleRateRefusal({}, rate)) << rate;
    }
}

} // namespace
} // namespace varno
