// The lengths and places of the host's buffers, and other instances, change no bit of the output.
#include "Tests/Support/AlgFixture.h"
#include "Tests/Support/Signal.h"

#include <gtest/gtest.h>

#include <bit>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace varno::test::algBuffers {

namespace {

constexpr double kRate = 48000.0;

AlgParameters busyParameters() {
    AlgParameters parameters = withSwitches({}, 11);
    parameters.ratio = 0.8F;
    parameters.mix = 0.3F;
    return parameters;
}

// One rendering by a fresh instance.
struct Rendering {
    std::unique_ptr<AlgInstance> instance;
    RenderOutcome outcome;
};

Rendering render(const AlgVariant& variant, const Signal& input, const RenderPlan& plan,
                 const AlgParameters& parameters) {
    Rendering rendering{std::make_unique<AlgInstance>(variant, kRate), {}};
    rendering.instance->set(parameters);
    rendering.outcome = renderChecked(rendering.instance->processor(), input, plan);
    return rendering;
}

std::string difference(const Rendering& expected, const Rendering& found) {
    return firstDifference(expected.outcome.output, found.outcome.output) +
           firstDifference(*expected.instance, *found.instance) + textOf(found.outcome.complaints);
}

std::vector<std::int32_t> randomBlocks() {
    std::mt19937 engine(8);
    std::vector<std::int32_t> blocks;
    for (int i = 0; i < 100; ++i) {
        blocks.push_back(static_cast<std::int32_t>(static_cast<std::uint32_t>(engine()) % 700));
    }
    return blocks;
}

class DemoGain_AlgBuffers : public testing::TestWithParam<AlgVariant> {};

TEST_P(DemoGain_AlgBuffers, BlockSizesDoNotMatter) {
    const Signal input = drums(GetParam(), 20000, kRate, 3);
    const Rendering whole = render(GetParam(), input, {}, busyParameters());
    EXPECT_EQ(textOf(whole.outcome.complaints), "");
    const std::vector<std::vector<std::int32_t>> plans = {
        {1}, {7}, {17}, {63}, {64}, {65}, {127}, {512}, {4096}, {0, 64, 0, -5}, {1, 0, 999}, randomBlocks()};
    for (const std::vector<std::int32_t>& blocks : plans) {
        EXPECT_EQ(difference(whole, render(GetParam(), input, {.blocks = blocks}, busyParameters())), "")
            << "blocks from " << blocks.front();
    }
}

TEST_P(DemoGain_AlgBuffers, LayoutsDoNotMatter) {
    const Signal input = noise(GetParam(), 5000, 4, 6.0);
    for (const bool bypass : {false, true}) {
        AlgParameters parameters = busyParameters();
        parameters.bypass = bypass;
        const Rendering plain = render(GetParam(), input, {}, parameters);
        for (const BufferLayout layout :
             {BufferLayout::kSeparate, BufferLayout::kInPlace, BufferLayout::kCrossed}) {
            for (const std::size_t offset : {0U, 1U, 2U, 3U}) {
                const RenderPlan plan{.layout = layout, .blocks = {100, 1, 0, 31}, .offset = offset};
                EXPECT_EQ(difference(plain, render(GetParam(), input, plan, parameters)), "")
                    << "layout " << static_cast<int>(layout) << ", offset " << offset;
            }
        }
    }
}

TEST_P(DemoGain_AlgBuffers, OneBufferForBothInputs) {
    Signal input = noise(GetParam(), 3000, 4, 6.0);
    input.back() = input.front();
    const Rendering plain = render(GetParam(), input, {}, busyParameters());
    EXPECT_EQ(difference(plain,
                         render(GetParam(), input, {.layout = BufferLayout::kSharedInput}, busyParameters())),
              "");
}

TEST_P(DemoGain_AlgBuffers, NoFramesChangeNothing) {
    AlgInstance instance(GetParam(), kRate);
    renderChecked(instance.processor(), noise(GetParam(), 100, 1, 0.0));
    instance.taps() = {std::bit_cast<float>(0x7FC01234U), -1.0F, 0.5F, 0.0F};
    const auto state = std::bit_cast<std::array<std::uint32_t, 98>>(instance.state());
    const auto taps = std::bit_cast<std::array<std::uint32_t, 4>>(instance.taps());
    for (const std::int32_t frames : {0, -1, INT32_MIN}) {
        instance.process(nullptr, nullptr, frames);
        EXPECT_EQ((std::bit_cast<std::array<std::uint32_t, 98>>(instance.state())), state);
        EXPECT_EQ((std::bit_cast<std::array<std::uint32_t, 4>>(instance.taps())), taps);
    }
}

TEST_P(DemoGain_AlgBuffers, NoInstancesAreNoWork) {
    SDemoGain_Alg_Context* const instances[] = {nullptr};
    DemoGain_ProcessInstances(*GetParam().routine, GetParam(), instances, instances);
}

TEST_P(DemoGain_AlgBuffers, InstancesOfOneCallDoNotMeet) {
    constexpr std::size_t kInstances = 9;
    constexpr std::size_t kFrames = 700;
    std::mt19937 engine(99);
    std::vector<std::unique_ptr<AlgInstance>> alone;
    std::vector<std::unique_ptr<AlgInstance>> together;
    std::vector<Signal> expected;
    std::vector<Signal> found;
    for (std::uint32_t i = 0; i < kInstances; ++i) {
        const double rate = kSampleRates[i % std::size(kSampleRates)];
        const AlgParameters parameters = randomParameters(engine);
        alone.push_back(std::make_unique<AlgInstance>(GetParam(), rate));
        together.push_back(std::make_unique<AlgInstance>(GetParam(), rate));
        alone.back()->set(parameters);
        together.back()->set(parameters);
        found.push_back(noise(GetParam(), kFrames - 50 * i, i, 6.0));
        expected.push_back(renderChecked(alone.back()->processor(), found.back()).output);
    }

    std::vector<SDemoGain_Alg_Context*> contexts;
    std::vector<std::vector<float*>> buffers(kInstances);
    for (std::size_t i = 0; i < kInstances; ++i) {
        for (std::vector<float>& samples : found[i]) {
            buffers[i].push_back(samples.data());
        }
        together[i]->attach(buffers[i].data(), buffers[i].data(),
                            static_cast<std::int32_t>(framesOf(found[i])));
        contexts.push_back(&together[i]->context());
    }
    DemoGain_ProcessInstances(*GetParam().routine, GetParam(), contexts.data(),
                              contexts.data() + contexts.size());
    for (std::size_t i = 0; i < kInstances; ++i) {
        EXPECT_EQ(firstDifference(expected[i], found[i]) + firstDifference(*alone[i], *together[i]), "");
    }
}

INSTANTIATE_TEST_SUITE_P(Variants, DemoGain_AlgBuffers, testing::ValuesIn(algVariants()),
                         testing::PrintToStringParamName());

} // namespace
} // namespace varno::test::algBuffers
