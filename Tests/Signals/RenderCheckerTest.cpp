// The checker accepts a correct processor and names each kind of fault.
#include "Signals/RenderChecker.h"

#include "Signals/Signal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <limits>
#include <stdexcept>

using namespace varno::signals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr std::size_t kFrames = 100;

void halve(const float* const* inputs, float* const* outputs, std::int32_t frames) {
    for (std::int32_t n = 0; n < frames; ++n) {
        const float left = inputs[0][n];
        const float right = inputs[1][n];
        outputs[0][n] = 0.5F * left;
        outputs[1][n] = 0.5F * right;
    }
}

Signal halved(Signal signal) {
    for (std::vector<float>& samples : signal) {
        for (float& sample : samples) {
            sample *= 0.5F;
        }
    }
    return signal;
}

} // namespace

TEST(RenderChecker, ARightProcessorPassesInEveryLayout) {
    const Signal input = noise(2, kFrames, 1, 0.0);
    for (const BufferLayout layout :
         {BufferLayout::kSeparate, BufferLayout::kInPlace, BufferLayout::kCrossed}) {
        const RenderOutcome outcome =
            renderChecked(halve, input, {.layout = layout, .blocks = {7, 0, -3, 30}, .offset = 1});
        EXPECT_THAT(outcome.complaints, IsEmpty());
        EXPECT_EQ(firstDifference(halved(input), outcome.output), "");
    }
}

TEST(RenderChecker, SharedInputHandsTheFirstChannelToAll) {
    const Signal input = noise(2, kFrames, 1, 0.0);
    const RenderOutcome outcome = renderChecked(halve, input, {.layout = BufferLayout::kSharedInput});
    EXPECT_THAT(outcome.complaints, IsEmpty());
    EXPECT_EQ(firstDifference(halved({input[0], input[0]}), outcome.output), "");
}

TEST(RenderChecker, HasAsManyOutputsAsPlanned) {
    const auto sum = [](const float* const* inputs, float* const* outputs, std::int32_t frames) {
        for (std::int32_t n = 0; n < frames; ++n) {
            outputs[0][n] = inputs[0][n] + inputs[1][n];
        }
    };
    const RenderOutcome outcome = renderChecked(sum, {{1.0F, 2.0F}, {3.0F, 5.0F}}, {.outputs = 1});
    EXPECT_THAT(outcome.complaints, IsEmpty());
    EXPECT_EQ(firstDifference({{4.0F, 7.0F}}, outcome.output), "");
    EXPECT_THROW(renderChecked(sum, {{1.0F}, {3.0F}}, {.layout = BufferLayout::kInPlace, .outputs = 1}),
                 std::invalid_argument);
}

TEST(RenderChecker, HandsOverThePlannedBlocks) {
    std::vector<std::int32_t> seen;
    const auto record = [&](const float* const* inputs, float* const* outputs, std::int32_t frames) {
        seen.push_back(frames);
        halve(inputs, outputs, frames);
    };
    renderChecked(record, noise(2, 10, 1, 0.0), {.blocks = {4, 0, -1}});
    EXPECT_THAT(seen, ElementsAre(4, 0, -1, 4, 0, -1, 2));
    EXPECT_THROW(renderChecked(record, noise(2, 10, 1, 0.0), {.blocks = {0, -1}}), std::invalid_argument);
}

TEST(RenderChecker, NoticesWritingOutsideTheBuffers) {
    const auto beyond = [](const float* const* inputs, float* const* outputs, std::int32_t frames) {
        halve(inputs, outputs, frames);
        outputs[1][frames] = 0.0F;
    };
    const auto before = [](const float* const* inputs, float* const* outputs, std::int32_t frames) {
        halve(inputs, outputs, frames);
        outputs[0][-1] = 0.0F;
    };
    const Signal input = noise(2, kFrames, 1, 0.0);
    EXPECT_THAT(renderChecked(beyond, input).complaints, ElementsAre("wrote outside the buffers"));
    EXPECT_THAT(renderChecked(before, input, {.layout = BufferLayout::kInPlace}).complaints,
                ElementsAre("wrote outside the buffers"));
}

TEST(RenderChecker, NoticesAChangedInput) {
    const auto change = [](const float* const* inputs, float* const* outputs, std::int32_t frames) {
        halve(inputs, outputs, frames);
        const_cast<float*>(inputs[0])[3] = 2.0F;
    };
    EXPECT_THAT(renderChecked(change, noise(2, kFrames, 1, 0.0)).complaints, ElementsAre("changed an input"));
}

TEST(RenderChecker, NoticesAnUnwrittenSample) {
    const auto lastMissing = [](const float* const* inputs, float* const* outputs, std::int32_t frames) {
        halve(inputs, outputs, frames - 1);
    };
    EXPECT_THAT(renderChecked(lastMissing, noise(2, kFrames, 1, 0.0)).complaints,
                ElementsAre("left a sample unwritten"));
}

TEST(RenderChecker, NoticesASampleThatIsNotFinite) {
    for (const float bad :
         {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
        const auto broken = [bad](const float* const* inputs, float* const* outputs, std::int32_t frames) {
            halve(inputs, outputs, frames);
            outputs[1][50] = bad;
        };
        const RenderOutcome outcome = renderChecked(broken, noise(2, kFrames, 1, 0.0));
        EXPECT_THAT(outcome.complaints, ElementsAre("wrote a sample that is not finite"));
        EXPECT_EQ(textOf(outcome.complaints), "wrote a sample that is not finite\n");
    }
}

TEST(Signal, DifferencesAreFoundToTheBit) {
    const Signal signal = {{1.0F, 0.0F}, {2.0F, 3.0F}};
    EXPECT_EQ(firstDifference(signal, signal), "");
    EXPECT_EQ(firstDifference(signal, {{1.0F, -0.0F}, {2.0F, 3.0F}}),
              "channel 0, index 1: expected 0 (0x00000000), found -0 (0x80000000)");
    EXPECT_EQ(firstDifference(signal, {{1.0F, 0.0F}, {2.0F}}), "channel 1, lengths 2 and 1");
    EXPECT_EQ(firstDifference(signal, {{1.0F, 0.0F}}), "channels 2 and 1");
    const float nan = std::bit_cast<float>(0x7FC00001U);
    EXPECT_EQ(firstDifference(Signal{{nan}}, Signal{{nan}}), "");
}
