#include "AAX_CLinearTaperDelegate.h"
#include "Tests/Support/ForwardingCheck.h"
#include "Tests/Support/Properties.h"
#include "Tests/Support/TestRun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>

namespace varno {
namespace {

using LinearTaper = AAX_CLinearTaperDelegate<float, 0>;

constexpr float kTaperNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

TEST(LinearTaper, RunsFromZeroToOneByDefault) {
    const LinearTaper taper;
    EXPECT_EQ(taper.GetMinimumValue(), 0.0F);
    EXPECT_EQ(taper.GetMaximumValue(), 1.0F);
    EXPECT_EQ(taper.NormalizedToReal(0.25), 0.25F);
    EXPECT_EQ(taper.RealToNormalized(0.25F), 0.25);
}

TEST(LinearTaper, MapsItsRangeToZeroToOne) {
    const LinearTaper taper(-20.0F, 60.0F);
    EXPECT_EQ(taper.NormalizedToReal(0.0), -20.0F);
    EXPECT_EQ(taper.NormalizedToReal(0.5), 20.0F);
    EXPECT_EQ(taper.NormalizedToReal(1.0), 60.0F);
    EXPECT_EQ(taper.RealToNormalized(-20.0F), 0.0);
    EXPECT_EQ(taper.RealToNormalized(20.0F), 0.5);
    EXPECT_EQ(taper.RealToNormalized(60.0F), 1.0);
}

TEST(LinearTaper, ComputesInDoublePrecisionAndRoundsOnce) {
    const LinearTaper taper(0.1F, 0.7F);
    const double minimum = 0.1F;
    const double maximum = 0.7F;
    EXPECT_EQ(taper.NormalizedToReal(1.0 / 3), static_cast<float>(minimum + (maximum - minimum) * (1.0 / 3)));
    EXPECT_EQ(taper.RealToNormalized(0.3F), (static_cast<double>(0.3F) - minimum) / (maximum - minimum));
}

TEST(LinearTaper, ClampsWhatLiesOutside) {
    const LinearTaper taper(-1.0F, 3.0F);
    EXPECT_EQ(taper.ConstrainRealValue(-1.5F), -1.0F);
    EXPECT_EQ(taper.ConstrainRealValue(2.0F), 2.0F);
    EXPECT_EQ(taper.ConstrainRealValue(kInfinity), 3.0F);
    EXPECT_EQ(taper.NormalizedToReal(1.7), 3.0F);
    EXPECT_EQ(taper.NormalizedToReal(-0.1), -1.0F);
    EXPECT_EQ(taper.NormalizedToReal(std::numeric_limits<double>::infinity()), 3.0F);
    EXPECT_EQ(taper.RealToNormalized(-kInfinity), 0.0);
    EXPECT_EQ(taper.RealToNormalized(4.0F), 1.0);
}

TEST(LinearTaper, MayRunDownwards) {
    const LinearTaper taper(2.0F, -2.0F);
    EXPECT_EQ(taper.GetMinimumValue(), 2.0F);
    EXPECT_EQ(taper.GetMaximumValue(), -2.0F);
    EXPECT_EQ(taper.NormalizedToReal(0.25), 1.0F);
    EXPECT_EQ(taper.RealToNormalized(1.0F), 0.25);
    EXPECT_EQ(taper.ConstrainRealValue(5.0F), 2.0F);
    EXPECT_EQ(taper.ConstrainRealValue(-5.0F), -2.0F);
}

TEST(LinearTaper, OfOnePointIsHalfWay) {
    const LinearTaper taper(3.0F, 3.0F);
    EXPECT_EQ(taper.ConstrainRealValue(17.0F), 3.0F);
    EXPECT_EQ(taper.NormalizedToReal(0.9), 3.0F);
    EXPECT_EQ(taper.RealToNormalized(17.0F), 0.5);
}

TEST(LinearTaper, TakesWhatIsNotANumberForItsLowerBound) {
    const double nan = kTaperNaN;
    const LinearTaper upwards(-1.0F, 3.0F);
    EXPECT_EQ(upwards.ConstrainRealValue(kTaperNaN), -1.0F);
    EXPECT_EQ(upwards.NormalizedToReal(nan), -1.0F);
    EXPECT_EQ(upwards.RealToNormalized(kTaperNaN), 0.0);
    const LinearTaper downwards(3.0F, -1.0F);
    EXPECT_EQ(downwards.ConstrainRealValue(kTaperNaN), -1.0F);
    EXPECT_EQ(downwards.RealToNormalized(kTaperNaN), 1.0);
    const LinearTaper point(2.0F, 2.0F);
    EXPECT_EQ(point.ConstrainRealValue(kTaperNaN), 2.0F);
    EXPECT_EQ(point.RealToNormalized(kTaperNaN), 0.5);
}

TEST(LinearTaper, ClonesItsBounds) {
    const std::unique_ptr<AAX_ITaperDelegate<float>> clone = LinearTaper(-4.0F, 4.0F).Clone();
    EXPECT_EQ(clone->GetMinimumValue(), -4.0F);
    EXPECT_EQ(clone->GetMaximumValue(), 4.0F);
}

TEST(TaperDelegate, DeclaresItsOperationsInOrder) {
    using Interface = AAX_ITaperDelegate<float>;
    EXPECT_EQ(slotOf(&Interface::Clone), kDestructorSlots);
    EXPECT_EQ(slotOf(&Interface::GetMaximumValue), kDestructorSlots + 1);
    EXPECT_EQ(slotOf(&Interface::GetMinimumValue), kDestructorSlots + 2);
    EXPECT_EQ(slotOf(&Interface::ConstrainRealValue), kDestructorSlots + 3);
    EXPECT_EQ(slotOf(&Interface::NormalizedToReal), kDestructorSlots + 4);
    EXPECT_EQ(slotOf(&Interface::RealToNormalized), kDestructorSlots + 5);
}

#if VARNO_HAS_PROPERTIES
RC_GTEST_PROP(LinearTaperProperty, AnswersInRangeForAnyBits,
              (float minimum, float maximum, std::uint64_t bits)) {
    RC_PRE(std::isfinite(minimum) && std::isfinite(maximum));
    const LinearTaper taper(minimum, maximum);
    const auto normalized = std::bit_cast<double>(bits);
    const auto real = std::bit_cast<float>(static_cast<std::uint32_t>(bits));
    for (const float value : {taper.NormalizedToReal(normalized), taper.ConstrainRealValue(real)}) {
        RC_ASSERT(value >= std::min(minimum, maximum));
        RC_ASSERT(value <= std::max(minimum, maximum));
    }
    const double back = taper.RealToNormalized(real);
    RC_ASSERT(back >= 0.0);
    RC_ASSERT(back <= 1.0);
}

RC_GTEST_PROP(LinearTaperProperty, OfZeroToOneKeepsEveryFloat, ()) {
    const float value = static_cast<float>(*rc::gen::inRange(0, 1 << 24)) / static_cast<float>(1 << 24);
    const LinearTaper taper;
    RC_ASSERT(taper.NormalizedToReal(taper.RealToNormalized(value)) == value);
}
#endif

} // namespace
} // namespace varno
