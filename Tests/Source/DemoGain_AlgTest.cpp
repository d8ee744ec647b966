// What the signal path does, as its users describe it.
#include "DemoGain_Alg.h"

#include "Tests/Reference/ReferenceRoutine.h"
#include "Tests/Support/AlgFixture.h"
#include "Tests/Support/Signal.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <string>

namespace varno::test::alg {

namespace {

constexpr double kRate = 48000.0;

// Runs `input` through `instance` in one buffer.
Signal rendered(AlgInstance& instance, const Signal& input) {
    const RenderOutcome outcome = renderChecked(instance.processor(), input);
    EXPECT_EQ(textOf(outcome.complaints), "");
    return outcome.output;
}

// A constant on each channel.
Signal constant(const std::vector<float>& values, std::size_t frames) {
    Signal signal;
    for (const float value : values) {
        signal.emplace_back(frames, value);
    }
    return signal;
}

// A 100 Hz sine at 48 kHz.
Signal sine(float amplitude, std::size_t frames) {
    Signal signal(1, std::vector<float>(frames));
    for (std::size_t n = 0; n < frames; ++n) {
        signal[0][n] = amplitude * static_cast<float>(std::sin(static_cast<double>(n) * 6.283185307 / 480.0));
    }
    return signal;
}

float peakOf(const std::vector<float>& samples, std::size_t from) {
    float peak = 0.0F;
    for (std::size_t n = from; n < samples.size(); ++n) {
        peak = std::max(peak, std::fabs(samples[n]));
    }
    return peak;
}

AlgParameters withMix(float mix) {
    AlgParameters parameters;
    parameters.mix = mix;
    return parameters;
}

TEST(DemoGain_Alg, FieldIndicesAddressTheContext) {
    std::array<const void*, eAlgFieldID_Count> fields{};
    std::array<char, eAlgFieldID_Count> memory{};
    for (std::size_t i = 0; i < fields.size(); ++i) {
        fields[i] = &memory[i];
    }
    const auto context = std::bit_cast<SDemoGain_Alg_Context>(fields);
    EXPECT_EQ(context.mBypass, fields[eAlgFieldID_Bypass]);
    EXPECT_EQ(context.mVolumeLin, fields[4]);
    EXPECT_EQ(context.mMix, fields[13]);
    EXPECT_EQ(context.mLinkSw, fields[15]);
    EXPECT_EQ(context.mCurve3, fields[23]);
    EXPECT_EQ(context.mMeters, fields[24]);
    EXPECT_EQ(context.mAudioIn, fields[25]);
    EXPECT_EQ(context.mAudioOut, fields[26]);
    EXPECT_EQ(context.mBufferSize, fields[27]);
    EXPECT_EQ(context.mSampleRate, fields[28]);
    EXPECT_EQ(context.mState, fields[eAlgFieldID_State]);
}

TEST(DemoGain_Alg, MeterIdentifiersReadBackwardsInMemory) {
    std::string text(sizeof(cDemoGain_MeterID), '\0');
    std::memcpy(text.data(), cDemoGain_MeterID, sizeof(cDemoGain_MeterID));
    EXPECT_EQ(text, "LGtmRGtmRItmROtm");
}

TEST(DemoGain_Alg, FieldsThatAreCarriedOnlyAreNotRead) {
    AlgInstance instance(2, kRate);
    SDemoGain_Alg_Context& context = instance.context();
    context.mGainDB = nullptr;
    context.mVolumeDB = nullptr;
    context.mAtk = nullptr;
    context.mRls = nullptr;
    context.mAuto = nullptr;
    context.mUK = nullptr;
    context.mRatio = nullptr;
    context.mSampleRate = nullptr;
    AlgInstance whole(2, kRate);
    const Signal input = noise(2, 500, 2, 0.0);
    EXPECT_EQ(firstDifference(rendered(whole, input), rendered(instance, input)), "");
}

TEST(DemoGain_Alg, SilenceStaysSilent) {
    AlgInstance instance(1, kRate);
    const Signal output = rendered(instance, silence(1, 100000));
    EXPECT_EQ(peakOf(output[0], 0), 0.0F);
    const SDemoGain_Followers& followers = instance.state().mFollowers[0];
    EXPECT_NEAR(followers.mGrEnvAR + followers.mGrEnvSlow, -0.000002F, 1e-9F);
    EXPECT_NEAR(varno::reference::gainToFactor(followers.mGrEnvAR + followers.mGrEnvSlow), 1.0F, 1e-5F);
    EXPECT_EQ(instance.state().mClipGain[0], 1.0F);
}

TEST(DemoGain_Alg, AStepIsFollowedByEachFollowerAtItsSpeed) {
    constexpr std::size_t kSettled = 200;
    AlgInstance instance(1, kRate);
    rendered(instance, constant({1.0F}, kSettled));
    const SDemoGain_Followers before = instance.state().mFollowers[0];
    rendered(instance, constant({1.0F}, 1));
    const SDemoGain_Followers after = instance.state().mFollowers[0];

    const float level = varno::reference::levelToDB(varno::reference::detectorLevel(1.0F));
    const float t = (level + 30.0F) / 45.0F;
    const float u = t * t;
    const float target = (((instance.field(eAlgFieldID_Curve3) * u + instance.field(eAlgFieldID_Curve2)) * u +
                           instance.field(eAlgFieldID_Curve1)) *
                              u +
                          instance.field(eAlgFieldID_Curve0)) *
                         t * -45.0F;
    EXPECT_LT(target, -3.0F);
    EXPECT_GT(before.mGrEnvAR, target);
    const float attack = instance.field(eAlgFieldID_AttackCoef);
    EXPECT_NEAR(after.mGrEnvAR, target + (before.mGrEnvAR - target) * attack, 1e-3F);
    const float slow = instance.field(eAlgFieldID_SlowCoef);
    EXPECT_NEAR(after.mGrEnvSlow, target + (before.mGrEnvSlow - target) * slow, 1e-3F);

    rendered(instance, silence(1, kSettled));
    const SDemoGain_Followers falling = instance.state().mFollowers[0];
    rendered(instance, silence(1, 1));
    const SDemoGain_Followers back = instance.state().mFollowers[0];
    EXPECT_NEAR(back.mGrEnvAR, falling.mGrEnvAR * instance.field(eAlgFieldID_ReleaseCoef), 1e-5F);
    EXPECT_NEAR(back.mGrEnvSlow, falling.mGrEnvSlow * slow, 1e-5F);
    EXPECT_LT(back.mGrEnvAR, 0.0F);
}

TEST(DemoGain_Alg, BypassPassesTheInputWhileEverythingRunsOn) {
    const Signal input = noise(2, 1000, 3, 6.0);
    AlgInstance running(2, kRate);
    AlgInstance bypassed(2, kRate);
    bypassed.bypass() = -1;
    EXPECT_NE(firstDifference(input, rendered(running, input)), "");
    EXPECT_EQ(firstDifference(input, rendered(bypassed, input)), "");
    EXPECT_EQ(firstDifference(running, bypassed), "") << "meters and state do not know of the bypass";
    bypassed.bypass() = 0;
    EXPECT_EQ(firstDifference(rendered(running, input), rendered(bypassed, input)), "");
}

TEST(DemoGain_Alg, TheDryPartIsTheInputOneSampleLate) {
    AlgInstance instance(2, kRate);
    instance.set(withMix(1.0F));
    const Signal output = rendered(instance, impulse(2, 40));
    for (std::size_t channel = 0; channel < 2; ++channel) {
        for (std::size_t n = 0; n < 40; ++n) {
            EXPECT_EQ(output[channel][n], n == 10 * (channel + 1) + 1 ? 1.0F : 0.0F);
        }
    }
}

TEST(DemoGain_Alg, TheWetPartIsOneSampleLateToo) {
    AlgInstance instance(1, kRate);
    const Signal output = rendered(instance, impulse(1, 40));
    EXPECT_EQ(peakOf({output[0].begin(), output[0].begin() + 11}, 0), 0.0F);
    EXPECT_GT(output[0][11], 0.01F);
}

TEST(DemoGain_Alg, HotDrivesFromAThousandthToTwentyAndTheLevelComesBack) {
    AlgInstance gentle(1, kRate);
    AlgInstance hot(1, kRate);
    gentle.field(eAlgFieldID_Hot) = 0.0F;
    hot.field(eAlgFieldID_Hot) = 1.0F;
    // At -86 dBFS nothing is reduced or clipped.
    const Signal quiet = sine(0.00005F, 9600);
    const std::size_t settled = 4800;
    EXPECT_NEAR(peakOf(rendered(gentle, quiet)[0], settled), 0.00005F, 0.000003F);
    EXPECT_NEAR(peakOf(rendered(hot, quiet)[0], settled), 0.00005F, 0.000003F);
    // Driven by 20, a loud signal reaches the clipper's ceiling and is then reduced by the same factor.
    EXPECT_LT(peakOf(rendered(hot, sine(1.0F, 9600))[0], settled), 0.1F);
    EXPECT_GT(peakOf(rendered(gentle, sine(1.0F, 9600))[0], settled), 0.2F);
}

TEST(DemoGain_Alg, MonoKeepsTheLastInputInBothSlots) {
    AlgInstance instance(1, kRate);
    const Signal input = noise(1, 77, 5, 0.0);
    rendered(instance, input);
    EXPECT_EQ(instance.state().mPrevIn[0], input[0].back());
    EXPECT_EQ(instance.state().mPrevIn[1], input[0].back());
}

TEST(DemoGain_Alg, StereoKeepsEachChannelsLastInputAndOutput) {
    AlgInstance instance(2, kRate);
    const Signal input = noise(2, 77, 5, 0.0);
    rendered(instance, input);
    for (std::size_t channel = 0; channel < 2; ++channel) {
        EXPECT_EQ(instance.state().mPrevIn[channel], input[channel].back());
        EXPECT_EQ(instance.state().mLastOut[channel], instance.state().mDc[channel].mDcY1);
        EXPECT_NE(instance.state().mLastOut[channel], 0.0F);
    }
}

TEST(DemoGain_Alg, UnlinkedStereoIsTwoMonos) {
    const Signal input = drums(2, 5000, kRate, 8);
    AlgInstance stereo(2, kRate);
    AlgInstance left(1, kRate);
    AlgInstance right(1, kRate);
    const Signal output = rendered(stereo, input);
    EXPECT_EQ(firstDifference(rendered(left, {input[0]})[0], output[0]), "");
    EXPECT_EQ(firstDifference(rendered(right, {input[1]})[0], output[1]), "");
    EXPECT_EQ(stereo.taps(), left.taps()) << "every tap shows the left channel";
}

TEST(DemoGain_Alg, LinkSharesTheMeanReduction) {
    const Signal rightOnly = constant({0.0F, 1.0F}, 2000);
    AlgInstance unlinked(2, kRate);
    AlgInstance linked(2, kRate);
    linked.field(eAlgFieldID_LinkSw) = 1.0F;
    rendered(unlinked, rightOnly);
    rendered(linked, rightOnly);
    EXPECT_LT(unlinked.taps()[eMeterTap_GainReductionLeft], 1e-6F);
    const SDemoGain_Followers& right = linked.state().mFollowers[1];
    const float half = (right.mGrEnvAR + right.mGrEnvSlow) * 0.5F * -0.03125F;
    EXPECT_GT(half, 0.05F);
    EXPECT_NEAR(linked.taps()[eMeterTap_GainReductionLeft], half, 0.01F);
}

TEST(DemoGain_Alg, SwitchesAreOnAboveAHalf) {
    const Signal input = drums(2, 3000, kRate, 8);
    for (const EAlgFieldID field :
         {eAlgFieldID_HP, eAlgFieldID_Band, eAlgFieldID_HarmSw, eAlgFieldID_LinkSw}) {
        AlgInstance off(2, kRate);
        AlgInstance half(2, kRate);
        AlgInstance above(2, kRate);
        AlgInstance on(2, kRate);
        half.field(field) = 0.5F;
        above.field(field) = std::nextafter(0.5F, 1.0F);
        on.field(field) = 1.0F;
        const Signal plain = rendered(off, input);
        const Signal switched = rendered(on, input);
        EXPECT_EQ(firstDifference(plain, rendered(half, input)), "") << field;
        EXPECT_EQ(firstDifference(switched, rendered(above, input)), "") << field;
        EXPECT_NE(firstDifference(plain, switched), "") << field;
    }
}

TEST(DemoGain_Alg, RightReductionTapShowsTheLeftChannel) {
    AlgInstance instance(2, kRate);
    rendered(instance, constant({0.0F, 1.0F}, 2000));
    EXPECT_LT(instance.taps()[eMeterTap_GainReductionRight], 1e-6F);
    EXPECT_EQ(instance.taps()[eMeterTap_GainReductionRight], instance.taps()[eMeterTap_GainReductionLeft]);
    EXPECT_LT(instance.state().mFollowers[1].mGrEnvAR, -1.0F);
}

TEST(DemoGain_Alg, LevelTapsAverageTheLeftChannelBeforeVolume) {
    AlgInstance quiet(2, kRate);
    AlgInstance loud(2, kRate);
    AlgParameters parameters = withMix(1.0F);
    parameters.volume = 0.0F;
    quiet.set(parameters);
    parameters.volume = 1.0F;
    loud.set(parameters);
    const Signal input = constant({0.5F, 1.0F}, 60000);
    rendered(quiet, input);
    rendered(loud, input);
    EXPECT_NEAR(quiet.taps()[eMeterTap_Input], 0.5F, 1e-3F);
    EXPECT_NEAR(quiet.taps()[eMeterTap_Output], 0.5F, 1e-3F);
    EXPECT_EQ(quiet.taps(), loud.taps());
}

TEST(DemoGain_Alg, TapsAreOnlyRaised) {
    AlgInstance instance(1, kRate);
    instance.taps() = {2.0F, 0.25F, 3.0F, 4.0F};
    rendered(instance, noise(1, 500, 1, 0.0));
    EXPECT_EQ(instance.taps()[eMeterTap_GainReductionLeft], 2.0F);
    EXPECT_EQ(instance.taps()[eMeterTap_GainReductionRight], 2.0F) << "the right tap is set to the left one";
    EXPECT_EQ(instance.taps()[eMeterTap_Input], 3.0F);
    EXPECT_EQ(instance.taps()[eMeterTap_Output], 4.0F);
}

TEST(DemoGain_Alg, ThirtyTwoDBOfReductionReadOne) {
    AlgInstance instance(1, kRate);
    rendered(instance, constant({3.0F}, 3000));
    const SDemoGain_Followers& followers = instance.state().mFollowers[0];
    EXPECT_NEAR(instance.taps()[eMeterTap_GainReductionLeft],
                (followers.mGrEnvAR + followers.mGrEnvSlow) / -32.0F, 1e-4F);
}

} // namespace
} // namespace varno::test::alg
