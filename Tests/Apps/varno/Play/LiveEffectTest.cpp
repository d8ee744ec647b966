#include "Play/LiveEffect.h"
#include "Play/MeterLine.h"
#include "Settings/Quality.h"
#include "Tests/Apps/varno/Session/FakeBackend.h"
#include "Tests/Host/FixtureTest.h"

#include <gmock/gmock.h>

namespace varno {
namespace {

using testing::Each;

class LiveEffectTest : public FixtureTest {
protected:
    // The first channel of the effect's output for an input of ones.
    static std::vector<float> play(const LiveProcess& process, int frames) {
        const std::vector<float> ones(static_cast<std::size_t>(frames), 1.0F);
        std::vector<float> left(ones.size(), -1.0F);
        std::vector<float> right(ones.size(), -1.0F);
        const float* inputs[] = {ones.data(), ones.data()};
        float* outputs[] = {left.data(), right.data()};
        process(inputs, outputs, frames);
        return left;
    }
};

TEST_F(LiveEffectTest, IsTheInstanceInBlocksOfAnyLength) {
    LiveEffect effect(module(), 2, 48'000.0);
    test::FakeBackend backend({});
    backend.start(effect.process());
    effect.instance().setNormalized("Gain", 0.25);
    for (const int frames : {1, 64, 512, 513, 8192}) {
        EXPECT_THAT(play(effect.process(), frames), Each(0.25F)) << frames;
    }
}

TEST_F(LiveEffectTest, KeepsItsValuesOverAChangeOfTheRate) {
    LiveEffect effect(module(), 2, 48'000.0);
    const auto process = effect.process();
    effect.instance().setNormalized("Gain", 0.75);
    effect.setRate(96'000.0);
    EXPECT_EQ(effect.instance().setup().sampleRateHz, 96'000.0);
    EXPECT_EQ(effect.instance().setup().channels, 2);
    EXPECT_EQ(effect.instance().normalized("Gain"), 0.75);
    EXPECT_THAT(play(process, 64), Each(0.75F));
}

TEST_F(LiveEffectTest, ARateThatIsRefusedLeavesItAsItWas) {
    options.sampleRates = {16'000.0, 384'000.0};
    LiveEffect effect(module(), 1, 48'000.0);
    const auto process = effect.process();
    EXPECT_THROW(effect.setRate(8'000.0), HostError);
    EXPECT_EQ(effect.instance().setup().sampleRateHz, 48'000.0);
    EXPECT_THAT(play(process, 64), Each(0.5F));
}

// The fixture halves; bypassed, its output is the input one frame later.
TEST_F(LiveEffectTest, KeepsItsBypassOverAChangeOfTheRate) {
    LiveEffect effect(module(), 2, 48'000.0);
    const auto process = effect.process();
    EXPECT_FALSE(effect.isBypassed());
    EXPECT_THAT(play(process, 64), Each(0.5F));
    effect.setBypassed(true);
    EXPECT_TRUE(effect.isBypassed());
    const auto fading = play(process, 600);
    EXPECT_LT(fading.front(), 0.51F) << "a click";
    EXPECT_EQ(fading.back(), 1.0F);
    effect.setRate(96'000.0);
    EXPECT_TRUE(effect.isBypassed());
    const auto bypassed = play(process, 64);
    EXPECT_EQ(bypassed.front(), 0.0F) << "the new instance has no frame before";
    EXPECT_THAT(std::vector<float>(bypassed.begin() + 1, bypassed.end()), Each(1.0F));
    effect.setBypassed(false);
    EXPECT_EQ(play(process, 1200).back(), 0.5F);
}

TEST_F(LiveEffectTest, KeepsTheWishForAQualityWhereTheRateChanges) {
    options.sampleRates = {1.0, 384'000.0};
    LiveEffect effect(module(), 1, 48'000.0, 8);
    EXPECT_EQ(effect.oversampling().factor(), 8);
    effect.setRate(96'000.0);
    EXPECT_EQ(effect.oversampling().wish(), 8);
    EXPECT_EQ(effect.oversampling().factor(), 4);
    EXPECT_EQ(qualityText(effect.oversampling()), "quality 4x, since 8x needs 768000 Hz");
    effect.setRate(44'100.0);
    EXPECT_EQ(effect.oversampling().factor(), 8);
    EXPECT_EQ(qualityText(effect.oversampling()), "quality 8x");
}

TEST_F(LiveEffectTest, AnEmptySlotIsSilent) {
    EffectSlot slot;
    const auto process = [&](const float* const* inputs, float* const* outputs, int frames) {
        slot.process(inputs, outputs, 2, frames);
    };
    EXPECT_THAT(play(process, 64), Each(0.0F));
    const auto instance = makeInstance();
    Oversampling oversampling(*instance, {});
    Bypass effect(oversampling);
    slot.give(effect);
    EXPECT_THAT(play(process, 64), Each(0.5F));
    slot.take();
    EXPECT_THAT(play(process, 64), Each(0.0F));
}

TEST_F(LiveEffectTest, ItsMetersAreLabelledByKind) {
    LiveEffect effect(module(), 2, 48'000.0);
    effect.instance().setNormalized("Gain", 1.0);
    play(effect.process(), 64);
    const auto levels = meterLevels(effect.instance());
    ASSERT_EQ(levels.size(), 1U);
    EXPECT_EQ(levels.front().label, "in");
    EXPECT_EQ(levels.front().levelDB, "0.0");
}

} // namespace
} // namespace varno
