#include "DemoGain_Coefficients.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace varno::test::coefficients {

namespace {

constexpr double kRates[] = {16000.0, 44100.0, 48000.0, 96000.0, 192000.0, 384000.0};

SDemoGain_Dynamics dynamics(float attack, float release, float uk, float ratio, double rate) {
    return DemoGain_ComputeDynamics({attack, release, uk, ratio}, rate);
}

// A "Ratio" that chooses curve n.
float ratioOf(int n) {
    return static_cast<float>(n) / 7.0F;
}

float rounded(double value) {
    return static_cast<float>(value);
}

double shapeOf(double r) {
    return 13.495 * std::pow(r, 5) - 40.9175 * std::pow(r, 4) + 47.23 * std::pow(r, 3) - 26.2 * r * r +
           7.3841 * r;
}

// m and k of each coefficient of each curve.
constexpr double kLines[8][4][2] = {
    {{-0.043988492, -0.05987816}, {-0.81804353, 1.6369839}, {1.962162, -1.7847449}, {-1.112896, 0.71746075}},
    {{0.039812393, 0.016881654}, {1.6467217, -0.2675606}, {-2.6722722, 1.1747508}, {1.1952758, -0.59919924}},
    {{-0.07969572, -0.0008929357},
     {1.9000784, -0.084337234},
     {-2.802293, 0.8503855},
     {1.2028837, -0.4429555}},
    {{-0.047351893, -0.034703087},
     {1.7675618, 0.28932056},
     {-2.6075072, 0.26904505},
     {1.1363438, -0.19598596}},
    {{-0.09856507, -0.040035877}, {1.6908981, 0.2950281}, {-2.4604607, 0.4421936}, {1.1004055, -0.35637423}},
    {{-0.013766035, -0.11097344}, {1.0392646, 1.4713398}, {-1.7035922, -1.2622818}, {0.8287389, 0.39486742}},
    {{-0.05280383, -0.083658814},
     {0.70849943, 0.6779145},
     {-0.9385789, 0.20369117},
     {0.40077198, -0.35370582}},
    {{-0.03532383, -0.13036828}, {0.7548269, 1.6672131}, {-1.2241096, -1.4573376}, {0.64564085, 0.42183533}}};

TEST(DemoGain_Coefficients, LevelsRunFromMinusToPlusTwentyDB) {
    EXPECT_EQ(DemoGain_LevelDB(0.0F), -20.0F);
    EXPECT_EQ(DemoGain_LevelDB(0.5F), 0.0F);
    EXPECT_EQ(DemoGain_LevelDB(1.0F), 20.0F);
    EXPECT_EQ(DemoGain_LevelDB(0.3F), 0.3F * 40.0F - 20.0F);
    EXPECT_EQ(DemoGain_LevelLin(-20.0F), 0.1F);
    EXPECT_EQ(DemoGain_LevelLin(0.0F), 1.0F);
    EXPECT_EQ(DemoGain_LevelLin(20.0F), 10.0F);
}

TEST(DemoGain_Coefficients, LinearLevelsAreComputedInDoubleFromTheRoundedDB) {
    for (int i = 0; i <= 1000; ++i) {
        const float dB = DemoGain_LevelDB(static_cast<float>(i) / 1000.0F);
        EXPECT_EQ(DemoGain_LevelLin(dB), rounded(std::pow(10.0, static_cast<double>(dB) * 0.05)));
    }
}

TEST(DemoGain_Coefficients, CurveIndexTruncates) {
    EXPECT_EQ(DemoGain_CurveIndex(0.0F), 0);
    EXPECT_EQ(DemoGain_CurveIndex(0.07F), 0);
    EXPECT_EQ(DemoGain_CurveIndex(0.0715F), 1);
    EXPECT_EQ(DemoGain_CurveIndex(0.5F), 4);
    EXPECT_EQ(DemoGain_CurveIndex(0.92F), 6);
    EXPECT_EQ(DemoGain_CurveIndex(1.0F), 7);
    for (int n = 0; n < 8; ++n) {
        EXPECT_EQ(DemoGain_CurveIndex(ratioOf(n)), n);
    }
}

TEST(DemoGain_Coefficients, CurveIndexOfWhatLiesOutsideIsZero) {
    for (const float ratio :
         {-1.0F, -0.1F, 1.1F, 1e30F, -std::numeric_limits<float>::infinity(),
          std::numeric_limits<float>::infinity(), std::numeric_limits<float>::quiet_NaN()}) {
        EXPECT_EQ(DemoGain_CurveIndex(ratio), 0) << ratio;
    }
}

TEST(DemoGain_Coefficients, AttackAt48kHz) {
    EXPECT_EQ(dynamics(0.0F, 0.5F, 0.0F, 0.0F, 48000.0).mAttackCoef, rounded(std::exp(-0.051293306)));
    EXPECT_NEAR(dynamics(0.0F, 0.5F, 0.0F, 0.0F, 48000.0).mAttackCoef, 0.95F, 1e-6F);
    EXPECT_EQ(dynamics(0.0625F, 0.5F, 0.0F, 0.0F, 48000.0).mAttackCoef,
              rounded(std::exp(0.050793156 * 0.5 - 0.051293306)));
}

TEST(DemoGain_Coefficients, TimeConstantsFollowTheRateButForTheLastCurvesAttack) {
    for (const double rate : kRates) {
        const double k = 48000.0 / rate;
        for (int n = 0; n < 8; ++n) {
            for (const float attack : {0.0F, 0.2F, 1.0F}) {
                const double q = std::sqrt(std::sqrt(static_cast<double>(attack)));
                const double scaled = std::exp((0.050793156 * q - 0.051293306) * k);
                const SDemoGain_Dynamics d = dynamics(attack, 0.4F, 0.0F, ratioOf(n), rate);
                EXPECT_EQ(d.mAttackCoef, rounded(n == 7 ? 0.6 + 0.399 * q : scaled));
                EXPECT_EQ(d.mSlowCoef, rounded(std::exp(std::log(n == 5 ? 0.99998 : 0.9999) * k)));
                EXPECT_EQ(d.mThreshold, -30.0F);
            }
        }
    }
}

TEST(DemoGain_Coefficients, TwiceTheRateIsTheSquareRoot) {
    const SDemoGain_Dynamics at48 = dynamics(0.3F, 0.6F, 0.0F, 0.2F, 48000.0);
    const SDemoGain_Dynamics at96 = dynamics(0.3F, 0.6F, 0.0F, 0.2F, 96000.0);
    EXPECT_NEAR(at96.mAttackCoef, std::sqrt(at48.mAttackCoef), 1e-6F);
    EXPECT_NEAR(at96.mReleaseCoef, std::sqrt(at48.mReleaseCoef), 1e-6F);
    EXPECT_NEAR(at96.mSlowCoef, std::sqrt(at48.mSlowCoef), 1e-6F);
}

TEST(DemoGain_Coefficients, ReleaseFollowsItsPolynomial) {
    for (const double rate : kRates) {
        for (int n = 0; n < 8; ++n) {
            for (const float uk : {0.0F, 0.5F, 0.51F, 1.0F}) {
                for (const float release : {0.0F, 0.1F, 0.5F, 0.77F, 1.0F}) {
                    const double shape = shapeOf(release);
                    double base = n == 5 ? shape * 0.000097990036 + 0.9999 : shape * 0.00087994337 + 0.9991;
                    base *= uk > 0.5F ? 0.99991 : 1.0;
                    const float expected = rounded(std::exp(std::log(base) * 48000.0 / rate));
                    EXPECT_FLOAT_EQ(dynamics(0.5F, release, uk, ratioOf(n), rate).mReleaseCoef, expected);
                }
            }
        }
    }
}

TEST(DemoGain_Coefficients, CurvesAreLinesOverAttackAndRelease) {
    for (int n = 0; n < 8; ++n) {
        for (const float attack : {0.0F, 0.3F, 1.0F}) {
            for (const float release : {0.0F, 0.6F, 1.0F}) {
                const double x = 1.0 - (1.0 - static_cast<double>(release)) * static_cast<double>(attack);
                const SDemoGain_Dynamics d = dynamics(attack, release, 0.0F, ratioOf(n), 48000.0);
                for (int i = 0; i < 4; ++i) {
                    EXPECT_EQ(d.mCurve[i], rounded(kLines[n][i][0] * x + kLines[n][i][1])) << n << ' ' << i;
                }
            }
        }
    }
}

TEST(DemoGain_Coefficients, FollowersAreStableEverywhere) {
    for (const double rate : kRates) {
        for (int i = 0; i <= 20; ++i) {
            for (int n = 0; n < 8; ++n) {
                const float value = static_cast<float>(i) / 20.0F;
                for (const float uk : {0.0F, 1.0F}) {
                    const SDemoGain_Dynamics d = dynamics(value, value, uk, ratioOf(n), rate);
                    for (const float coef : {d.mAttackCoef, d.mReleaseCoef, d.mSlowCoef}) {
                        EXPECT_GT(coef, 0.0F);
                        EXPECT_LT(coef, 1.0F);
                    }
                }
            }
        }
    }
}

} // namespace
} // namespace varno::test::coefficients
