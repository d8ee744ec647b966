// The routine's output, meter taps and state are bit for bit those of the literal evaluation, with every
// instruction set.
#include "Tests/Support/AlgFixture.h"
#include "Tests/Support/Signal.h"
#include "Tests/Support/TestRun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <map>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace varno::test::algReference {

namespace {

// Renders `input` both ways with fresh instances and compares everything that comes out.
std::string difference(const AlgVariant& variant, const AlgParameters& parameters, double sampleRate,
                       const Signal& input) {
    AlgInstance literal(variant, sampleRate);
    AlgInstance product(variant, sampleRate);
    literal.set(parameters);
    product.set(parameters);
    const RenderOutcome expected = renderChecked(literal.literalProcessor(), input);
    const RenderOutcome found = renderChecked(product.processor(), input);
    std::string text = firstDifference(expected.output, found.output) + firstDifference(literal, product) +
                       textOf(expected.complaints) + textOf(found.complaints);
    if (!text.empty()) {
        text += "\n(" + textOf(parameters) + ", " + std::to_string(sampleRate) + " Hz)";
    }
    return text;
}

// Every kind of signal, by name.
std::vector<std::pair<std::string, Signal>> signals(std::size_t channels, double sampleRate) {
    // Sanitizers judge paths and levels, which the shorter signals have all of; the bits are compared over
    // the whole length without them. In the emulated vectors each lane is checked, which takes minutes.
    constexpr std::size_t kFrames = kIsSanitized ? 1500 : 6000;
    return {{"noise", noise(channels, kFrames, 11, 0.0)},
            {"loud noise", noise(channels, kFrames, 12, 24.0)},
            {"swell", swell(channels, kFrames, 13, 40.0)},
            {"sweep", sweep(channels, kFrames, sampleRate)},
            {"drums", drums(channels, 4 * kFrames, sampleRate, 14)},
            {"silence", silence(channels, kFrames)},
            {"impulse", impulse(channels, kFrames)},
            {"full-scale step", step(channels, kFrames, 0.0)},
            {"+12 dBFS step", step(channels, kFrames, 12.0)},
            {"largest input", step(channels, kFrames, 600.0)},
            {"subnormals", subnormals(channels, kFrames, 15)}};
}

// The comparisons below hold nothing about a field that has the same value in every case.
TEST(AlgFixture, RandomParametersMoveEveryFieldThatDependsOnThem) {
    constexpr int kCases = 100;
    constexpr EAlgFieldID kThatStay[] = {eAlgFieldID_Auto, eAlgFieldID_Threshold};
    AlgInstance instance(2, 48000.0);
    std::mt19937 random(20260106);
    std::set<std::int32_t> bypasses;
    std::map<EAlgFieldID, std::set<float>> values;
    for (int i = 0; i < kCases; ++i) {
        instance.set(randomParameters(random));
        bypasses.insert(instance.bypass());
        for (std::int32_t index = eAlgFieldID_Bypass + 1; index < kAlgNumDataInPorts; ++index) {
            const auto field = static_cast<EAlgFieldID>(index);
            values[field].insert(instance.field(field));
        }
    }
    EXPECT_EQ(bypasses.size(), 2U);
    for (const auto& [field, found] : values) {
        const bool stays =
            std::find(std::begin(kThatStay), std::end(kThatStay), field) != std::end(kThatStay);
        EXPECT_EQ(found.size() == 1, stays)
            << "field " << field << ": see randomParameters and AlgInstance::set";
    }
}

class DemoGain_AlgReference : public testing::TestWithParam<AlgVariant> {};

TEST_P(DemoGain_AlgReference, EverySignalInEverySwitchCombination) {
    constexpr double kRate = 48000.0;
    for (const auto& [name, input] : signals(GetParam(), kRate)) {
        for (unsigned combination = 0; combination < 64; ++combination) {
            AlgParameters parameters;
            parameters.mix = 0.25F;
            parameters.uk = (combination & 16U) != 0 ? 1.0F : 0.0F;
            parameters.bypass = (combination & 32U) != 0;
            ASSERT_EQ(difference(GetParam(), withSwitches(parameters, combination), kRate, input), "")
                << name;
        }
    }
}

TEST_P(DemoGain_AlgReference, EverySignalAtEverySampleRate) {
    for (const double rate : kSampleRates) {
        for (const auto& [name, input] : signals(GetParam(), rate)) {
            ASSERT_EQ(difference(GetParam(), withSwitches({}, 2), rate, input), "") << name;
            ASSERT_EQ(difference(GetParam(), withSwitches({}, 5), rate, input), "") << name;
        }
    }
}

TEST_P(DemoGain_AlgReference, RandomParameters) {
    constexpr std::uint32_t kSeed = 20230;
    constexpr std::size_t kFrames = 2000;
    std::mt19937 engine(kSeed);
    for (int i = 0; i < 1000 * testScale(); ++i) {
        const AlgParameters parameters = randomParameters(engine);
        const double rate = kSampleRates[static_cast<std::uint32_t>(engine()) % std::size(kSampleRates)];
        const auto signalSeed = static_cast<std::uint32_t>(engine());
        ASSERT_EQ(difference(GetParam(), parameters, rate, swell(GetParam(), kFrames, signalSeed, 36.0)), "")
            << "vector " << i << " of the engine seeded with " << kSeed;
    }
}

// Chunks of either length, and a part of one at the end.
TEST_P(DemoGain_AlgReference, EveryLengthOfBuffer) {
    constexpr std::size_t kLongest = 240;
    AlgParameters parameters = withSwitches({}, 3);
    parameters.mix = 0.25F;
    for (std::size_t frames = 1; frames <= kLongest; ++frames) {
        AlgInstance literal(GetParam(), 48000.0);
        AlgInstance product(GetParam(), 48000.0);
        literal.set(parameters);
        product.set(parameters);
        const RenderPlan plan{.blocks = {static_cast<std::int32_t>(frames)}};
        const Signal input = swell(GetParam(), 3 * frames, 21, 24.0);
        const RenderOutcome expected = renderChecked(literal.literalProcessor(), input, plan);
        const RenderOutcome found = renderChecked(product.processor(), input, plan);
        ASSERT_EQ(firstDifference(expected.output, found.output) + firstDifference(literal, product) +
                      textOf(found.complaints),
                  "")
            << frames << " frames";
    }
}

TEST_P(DemoGain_AlgReference, EveryCornerOfTheParameters) {
    const Signal input = swell(GetParam(), 300, 77, 24.0);
    for (unsigned corner = 0; corner < 128; ++corner) {
        const auto bit = [&](unsigned index) { return (corner >> index & 1U) != 0 ? 1.0F : 0.0F; };
        AlgParameters p = withSwitches({}, corner % 16);
        p.gain = bit(0);
        p.volume = bit(1);
        p.attack = bit(2);
        p.release = bit(3);
        p.ratio = bit(4);
        p.hot = bit(5);
        p.mix = bit(6);
        ASSERT_EQ(difference(GetParam(), p, 44100.0, input), "");
    }
}

TEST_P(DemoGain_AlgReference, ParametersChangingFromBufferToBuffer) {
    constexpr std::int32_t kBlock = 100;
    std::mt19937 engine(31);
    AlgInstance literal(GetParam(), 96000.0);
    AlgInstance product(GetParam(), 96000.0);
    for (std::uint32_t buffer = 0; buffer < 300; ++buffer) {
        const AlgParameters parameters = randomParameters(engine);
        literal.set(parameters);
        product.set(parameters);
        const Signal input = noise(GetParam(), kBlock, buffer, buffer % 3 == 0 ? -20.0 : 6.0);
        const RenderOutcome expected = renderChecked(literal.literalProcessor(), input);
        const RenderOutcome found = renderChecked(product.processor(), input);
        ASSERT_EQ(firstDifference(expected.output, found.output), "") << "buffer " << buffer;
        ASSERT_EQ(firstDifference(literal, product), "") << "buffer " << buffer;
    }
}

TEST_P(DemoGain_AlgReference, TapsThatTheHostHasLeftHighOrLow) {
    const Signal input = noise(GetParam(), 500, 5, 6.0);
    for (const float tap : {-1.0F, 0.0F, 0.05F, 0.3F, 100.0F}) {
        AlgInstance literal(GetParam(), 48000.0);
        AlgInstance product(GetParam(), 48000.0);
        literal.taps().fill(tap);
        product.taps().fill(tap);
        renderChecked(literal.literalProcessor(), input);
        renderChecked(product.processor(), input);
        EXPECT_EQ(firstDifference(literal, product), "") << "taps at " << tap;
    }
}

INSTANTIATE_TEST_SUITE_P(Variants, DemoGain_AlgReference, testing::ValuesIn(algVariants()),
                         testing::PrintToStringParamName());

} // namespace
} // namespace varno::test::algReference
