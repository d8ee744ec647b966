#include "DemoGain_Oversampling.h"
#include "Session/LoopPlayer.h"
#include "Tests/Host/FixtureTest.h"
#include "Tests/Support/RealTimeGuard.h"

namespace varno {
namespace {

class EffectLoopRealTime : public FixtureTest {};

TEST_F(EffectLoopRealTime, PullingNeitherLocksNorAllocates) {
    const auto instance = makeInstance({.maximumFrames = 64});
    Oversampling effect(*instance, {.routineLatencyFrames = kDemoGain_LatencyFrames});
    EffectLoop loop(effect, AudioLoop({{0.5F, 0.25F, 1.0F}, {-0.5F, -0.25F, -1.0F}}));
    std::vector<float> left(500);
    std::vector<float> right(500);
    float* channels[] = {left.data(), right.data()};
    for (const int frames : {64, 1, 0, 500}) {
        instance->setNormalized("Gain", frames / 500.0);
        test::RealTimeScope scope;
        loop.pull(channels, frames);
        EXPECT_EQ("", test::textOf(scope.finish()));
    }
}

TEST_F(EffectLoopRealTime, IsTheLoopThroughTheEffect) {
    const auto instance = makeInstance({.maximumFrames = 64});
    const auto other = makeInstance({.maximumFrames = 64});
    instance->setNormalized("Gain", 0.25);
    other->setNormalized("Gain", 0.25);
    Oversampling effect(*instance, {.routineLatencyFrames = kDemoGain_LatencyFrames});
    EffectLoop loop(effect, AudioLoop({{0.5F, 0.25F, 1.0F}, {-0.5F, -0.25F, -1.0F}}));
    std::vector<float> left(4);
    std::vector<float> right(4);
    float* channels[] = {left.data(), right.data()};
    loop.pull(channels, 4);
    std::vector<float> expectedLeft = {0.5F, 0.25F, 1.0F, 0.5F};
    std::vector<float> expectedRight = {-0.5F, -0.25F, -1.0F, -0.5F};
    float* expected[] = {expectedLeft.data(), expectedRight.data()};
    other->process(expected, expected, 4);
    EXPECT_EQ(left, expectedLeft);
    EXPECT_EQ(right, expectedRight);
    EXPECT_NE(left.front(), 0.5F);
}

} // namespace
} // namespace varno
