#include "DemoGain_Coefficients.h"

#include "DemoGain_Alg.h"
#include "DemoGain_ParameterTable.h"
#include "DemoGain_SampleRates.h"

#include <cmath>
#include <iterator>

namespace {

// "Gain" and "Volume" are linear in dB. Their limits are whole numbers, which single precision holds exactly.
constexpr auto kLeastLevelDB = static_cast<float>(kDemoGain_Level.mLow);
constexpr auto kLevelRangeDB = static_cast<float>(kDemoGain_Level.mHigh - kDemoGain_Level.mLow);
static_assert(kLeastLevelDB == -20.0F && kLevelRangeDB == 2 * 20.0F);
// A level in dB, times this, is its exponent to the base 10: 20 dB are a factor of 10.
constexpr double kDecadesPerDB = 0.05; // fixed by definition: a division by 20 would round otherwise

// Start of the knee of every gain curve.
constexpr float kThresholdDB = -30.0F;

// m * x + k.
struct Line {
    double m;
    double k;
};

// The four coefficients of a gain curve as lines over x = 1 - (1 - release) * attack.
using Curve = Line[4];

// One row per choice of "Ratio". Fixed by definition.
constexpr Curve kCurves[] = {
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
    {{-0.03532383, -0.13036828}, {0.7548269, 1.6672131}, {-1.2241096, -1.4573376}, {0.64564085, 0.42183533}},
};
constexpr int kLastCurve = static_cast<int>(std::size(kCurves)) - 1;

// The curve with the longest times.
constexpr int kLongCurve = 5;

// Attack: exponent of the coefficient per sample at the reference rate, ln 0.95 (of the single-precision
// number) at the shortest attack, rising by kAttackRange to ln 0.9995 at the longest.
constexpr double kShortestAttack = -0.051293306;
constexpr double kAttackRange = 0.050793156;
// The same of kDemoGain_FixedAttackCurve, as a coefficient: 0.6 to 0.999.
constexpr double kShortestFixedAttack = 0.6;
constexpr double kFixedAttackRange = 0.399;

// Release: coefficient per sample at the reference rate, linear in the shape below.
struct ReleaseRange {
    double mShortest; // At a shape of 0.
    double mRange;
};
constexpr ReleaseRange kRelease = {0.9991, 0.00087994337};
constexpr ReleaseRange kLongRelease = {0.9999, 0.000097990036};
// Shape of the release over its normalized value: coefficients of r^5 to r^1. Fixed by definition.
constexpr double kReleaseShape[] = {13.495, -40.9175, 47.23, -26.2, 7.3841};
// Factor of the release coefficient while "UK" is on. Fixed by definition.
constexpr double kUKFactor = 0.99991;

// Slow follower: coefficient per sample at the reference rate.
constexpr double kSlow = 0.9999;
constexpr double kLongSlow = 0.99998;

// Attack coefficient per sample. `q` is the fourth root of the normalized attack.
double attackCoef(double q, int curve, double rateScale) {
    if (curve == kDemoGain_FixedAttackCurve) {
        return kShortestFixedAttack + kFixedAttackRange * q;
    }
    return std::exp((kAttackRange * q + kShortestAttack) * rateScale);
}

// Release coefficient per sample at the reference rate.
double releaseBase(double r, int curve, bool isUKOn) {
    double shape = 0.0;
    for (const double coefficient : kReleaseShape) {
        shape = shape * r + coefficient;
    }
    shape *= r;
    const ReleaseRange& range = curve == kLongCurve ? kLongRelease : kRelease;
    const double base = shape * range.mRange + range.mShortest;
    return isUKOn ? base * kUKFactor : base;
}

// Coefficient of the slow follower per sample at the reference rate.
double slowBase(int curve) {
    return curve == kLongCurve ? kLongSlow : kSlow;
}

// A coefficient per sample at the reference rate, converted to the rate of `rateScale`.
double scaled(double base, double rateScale) {
    return std::exp(std::log(base) * rateScale);
}

// Coefficients per sample of the follower whose times are adjustable.
struct FollowerCoefs {
    double mAttack;
    double mRelease;
};

FollowerCoefs followerCoefs(const SDemoGain_DynamicsValues& values, double rateScale) {
    const double q = std::sqrt(std::sqrt(static_cast<double>(values.mAttack)));
    const int curve = DemoGain_CurveIndex(values.mRatio);
    const bool isUKOn = values.mUK > kAlgSwitchThreshold;
    return {attackCoef(q, curve, rateScale), scaled(releaseBase(values.mRelease, curve, isUKOn), rateScale)};
}

} // namespace

float DemoGain_LevelDB(float normalized) {
    return normalized * kLevelRangeDB + kLeastLevelDB;
}

float DemoGain_LevelLin(float dB) {
    return static_cast<float>(std::pow(10.0, static_cast<double>(dB) * kDecadesPerDB));
}

int DemoGain_CurveIndex(float ratio) {
    const float choice = ratio * static_cast<float>(kLastCurve) + 0.5F;
    const bool known = choice >= 1.0F && choice < static_cast<float>(kLastCurve + 1);
    return known ? static_cast<int>(choice) : 0;
}

SDemoGain_Dynamics DemoGain_ComputeDynamics(const SDemoGain_DynamicsValues& values, double sampleRate) {
    const double rateScale = DemoGain_SampleRates::kReferenceHz / sampleRate;
    const double attack = values.mAttack;
    const double release = values.mRelease;
    const double x = 1.0 - (1.0 - release) * attack;
    const int curve = DemoGain_CurveIndex(values.mRatio);
    const FollowerCoefs coefs = followerCoefs(values, rateScale);

    SDemoGain_Dynamics result{};
    result.mAttackCoef = static_cast<float>(coefs.mAttack);
    result.mReleaseCoef = static_cast<float>(coefs.mRelease);
    result.mSlowCoef = static_cast<float>(scaled(slowBase(curve), rateScale));
    result.mThreshold = kThresholdDB;
    for (std::size_t i = 0; i < std::size(result.mCurve); ++i) {
        const Line& line = kCurves[curve][i];
        result.mCurve[i] = static_cast<float>(line.m * x + line.k);
    }
    return result;
}

DemoGain::GainCurve DemoGain_ComputeCurve(const SDemoGain_DynamicsValues& values) {
    const SDemoGain_Dynamics dynamics = DemoGain_ComputeDynamics(values, DemoGain_SampleRates::kReferenceHz);
    const auto& c = dynamics.mCurve;
    return DemoGain::GainCurve::of(dynamics.mThreshold, c[0], c[1], c[2], c[3]);
}

SDemoGain_Times DemoGain_ComputeTimes(const SDemoGain_DynamicsValues& values, double sampleRate) {
    const FollowerCoefs coefs = followerCoefs(values, DemoGain_SampleRates::kReferenceHz / sampleRate);
    constexpr double kMsPerSecond = 1000.0;
    // A coefficient c per sample leaves c^n of a change after n samples.
    const auto milliseconds = [sampleRate](double coef) {
        return -kMsPerSecond / (sampleRate * std::log(coef));
    };
    return {milliseconds(coefs.mAttack), milliseconds(coefs.mRelease)};
}
