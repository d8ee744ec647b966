// Whatever input a host passes to the routine, it returns, and its output and state are finite.
#include "Alg/DemoGain_State.h"
#include "Tests/Support/AlgFixture.h"
#include "Tests/Support/Signal.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <limits>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace varno::test::algBadInput {

namespace {

constexpr double kRate = 48000.0;
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kLargest = std::numeric_limits<float>::max();
const float kQuietNaN = std::bit_cast<float>(0xFFC12345U);
const float kSignallingNaN = std::bit_cast<float>(0x7F812345U);
const float kJustAbove = std::nextafter(1e30F, kInfinity);

const std::vector<float> kBadSamples = {kInfinity, -kInfinity, kQuietNaN,   kSignallingNaN, kLargest,
                                        -kLargest, kJustAbove, -kJustAbove, 1e38F};

bool isAllFinite(const Signal& signal) {
    return std::all_of(signal.begin(), signal.end(), [](const std::vector<float>& samples) {
        return std::all_of(samples.begin(), samples.end(),
                           [](float sample) { return std::isfinite(sample); });
    });
}

bool isAllFinite(AlgInstance& instance) {
    return DemoGain_IsStateFinite(instance.state()) &&
           std::all_of(instance.taps().begin(), instance.taps().end(),
                       [](float tap) { return std::isfinite(tap); });
}

// A signal and the same one with every bad sample made silent.
struct Tainted {
    Signal bad;
    Signal silenced;
};

// Puts bad samples at random places of the channels whose bits are set in `mask`.
Tainted tainted(const Signal& clean, unsigned mask, std::uint32_t seed) {
    constexpr int kPlaces = 100;
    std::mt19937 engine(seed);
    Tainted result{clean, clean};
    for (std::size_t channel = 0; channel < clean.size(); ++channel) {
        for (int i = 0; i < kPlaces && (mask >> channel & 1U) != 0; ++i) {
            const std::size_t frame = static_cast<std::uint32_t>(engine()) % framesOf(clean);
            result.bad[channel][frame] =
                kBadSamples[static_cast<std::uint32_t>(engine()) % kBadSamples.size()];
            result.silenced[channel][frame] = 0.0F;
        }
    }
    return result;
}

// Noise whose samples are all 1e30 in magnitude or 0.
Signal largestNoise(std::size_t channels, std::size_t frames, std::uint32_t seed) {
    std::mt19937 engine(seed);
    Signal signal(channels, std::vector<float>(frames));
    for (std::vector<float>& samples : signal) {
        for (float& sample : samples) {
            sample = std::array{1e30F, -1e30F, 1e30F, 0.0F}[static_cast<std::uint32_t>(engine()) % 4];
        }
    }
    return signal;
}

class DemoGain_AlgBadInput : public testing::TestWithParam<AlgVariant> {};

TEST_P(DemoGain_AlgBadInput, BadSamplesAreProcessedAsSilence) {
    const Signal clean = noise(GetParam(), 3000, 4, 6.0);
    for (unsigned mask = 1; mask < 1U << GetParam(); ++mask) {
        for (unsigned combination = 0; combination < 16; ++combination) {
            const auto [bad, silenced] = tainted(clean, mask, combination);
            AlgParameters parameters = withSwitches({}, combination);
            parameters.mix = 0.4F;
            AlgInstance literal(GetParam(), kRate);
            AlgInstance product(GetParam(), kRate);
            literal.set(parameters);
            product.set(parameters);
            const Signal expected = renderChecked(literal.literalProcessor(), silenced).output;
            const RenderOutcome found = renderChecked(product.processor(), bad, {.blocks = {64, 7, 0, 300}});
            ASSERT_EQ(firstDifference(expected, found.output), "");
            ASSERT_EQ(firstDifference(literal, product), "");
            ASSERT_EQ(textOf(found.complaints), "");
        }
    }
}

TEST_P(DemoGain_AlgBadInput, ExactlyTheLargestInputIsProcessed) {
    for (const float sample : {1e30F, -1e30F}) {
        AlgInstance instance(GetParam(), kRate);
        AlgParameters parameters;
        parameters.mix = 1.0F;
        instance.set(parameters);
        const Signal output =
            renderChecked(instance.processor(), Signal(GetParam(), {sample, 0.0F, 0.0F})).output;
        EXPECT_EQ(output[0][1], sample);
    }
}

TEST_P(DemoGain_AlgBadInput, BypassPassesEverythingThroughToTheBit) {
    const Signal input = tainted(subnormals(GetParam(), 2000, 5), 3, 6).bad;
    for (const BufferLayout layout : {BufferLayout::kSeparate, BufferLayout::kInPlace}) {
        AlgInstance instance(GetParam(), kRate);
        instance.bypass() = 1;
        const RenderOutcome outcome =
            renderChecked(instance.processor(), input, {.layout = layout, .blocks = {50}});
        EXPECT_EQ(firstDifference(input, outcome.output), "");
        EXPECT_TRUE(isAllFinite(instance));
    }
}

TEST_P(DemoGain_AlgBadInput, TheLargestInputStaysFiniteAtEveryCorner) {
    const Signal input = largestNoise(GetParam(), 256, 7);
    unsigned combination = 0;
    for (const double rate : kSampleRates) {
        for (unsigned corner = 0; corner < 256; ++corner) {
            const auto bit = [&](unsigned index) { return (corner >> index & 1U) != 0 ? 1.0F : 0.0F; };
            AlgParameters p = withSwitches({}, combination++);
            p.gain = bit(0);
            p.volume = bit(1);
            p.attack = bit(2);
            p.release = bit(3);
            p.ratio = static_cast<float>(combination % 8) / 7.0F;
            p.hot = bit(4);
            p.mix = bit(5);
            p.band = bit(6);
            p.uk = bit(7);
            AlgInstance literal(GetParam(), rate);
            AlgInstance product(GetParam(), rate);
            literal.set(p);
            product.set(p);
            const RenderOutcome expected = renderChecked(literal.literalProcessor(), input);
            const RenderOutcome found = renderChecked(product.processor(), input);
            ASSERT_TRUE(isAllFinite(expected.output) && isAllFinite(literal))
                << "the definition itself is finite";
            ASSERT_EQ(firstDifference(expected.output, found.output), "") << textOf(p);
            ASSERT_EQ(firstDifference(literal, product), "") << textOf(p);
        }
    }
}

TEST_P(DemoGain_AlgBadInput, TheEffectRecoversFromTheLargestInput) {
    AlgInstance instance(GetParam(), kRate);
    renderChecked(instance.processor(), largestNoise(GetParam(), 1000, 9));
    const Signal quiet = noise(GetParam(), 192000, 3, -40.0);
    const RenderOutcome outcome = renderChecked(instance.processor(), quiet);
    EXPECT_EQ(textOf(outcome.complaints), "");
    float peak = 0.0F;
    for (std::size_t n = framesOf(quiet) - 1000; n < framesOf(quiet); ++n) {
        peak = std::max(peak, std::fabs(outcome.output[0][n]));
    }
    EXPECT_GT(peak, 0.001F);
    EXPECT_LT(peak, 0.1F);
}

TEST_P(DemoGain_AlgBadInput, BrokenPacketsLeaveNothingBroken) {
    const Signal input = noise(GetParam(), 200, 4, 0.0);
    for (AAX_CFieldIndex i = eAlgFieldID_GainDB; i < kAlgNumDataInPorts; ++i) {
        for (const float broken : {kInfinity, -kInfinity, kQuietNaN, kLargest, -kLargest, 2.0F}) {
            const auto field = static_cast<EAlgFieldID>(i);
            AlgInstance instance(GetParam(), kRate);
            const float whole = instance.field(field);
            instance.field(field) = broken;
            for (int buffer = 0; buffer < 20; ++buffer) {
                const RenderOutcome outcome = renderChecked(instance.processor(), input);
                ASSERT_EQ(textOf(outcome.complaints), "") << "field " << i << " at " << broken;
                ASSERT_TRUE(isAllFinite(instance)) << "field " << i << " at " << broken;
            }
            instance.field(field) = whole;
            ASSERT_EQ(textOf(renderChecked(instance.processor(), input).complaints), "") << "field " << i;
        }
    }
}

TEST_P(DemoGain_AlgBadInput, ABrokenStateStartsAnew) {
    constexpr std::size_t kWords = sizeof(SDemoGain_Alg_State) / sizeof(float);
    // Bad values in these words disappear within a buffer without a new start: the last outputs are only
    // written; a clip gain that is not a number is replaced by its target; mono writes the right channel's
    // delayed input; and after a buffer of this length the old states of the post sections have no influence.
    std::set<std::size_t> mending = {8, 9, 93, 94};
    if (GetParam() == 1) {
        mending.insert(92);
    }
    constexpr std::size_t kFirstPostWord = offsetof(SDemoGain_Alg_State, mPost) / sizeof(float);
    constexpr std::size_t kPostWords = sizeof(SDemoGain_PostStates) / sizeof(float);
    for (std::size_t i = 0; i < kPostWords * GetParam(); ++i) {
        mending.insert(kFirstPostWord + i);
    }
    const Signal input = noise(GetParam(), 100, 4, 0.0);
    for (std::size_t word = 4; word < kWords; ++word) {
        AlgInstance fresh(GetParam(), kRate);
        AlgInstance instance(GetParam(), kRate);
        auto words = std::bit_cast<std::array<float, kWords>>(instance.state());
        words[word] = kQuietNaN;
        instance.state() = std::bit_cast<SDemoGain_Alg_State>(words);
        const bool startsAnew = !DemoGain_IsStateFinite(instance.state()) && !mending.contains(word);

        EXPECT_EQ(textOf(renderChecked(instance.processor(), input).complaints), "") << "word " << word;
        EXPECT_TRUE(isAllFinite(instance)) << "word " << word;
        if (startsAnew) {
            const Signal expected = renderChecked(fresh.processor(), input).output;
            EXPECT_EQ(firstDifference(expected, renderChecked(instance.processor(), input).output), "")
                << "word " << word;
        }
    }
}

TEST_P(DemoGain_AlgBadInput, TapsThatTheHostLeftBrokenAreMended) {
    const Signal input = noise(GetParam(), 500, 4, 0.0);
    AlgInstance whole(GetParam(), kRate);
    whole.taps().fill(-1.0F);
    renderChecked(whole.processor(), input);
    for (const float broken : {kQuietNaN, kInfinity, -kInfinity}) {
        AlgInstance instance(GetParam(), kRate);
        instance.taps().fill(broken);
        renderChecked(instance.processor(), input);
        EXPECT_EQ(instance.taps(), whole.taps());
    }
}

TEST_P(DemoGain_AlgBadInput, TapsNeverGetAValueThatIsNotFinite) {
    const Signal input = noise(GetParam(), 500, 4, 0.0);
    for (const float broken : {kQuietNaN, kInfinity}) {
        AlgInstance instance(GetParam(), kRate);
        instance.taps().fill(0.5F);
        instance.field(eAlgFieldID_GainLin) = broken;
        instance.field(eAlgFieldID_Mix) = broken;
        instance.field(eAlgFieldID_ReleaseCoef) = broken;
        instance.field(eAlgFieldID_AttackCoef) = broken;
        renderChecked(instance.processor(), input);
        EXPECT_TRUE(isAllFinite(instance));
        EXPECT_EQ(instance.taps()[eMeterTap_GainReductionLeft], 0.5F);
        instance.taps().fill(kQuietNaN);
        renderChecked(instance.processor(), input);
        EXPECT_TRUE(isAllFinite(instance));
        EXPECT_EQ(instance.taps()[eMeterTap_GainReductionLeft], 0.0F);
    }
}

TEST_P(DemoGain_AlgBadInput, RatesAtWhichTheAllPassIsUnstableStayFinite) {
    for (const double rate : {8000.0, 11025.0, 13000.0}) {
        AlgInstance instance(GetParam(), rate);
        const RenderOutcome outcome =
            renderChecked(instance.processor(), noise(GetParam(), 20000, 3, 0.0), {.blocks = {512}});
        EXPECT_EQ(textOf(outcome.complaints), "") << rate;
        EXPECT_TRUE(isAllFinite(instance)) << rate;
    }
}

INSTANTIATE_TEST_SUITE_P(Variants, DemoGain_AlgBadInput, testing::ValuesIn(algVariants()),
                         testing::PrintToStringParamName());

} // namespace
} // namespace varno::test::algBadInput
