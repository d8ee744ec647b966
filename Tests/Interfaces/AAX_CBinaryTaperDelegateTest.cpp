#include "AAX_CBinaryTaperDelegate.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>

namespace varno {
namespace {

using BinaryTaper = AAX_CBinaryTaperDelegate<bool>;

TEST(BinaryTaper, GoesFromFalseToTrue) {
    const BinaryTaper taper;
    EXPECT_FALSE(taper.GetMinimumValue());
    EXPECT_TRUE(taper.GetMaximumValue());
    EXPECT_EQ(taper.RealToNormalized(false), 0.0);
    EXPECT_EQ(taper.RealToNormalized(true), 1.0);
}

TEST(BinaryTaper, ConstrainsNothing) {
    EXPECT_TRUE(BinaryTaper().ConstrainRealValue(true));
    EXPECT_FALSE(BinaryTaper().ConstrainRealValue(false));
}

TEST(BinaryTaper, IsTrueForEverythingAboveZero) {
    const BinaryTaper taper;
    EXPECT_FALSE(taper.NormalizedToReal(0.0));
    EXPECT_FALSE(taper.NormalizedToReal(-0.0));
    EXPECT_FALSE(taper.NormalizedToReal(-1.0));
    EXPECT_TRUE(taper.NormalizedToReal(std::numeric_limits<double>::denorm_min()));
    EXPECT_TRUE(taper.NormalizedToReal(0.4));
    EXPECT_TRUE(taper.NormalizedToReal(1.0));
}

TEST(BinaryTaper, TakesWhatIsNotANumberForFalse) {
    EXPECT_FALSE(BinaryTaper().NormalizedToReal(std::numeric_limits<double>::quiet_NaN()));
}

TEST(BinaryTaper, IsCloned) {
    const std::unique_ptr<AAX_ITaperDelegate<bool>> clone = BinaryTaper().Clone();
    EXPECT_TRUE(clone->NormalizedToReal(0.1));
}

} // namespace
} // namespace varno
