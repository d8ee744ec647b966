#include "Alg/DemoGain_PostSections-inl.h"

#include "Alg/DemoGain_State.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cstdint>
#include <random>

namespace varno::test::postSections {

using namespace DemoGain;
using namespace DemoGain::HWY_NAMESPACE;

namespace {

// Runs both sections sample by sample.
void advanceLiterally(const SDemoGain_Alg_State& state, float y, SDemoGain_PostStates& ioStates) {
    const auto run = [](const SDemoGain_PostSection& c, SDemoGain_SectionState& s, float in) {
        const float out = (c.b0 * in + c.b1 * s.x1 + c.b2 * s.x2 - c.a1 * s.y1 - c.a2 * s.y2) * c.g;
        s = {in, s.x1, out, s.y1};
        return out;
    };
    run(state.mPostB, ioStates.mB, run(state.mPostA, ioStates.mA, y));
}

// What is documented: the weights and the sections round differently.
constexpr float kTolerance = 2e-6F;

void expectNear(const SDemoGain_SectionState& found, const SDemoGain_SectionState& expected) {
    EXPECT_EQ(found.x1, expected.x1);
    EXPECT_NEAR(found.x2, expected.x2, kTolerance);
    EXPECT_NEAR(found.y1, expected.y1, kTolerance);
    EXPECT_NEAR(found.y2, expected.y2, kTolerance);
}

TEST(DemoGain_PostSections, TheSectionsOfTheStateAreThoseOfTheWeights) {
    SDemoGain_Alg_State state{};
    DemoGain_ResetState(state, 96000.0);
    EXPECT_EQ(state.mPostA.g, kDemoGain_PostA.g);
    EXPECT_EQ(state.mPostB.g, kDemoGain_PostB.g);
    EXPECT_EQ(state.mPostB.a1, kDemoGain_PostA.a1);
}

TEST(DemoGain_PostSections, EveryLengthOfBufferEndsWhereTheSectionsDo) {
    SDemoGain_Alg_State state{};
    DemoGain_ResetState(state, 48000.0);
    const SDemoGain_PostStates(&found)[2] = state.mPost;
    SDemoGain_PostStates expected[2] = {};
    std::mt19937 engine(3);
    std::uniform_real_distribution<float> sample(-1.25F, 1.25F);
    for (std::size_t frames = 1; frames < 150; ++frames) {
        RowRing<2> clipped{};
        for (std::size_t frame = 0; frame < frames; ++frame) {
            for (std::size_t channel = 0; channel < 2; ++channel) {
                const float y = sample(engine);
                clipped[frame / kChunkFrames][frame % kChunkFrames * 2 + channel] = y;
                advanceLiterally(state, y, expected[channel]);
            }
        }
        // What a chunk holds behind its last frame has no influence.
        for (std::size_t frame = frames; frame % kChunkFrames != 0; ++frame) {
            clipped[frame / kChunkFrames][frame % kChunkFrames * 2] = 1.0F;
            clipped[frame / kChunkFrames][frame % kChunkFrames * 2 + 1] = -1.0F;
        }
        advancePostSections(clipped, frames, Group<1, 2>{{&state}, {}});
        for (std::size_t channel = 0; channel < 2; ++channel) {
            SCOPED_TRACE(testing::Message() << frames << " frames, channel " << channel);
            expectNear(found[channel].mA, expected[channel].mA);
            EXPECT_NEAR(found[channel].mB.x1, expected[channel].mB.x1, kTolerance);
            EXPECT_NEAR(found[channel].mB.y1, expected[channel].mB.y1, kTolerance);
            EXPECT_NEAR(found[channel].mB.y2, expected[channel].mB.y2, kTolerance);
        }
    }
}

TEST(DemoGain_PostSections, LongChunksChangeNoBit) {
    std::mt19937 engine(4);
    std::uniform_real_distribution<float> sample(-1.25F, 1.25F);
    for (std::size_t frames = 1; frames < 300; ++frames) {
        SDemoGain_Alg_State states[2] = {};
        RowRing<1> rows{};
        RowRing<1, kLongChunkFrames> longRows{};
        for (std::size_t frame = 0; frame < frames; ++frame) {
            const float y = sample(engine);
            rows[frame / kChunkFrames][frame % kChunkFrames] = y;
            longRows[frame / kLongChunkFrames][frame % kLongChunkFrames] = y;
        }
        for (SDemoGain_Alg_State& state : states) {
            state.mPost[0].mB.y1 = 0.5F;
        }
        advancePostSections(rows, frames, Group<1, 1>{{&states[0]}, {}});
        advancePostSections(longRows, frames, Group<1, 1>{{&states[1]}, {}});
        using Words = std::array<std::uint32_t, sizeof(SDemoGain_Alg_State) / sizeof(std::uint32_t)>;
        ASSERT_EQ(std::bit_cast<Words>(states[0]), std::bit_cast<Words>(states[1])) << frames << " frames";
    }
}

} // namespace
} // namespace varno::test::postSections
