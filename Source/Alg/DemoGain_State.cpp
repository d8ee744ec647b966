#include "Alg/DemoGain_State.h"
#include "DemoGain_SampleRates.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>

namespace {

// Two pi to eight digits, as the coefficients are defined with it.
constexpr double kTwoPi = 6.2831855;

// Corner of the detector's high-pass: 120 Hz, as a share of the reference rate.
constexpr double kHighPassCorner = 120.0 / DemoGain_SampleRates::kReferenceHz;
// Centre of the detector's all-pass: 7000 Hz, as a share of the reference rate, to eight digits.
constexpr double kAllPassCentre = 0.14583333;
constexpr double kAllPassQ = 0.1;

// The DC blocker's time constant is stated for this rate, unlike all others; intended.
constexpr double kDcReferenceRateHz = 44100.0;
// Exponent of the DC blocker per sample at that rate: ln 0.996 (of the single-precision number).
constexpr double kDcExponent = -0.0040080296;
// The two exponents below are per sample at the reference rate times 11 / 12; this is 12 / 11 to eight
// digits.
constexpr double kClipRateFactor = 1.0909091;
// Exponent of the clip gain's recovery: ln 0.995 (of the single-precision number).
constexpr double kClipExponent = -0.005012537;
// Exponent of a time constant that no routine reads. Fixed by definition.
constexpr double kUnusedExponent = -0.0020821297;

// Starting value of the level averages, linear.
constexpr float kAverageAtStart = 0.1F;

// Constants that no routine reads. Fixed by definition.
constexpr float kUnread[2][6] = {{0.87403202F, 0.83125389F, 0.98768836F, 0.98768836F, 0.0F, 0.0F},
                                 {0.71592098F, -0.22123176F, 0.58778524F, 0.58778524F, 0.0F, 0.0F}};

float rounded(double value) {
    return static_cast<float>(value);
}

// First-order high-pass.
SDemoGain_DetectorSection highPass(double rateScale) {
    const double theta = rateScale * kHighPassCorner * kTwoPi * 0.5;
    const double s = std::sin(theta);
    const double c = std::cos(theta);
    return {.b0 = rounded(c),
            .b1 = rounded(-c),
            .b2 = 0.0F,
            .gain = rounded(1.0 / (s + c)),
            .a1 = rounded(s - c),
            .a2 = 0.0F};
}

// Second-order all-pass. Unstable at sample rates below 14 kHz, twice its centre.
SDemoGain_DetectorSection allPass(double rateScale) {
    const double omega = rateScale * kAllPassCentre * kTwoPi;
    const double alpha = std::sin(omega) / (2.0 * kAllPassQ);
    const double k = -2.0 * std::cos(omega);
    return {.b0 = rounded(1.0 - alpha),
            .b1 = rounded(k),
            .b2 = rounded(1.0 + alpha),
            .gain = rounded(1.0 / (1.0 + alpha)),
            .a1 = rounded(k),
            .a2 = rounded(1.0 - alpha)};
}

// Everything that the routine changes.
void resetRunning(SDemoGain_Alg_State& ioState) {
    for (std::size_t channel = 0; channel < 2; ++channel) {
        ioState.mFollowers[channel] = {};
        ioState.mLastOut[channel] = 0.0F;
        ioState.mDc[channel].mDcX1 = 0.0F;
        ioState.mDc[channel].mDcY1 = 0.0F;
        ioState.mPost[channel] = {};
        ioState.mDetector[channel] = {};
        ioState.mPrevIn[channel] = 0.0F;
        ioState.mClipGain[channel] = 1.0F;
    }
    ioState.mInAvg = kAverageAtStart;
    ioState.mOutAvg = kAverageAtStart;
}

// The coefficients, which only a reset writes.
void setCoefficients(SDemoGain_Alg_State& ioState, double sampleRate) {
    const double rateScale = DemoGain_SampleRates::kReferenceHz / sampleRate;
    const float dcCoef = rounded(std::exp(kDcReferenceRateHz / sampleRate * kDcExponent));
    ioState.mDc[0].mDcCoef = dcCoef;
    ioState.mDc[1].mDcCoef = dcCoef;
    ioState.mPostA = kDemoGain_PostA;
    ioState.mPostB = kDemoGain_PostB;
    ioState.mHp = highPass(rateScale);
    ioState.mAp = allPass(rateScale);
    ioState.mClipCoef = rounded(std::exp(rateScale * kClipRateFactor * kClipExponent));
}

// Words that the routine does not read.
void setUnread(SDemoGain_Alg_State& ioState, double sampleRate) {
    for (float& word : ioState.mCleared) {
        word = 0.0F;
    }
    for (std::size_t group = 0; group < std::size(kUnread); ++group) {
        for (std::size_t i = 0; i < std::size(kUnread[group]); ++i) {
            ioState.mUnread[group][i] = kUnread[group][i];
        }
    }
    ioState.mUnusedZero = 0.0F;
    ioState.mUnusedTimeConstant = rounded(
        std::exp(DemoGain_SampleRates::kReferenceHz / sampleRate * kClipRateFactor * kUnusedExponent));
}

// Whether the floats of a record from byte kBegin to before byte kEnd are finite: no exponent is all ones.
template<std::size_t kBegin, std::size_t kEnd, class Record>
bool areFinite(const Record& record) {
    constexpr uint32_t kExponent = 0x7F800000U;
    uint32_t words[(kEnd - kBegin) / sizeof(uint32_t)];
    std::memcpy(words, reinterpret_cast<const unsigned char*>(&record) + kBegin, sizeof(words));
    uint32_t found = 0;
    for (const uint32_t word : words) {
        found |= static_cast<uint32_t>((word & kExponent) == kExponent);
    }
    return found == 0;
}

template<class Record>
bool isFinite(const Record& record) {
    return areFinite<0, sizeof(Record)>(record);
}

template<class Record>
void replaceUnlessFinite(Record& ioRecord, const Record& replacement) {
    if (!isFinite(ioRecord)) {
        ioRecord = replacement;
    }
}

// Computed when the module is loaded, so that the audio thread computes no coefficients to recover.
const SDemoGain_Alg_State kReferenceState = [] {
    SDemoGain_Alg_State state{};
    DemoGain_ResetState(state, DemoGain_SampleRates::kReferenceHz);
    return state;
}();

} // namespace

