#include "Alg/DemoGain_Conversions-inl.h"

#include "Tests/Reference/ReferenceRoutine.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>

namespace varno::test::conversions {

namespace reference = varno::reference;
namespace stages = DemoGain::HWY_NAMESPACE;
namespace hn = hwy::HWY_NAMESPACE;

namespace {

using Vector = hn::FixedTag<float, 4>;

// The result of a conversion for one value. The other values of the vector must have no influence.
template<class Conversion>
float convert(float value, Conversion conversion) {
    const Vector d;
    constexpr std::size_t kPlace = 2;
    HWY_ALIGN float values[4] = {0.25F, -90.0F, value, 3e9F};
    hn::Store(conversion(d, hn::Load(d, values)), d, values);
    return values[kPlace];
}

float LinToDb(float level) {
    return convert(level, [](auto d, auto v) { return stages::LinToDb(d, v); });
}

float DbToLin(float gainDB) {
    return convert(gainDB, [](auto d, auto v) { return stages::DbToLin(d, v); });
}

float Level(float sample) {
    return convert(sample, [](auto d, auto v) { return stages::Level(d, v); });
}

float ClipLevel(float sample, float bias) {
    return convert(sample, [bias](auto d, auto v) { return stages::ClipLevel(d, v, hn::Set(d, bias)); });
}

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kLargest = std::numeric_limits<float>::max();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

float below(float value) {
    return std::nextafter(value, -kInfinity);
}

float above(float value) {
    return std::nextafter(value, kInfinity);
}

// A finite float of any magnitude, both signs.
float anyFloat(std::mt19937& engine) {
    for (;;) {
        const float value = std::bit_cast<float>(static_cast<std::uint32_t>(engine()));
        if (std::isfinite(value)) {
            return value;
        }
    }
}

TEST(DemoGain_Conversions, AgreeWithTheLiteralOnesForAnyFloat) {
    constexpr std::uint32_t kSeed = 41;
    std::mt19937 engine(kSeed);
    for (int i = 0; i < 200000; ++i) {
        const float value = anyFloat(engine);
        ASSERT_EQ(LinToDb(std::fabs(value)), reference::levelToDB(std::fabs(value))) << value;
        ASSERT_EQ(Level(value), reference::detectorLevel(value)) << value;
        ASSERT_EQ(ClipLevel(value, 0.0F), reference::clipLevel(value, 0.0F)) << value;
        ASSERT_EQ(ClipLevel(value, 0.2F), reference::clipLevel(value, 0.2F)) << value;
    }
}

TEST(DemoGain_Conversions, AgreeWithTheLiteralOnesAcrossTheTables) {
    for (float level = 0.0F; level < 20.0F; level += 0.0001F) {
        ASSERT_EQ(LinToDb(level), reference::levelToDB(level)) << level;
    }
    for (float gain = -100.0F; gain < 100.0F; gain += 0.001F) {
        ASSERT_EQ(DbToLin(gain), reference::gainToFactor(gain)) << gain;
    }
    for (float v = -2.0F; v < 2.0F; v += 0.00001F) {
        ASSERT_EQ(Level(v), reference::detectorLevel(v)) << v;
        ASSERT_EQ(ClipLevel(v, 0.2F), reference::clipLevel(v, 0.2F)) << v;
    }
}

TEST(DemoGain_Conversions, LevelsReadTrueWithinTheTable) {
    EXPECT_EQ(LinToDb(0.0F), -80.0F);
    EXPECT_EQ(LinToDb(below(0.0001F)), -80.0F);
    EXPECT_EQ(LinToDb(0.0001F), -80.0F);
    EXPECT_NEAR(LinToDb(1.0F), 0.0F, 1e-4F);
    EXPECT_NEAR(LinToDb(0.5F), -6.0206F, 1e-4F);
    EXPECT_NEAR(LinToDb(10.0F), 20.0F, 1e-4F);
    EXPECT_EQ(LinToDb(below(fCeilLin)), 24.0F) << "reads the table's last two entries";
    EXPECT_EQ(LinToDb(fCeilLin), 24.0F);
}

TEST(DemoGain_Conversions, LevelsAboveTheTableFoldByTwelve) {
    EXPECT_NEAR(LinToDb(20.0F), 12.0F + LinToDb(5.0F), 1e-5F);
    EXPECT_NE(LinToDb(20.0F), LinToDb(5.0F) + 12.0412F);
    EXPECT_LT(LinToDb(above(fCeilLin)), 24.0F) << "the fold counts 12 for 12.04 dB";
    EXPECT_EQ(LinToDb(1e30F), reference::levelToDB(1e30F));
    EXPECT_EQ(LinToDb(kLargest), reference::levelToDB(kLargest));
}

TEST(DemoGain_Conversions, LevelsThatAreNotFiniteEnd) {
    EXPECT_TRUE(std::isfinite(LinToDb(kInfinity)));
    EXPECT_TRUE(std::isfinite(LinToDb(kNaN)));
}

TEST(DemoGain_Conversions, GainsReadTrueWithinTheTable) {
    EXPECT_NEAR(DbToLin(0.0F), 1.0F, 1e-5F);
    EXPECT_NEAR(DbToLin(-0.000002F), 1.0F, 1e-5F);
    EXPECT_NEAR(DbToLin(-6.0206F), 0.5F, 1e-5F);
    EXPECT_EQ(DbToLin(-80.0F), 0.0001F);
    EXPECT_EQ(DbToLin(below(-80.0F)), 0.0001F);
    EXPECT_EQ(DbToLin(-1000.0F), 0.0001F);
    EXPECT_EQ(DbToLin(below(24.0F)), 15.848932F) << "reads the table's last two entries";
    EXPECT_EQ(DbToLin(24.0F), fCeilLin);
}

TEST(DemoGain_Conversions, GainsWithoutLoudCompanyAreTheSame) {
    const Vector d;
    for (float gain = -100.0F; gain < 24.0F; gain += 0.01F) {
        EXPECT_EQ(hn::GetLane(stages::DbToLin(d, hn::Set(d, gain))), reference::gainToFactor(gain)) << gain;
    }
}

TEST(DemoGain_Conversions, GainsAboveTheTableShrink) {
    EXPECT_EQ(DbToLin(30.0F), 0.25F * DbToLin(18.0F));
    EXPECT_EQ(DbToLin(48.0F), 0.0625F * fCeilLin);
}

TEST(DemoGain_Conversions, GainsThatAreAbsurdEnd) {
    EXPECT_LT(DbToLin(1e30F), 1e-30F);
    EXPECT_LT(DbToLin(kInfinity), 1e-30F);
    EXPECT_EQ(DbToLin(-kInfinity), fFloorLin);
    EXPECT_TRUE(std::isfinite(DbToLin(kNaN)));
}

TEST(DemoGain_Conversions, LevelIsRoundedBelowOneAndStepsThere) {
    EXPECT_EQ(Level(0.0F), 0.0F);
    EXPECT_EQ(Level(-0.7F), Level(0.7F));
    EXPECT_NEAR(Level(1.0F), 0.957F, 5e-4F);
    EXPECT_EQ(Level(above(1.0F)), above(1.0F));
    EXPECT_EQ(Level(-3.0F), 3.0F);
}

TEST(DemoGain_Conversions, ClipLevelLeavesTheBiasOutOfTheSquare) {
    EXPECT_NEAR(ClipLevel(0.0F, 0.0F), 0.03124788F, 1e-8F);
    EXPECT_EQ(ClipLevel(0.0F, 0.2F), ClipLevel(0.0F, 0.0F));
    EXPECT_EQ(ClipLevel(0.5F, 0.2F), ClipLevel(0.5F, 0.0F));
    EXPECT_EQ(ClipLevel(0.9F, 0.2F), 0.2F + 0.9F) << "the bias decides what counts as above 1";
    EXPECT_EQ(ClipLevel(-1.1F, 0.2F), ClipLevel(1.1F - 0.0F, -0.2F));
    EXPECT_LT(ClipLevel(-1.1F, 0.2F), 2.0F);
    EXPECT_EQ(ClipLevel(-2.0F, 0.2F), 1.8F);
}

} // namespace
} // namespace varno::test::conversions
