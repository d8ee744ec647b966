#include "Alg/DemoGain_State.h"

#include "Tests/Support/AlgFixture.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <limits>
#include <set>

namespace varno::test::state {

namespace {

constexpr std::size_t kWords = sizeof(SDemoGain_Alg_State) / sizeof(float);
using Words = std::array<std::uint32_t, kWords>;

constexpr std::uint32_t kUntouched = 0x7FC0BEEFU;

Words wordsOf(const SDemoGain_Alg_State& state) {
    return std::bit_cast<Words>(state);
}

// A state whose every word is a tagged NaN.
SDemoGain_Alg_State untouched() {
    Words words;
    words.fill(kUntouched);
    return std::bit_cast<SDemoGain_Alg_State>(words);
}

SDemoGain_Alg_State freshState(double sampleRate) {
    SDemoGain_Alg_State state{};
    DemoGain_ResetState(state, sampleRate);
    return state;
}

// Words that no rule sets: the ends of the unread groups, and one among the unused three.
const std::set<std::size_t> kUnwrittenWords = {22, 23, 30, 31, 61};
// Words that the routine neither reads nor writes.
bool isUnread(std::size_t word) {
    return word < 4 || (word >= 16 && word < 32) || (word >= 60 && word < 63);
}

float rounded(double value) {
    return static_cast<float>(value);
}

TEST(DemoGain_State, ResetWritesEveryWordButTheUnwrittenOnes) {
    SDemoGain_Alg_State state = untouched();
    DemoGain_ResetState(state, 48000.0);
    const Words words = wordsOf(state);
    for (std::size_t i = 0; i < kWords; ++i) {
        EXPECT_EQ(words[i] == kUntouched, kUnwrittenWords.contains(i)) << "word " << i;
    }
}

TEST(DemoGain_State, EverythingThatRunsIsAtRest) {
    for (const double rate : kSampleRates) {
        const SDemoGain_Alg_State state = freshState(rate);
        for (const float cleared : state.mCleared) {
            EXPECT_EQ(cleared, 0.0F);
        }
        for (std::size_t channel = 0; channel < 2; ++channel) {
            EXPECT_EQ(state.mFollowers[channel].mGrEnvAR, 0.0F);
            EXPECT_EQ(state.mFollowers[channel].mGrEnvSlow, 0.0F);
            EXPECT_EQ(state.mLastOut[channel], 0.0F);
            EXPECT_EQ(state.mDc[channel].mDcX1, 0.0F);
            EXPECT_EQ(state.mDc[channel].mDcY1, 0.0F);
            EXPECT_EQ(state.mPrevIn[channel], 0.0F);
            EXPECT_EQ(state.mClipGain[channel], 1.0F);
        }
        const Words words = wordsOf(state);
        for (std::size_t i = 44; i < 60; ++i) {
            EXPECT_EQ(words[i], 0U) << "post section state, word " << i;
        }
        for (std::size_t i = 75; i < 91; ++i) {
            EXPECT_EQ(words[i], 0U) << "detector state, word " << i;
        }
        EXPECT_EQ(state.mInAvg, 0.1F);
        EXPECT_EQ(state.mOutAvg, 0.1F);
    }
}

TEST(DemoGain_State, CoefficientsThatDependOnTheRate) {
    for (const double rate : kSampleRates) {
        const SDemoGain_Alg_State state = freshState(rate);
        const double k = 48000.0 / rate;
        EXPECT_EQ(state.mDc[0].mDcCoef, rounded(std::exp((44100.0 / rate) * -0.0040080296)));
        EXPECT_EQ(state.mDc[1].mDcCoef, state.mDc[0].mDcCoef);
        EXPECT_EQ(state.mUnusedTimeConstant, rounded(std::exp(k * 1.0909091 * -0.0020821297)));
        EXPECT_EQ(state.mClipCoef, rounded(std::exp(k * 1.0909091 * -0.005012537)));

        const double theta = k * 0.0025 * 6.2831855 * 0.5;
        EXPECT_EQ(state.mHp.b0, rounded(std::cos(theta)));
        EXPECT_EQ(state.mHp.b1, -state.mHp.b0);
        EXPECT_EQ(state.mHp.b2, 0.0F);
        EXPECT_EQ(state.mHp.gain, rounded(1.0 / (std::sin(theta) + std::cos(theta))));
        EXPECT_EQ(state.mHp.a1, rounded(std::sin(theta) - std::cos(theta)));
        EXPECT_EQ(state.mHp.a2, 0.0F);

        const double omega = k * 0.14583333 * 6.2831855;
        const double alpha = std::sin(omega) / 0.2;
        EXPECT_EQ(state.mAp.b0, rounded(1.0 - alpha));
        EXPECT_EQ(state.mAp.b1, rounded(-2.0 * std::cos(omega)));
        EXPECT_EQ(state.mAp.b2, rounded(1.0 + alpha));
        EXPECT_EQ(state.mAp.gain, rounded(1.0 / (1.0 + alpha)));
        EXPECT_EQ(state.mAp.a1, state.mAp.b1);
        EXPECT_EQ(state.mAp.a2, state.mAp.b0);
    }
}

TEST(DemoGain_State, ValuesAt48kHz) {
    const SDemoGain_Alg_State state = freshState(48000.0);
    EXPECT_FLOAT_EQ(state.mDc[0].mDcCoef, 0.99632436F);
    EXPECT_FLOAT_EQ(state.mHp.b0, 0.99996916F);
    EXPECT_NEAR(state.mHp.a1, -0.99211523F, 1e-6F);
    EXPECT_NEAR(state.mAp.b1, -1.2175228F, 1e-6F);
    EXPECT_NEAR(state.mAp.b0, -2.9667667F, 1e-6F);
    EXPECT_NEAR(state.mClipCoef, 0.99454665F, 1e-6F);
}

TEST(DemoGain_State, TheDcBlockerAloneIsSetAgainst44100Hz) {
    EXPECT_EQ(freshState(44100.0).mDc[0].mDcCoef, rounded(std::exp(-0.0040080296)));
    EXPECT_EQ(freshState(48000.0).mClipCoef, rounded(std::exp(1.0909091 * -0.005012537)));
}

TEST(DemoGain_State, FixedCoefficients) {
    const SDemoGain_Alg_State state = freshState(96000.0);
    for (const SDemoGain_PostSection* post : {&state.mPostA, &state.mPostB}) {
        EXPECT_EQ(post->b0, 0.21020785F);
        EXPECT_EQ(post->b1, 0.4204157F);
        EXPECT_EQ(post->b2, 0.21020785F);
        EXPECT_EQ(post->a1, -0.84083444F);
        EXPECT_EQ(post->a2, 0.040730298F);
    }
    EXPECT_EQ(state.mPostA.g, 0.60940844F);
    EXPECT_EQ(state.mPostB.g, 0.85306305F);
    constexpr float kUnread[2][6] = {{0.87403202F, 0.83125389F, 0.98768836F, 0.98768836F, 0.0F, 0.0F},
                                     {0.71592098F, -0.22123176F, 0.58778524F, 0.58778524F, 0.0F, 0.0F}};
    for (std::size_t group = 0; group < 2; ++group) {
        for (std::size_t i = 0; i < 6; ++i) {
            EXPECT_EQ(state.mUnread[group][i], kUnread[group][i]);
        }
    }
    EXPECT_EQ(state.mUnusedZero, 0.0F);
}

TEST(DemoGain_State, FiniteMeansEveryWordThatIsRead) {
    const SDemoGain_Alg_State fresh = freshState(48000.0);
    EXPECT_TRUE(DemoGain_IsStateFinite(fresh));
    for (const float bad : {std::numeric_limits<float>::infinity(), -std::numeric_limits<float>::infinity(),
                            std::numeric_limits<float>::quiet_NaN()}) {
        for (std::size_t i = 0; i < kWords; ++i) {
            Words words = wordsOf(fresh);
            words[i] = std::bit_cast<std::uint32_t>(bad);
            const auto state = std::bit_cast<SDemoGain_Alg_State>(words);
            EXPECT_EQ(DemoGain_IsStateFinite(state), isUnread(i)) << "word " << i;
        }
    }
    Words words = wordsOf(fresh);
    words[95] = std::bit_cast<std::uint32_t>(std::numeric_limits<float>::max());
    words[91] = 1; // the smallest subnormal
    EXPECT_TRUE(DemoGain_IsStateFinite(std::bit_cast<SDemoGain_Alg_State>(words)));
}

TEST(DemoGain_State, RecoveryRestartsWhatRunsAndKeepsTheRate) {
    const SDemoGain_Alg_State fresh = freshState(96000.0);
    SDemoGain_Alg_State state = fresh;
    state.mFollowers[1].mGrEnvAR = std::numeric_limits<float>::quiet_NaN();
    state.mPost[0].mB.y2 = -3.0F;
    state.mDetector[1].mAp.x1 = 4.0F;
    state.mPrevIn[0] = 5.0F;
    state.mClipGain[1] = 0.3F;
    state.mInAvg = 0.7F;
    state.mDc[0].mDcY1 = 1.0F;
    state.mLastOut[0] = 1.0F;
    DemoGain_RecoverState(state);
    EXPECT_EQ(wordsOf(state), wordsOf(fresh));
}

TEST(DemoGain_State, RecoveryReplacesBrokenCoefficientsByThoseOf48kHz) {
    const SDemoGain_Alg_State fresh = freshState(96000.0);
    const SDemoGain_Alg_State fallback = freshState(48000.0);
    const float bad = std::numeric_limits<float>::infinity();
    SDemoGain_Alg_State state = fresh;
    state.mAp.gain = bad;
    state.mDc[1].mDcCoef = bad;
    state.mPostB.a2 = bad;
    DemoGain_RecoverState(state);
    EXPECT_TRUE(DemoGain_IsStateFinite(state));
    EXPECT_EQ(state.mAp.b0, fallback.mAp.b0) << "a section is replaced as a whole";
    EXPECT_EQ(state.mAp.gain, fallback.mAp.gain);
    EXPECT_EQ(state.mDc[0].mDcCoef, fresh.mDc[0].mDcCoef);
    EXPECT_EQ(state.mDc[1].mDcCoef, fallback.mDc[1].mDcCoef);
    EXPECT_EQ(state.mPostB.a2, fresh.mPostB.a2);
    EXPECT_EQ(state.mHp.b0, fresh.mHp.b0);
    EXPECT_EQ(state.mClipCoef, fresh.mClipCoef);
}

} // namespace
} // namespace varno::test::state