void DemoGain_ResetState(SDemoGain_Alg_State& ioState, double sampleRate) {
    setUnread(ioState, sampleRate);
    setCoefficients(ioState, sampleRate);
    resetRunning(ioState);
}

bool DemoGain_IsStateFinite(const SDemoGain_Alg_State& state) {
    // In runs of words, which compilers check several at a time; what lies between them is not read by the
    // routine.
    constexpr std::size_t kFirst = offsetof(SDemoGain_Alg_State, mFollowers);
    constexpr std::size_t kUnreadPlace = offsetof(SDemoGain_Alg_State, mUnread);
    constexpr std::size_t kPost = offsetof(SDemoGain_Alg_State, mPostA);
    constexpr std::size_t kUnused = offsetof(SDemoGain_Alg_State, mUnusedZero);
    constexpr std::size_t kDetector = offsetof(SDemoGain_Alg_State, mHp);
    return areFinite<kFirst, kUnreadPlace>(state) && areFinite<kPost, kUnused>(state) &&
           areFinite<kDetector, sizeof(SDemoGain_Alg_State)>(state);
}

void DemoGain_RecoverState(SDemoGain_Alg_State& ioState) {
    for (std::size_t channel = 0; channel < 2; ++channel) {
        replaceUnlessFinite(ioState.mDc[channel].mDcCoef, kReferenceState.mDc[channel].mDcCoef);
    }
    replaceUnlessFinite(ioState.mPostA, kReferenceState.mPostA);
    replaceUnlessFinite(ioState.mPostB, kReferenceState.mPostB);
    replaceUnlessFinite(ioState.mHp, kReferenceState.mHp);
    replaceUnlessFinite(ioState.mAp, kReferenceState.mAp);
    replaceUnlessFinite(ioState.mClipCoef, kReferenceState.mClipCoef);
    resetRunning(ioState);
}
