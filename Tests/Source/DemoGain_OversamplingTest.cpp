#include "DemoGain_Oversampling.h"

#include "DemoGain_Alg.h"
#include "DemoGain_Coefficients.h"

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <vector>

namespace {

// A coefficient that two rates share is unscaled; no curve has more than the attack.
TEST(DemoGain_Oversampling, NamesTheOneUnscaledCoefficient) {
    constexpr double kRateHz = 48000.0;
    for (int curve = 0; curve <= 7; ++curve) {
        const float ratio = static_cast<float>(curve) / 7.0F;
        const SDemoGain_DynamicsValues values{0.3F, 0.4F, 0.0F, ratio};
        const SDemoGain_Dynamics once = DemoGain_ComputeDynamics(values, kRateHz);
        const SDemoGain_Dynamics twice = DemoGain_ComputeDynamics(values, 2.0 * kRateHz);
        EXPECT_EQ(DemoGain_IsUnscaled(ratio), once.mAttackCoef == twice.mAttackCoef) << curve;
        EXPECT_NE(once.mReleaseCoef, twice.mReleaseCoef);
        EXPECT_NE(once.mSlowCoef, twice.mSlowCoef);
    }
}

// Everything else of the state belongs to a rate, or is short.
TEST(DemoGain_Oversampling, CarriesFollowersClipGainsAndAverages) {
    SDemoGain_Alg_State from{};
    from.mFollowers[0] = {-1.0F, -2.0F};
    from.mFollowers[1] = {-3.0F, -4.0F};
    from.mClipGain[0] = 0.5F;
    from.mClipGain[1] = 0.6F;
    from.mInAvg = 0.7F;
    from.mOutAvg = 0.8F;
    SDemoGain_Alg_State expected = from;
    from.mClipCoef = 0.99F;
    from.mPrevIn[0] = 1.0F;
    from.mHp.b0 = 1.0F;
    SDemoGain_Alg_State to{};
    for (const SDemoGain_StateBytes& bytes : DemoGain_CarriedState()) {
        std::memcpy(reinterpret_cast<char*>(&to) + bytes.mOffset,
                    reinterpret_cast<const char*>(&from) + bytes.mOffset, bytes.mSize);
    }
    using Words = std::array<std::uint32_t, sizeof to / sizeof(std::uint32_t)>;
    EXPECT_EQ(std::bit_cast<Words>(to), std::bit_cast<Words>(expected));
}

} // namespace
