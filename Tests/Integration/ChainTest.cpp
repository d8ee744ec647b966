// From a parameter's value to the audio: data model, packets, context and routine together.
#include "Tests/Integration/HostedEffect.h"
#include "Tests/Support/Signal.h"
#include "Tests/Support/TestRun.h"

namespace varno::test {
namespace {

class Chain : public HostedEffect {
protected:
    // The output of the literal evaluation.
    static Signal literally(const AlgParameters& parameters, std::size_t channels, double sampleRateHz,
                            const Signal& input) {
        AlgInstance instance(channels, sampleRateHz);
        instance.set(parameters);
        return renderChecked(instance.literalProcessor(), input).output;
    }
};

TEST_F(Chain, soundsAsTheLiteralEvaluationOfItsParameters) {
    constexpr std::uint32_t kSeed = 20260102;
    std::mt19937 random(kSeed);
    for (int i = 0; i < 30 * testScale(); ++i) {
        for (const std::size_t channels : {std::size_t{1}, std::size_t{2}}) {
            const double sampleRateHz = kSampleRates[random() % std::size(kSampleRates)];
            const AlgParameters parameters = randomParameters(random);
            SCOPED_TRACE("seed " + std::to_string(kSeed) + ", case " + std::to_string(i) + ", " +
                         std::to_string(channels) + " channels at " + std::to_string(sampleRateHz) +
                         " Hz: " + textOf(parameters));
            const auto instance = makeInstance(module(), static_cast<std::int32_t>(channels), sampleRateHz);
            automate(*instance, automationOf(parameters));
            const Signal input = swell(channels, 1500, static_cast<std::uint32_t>(i), 12.0);
            ASSERT_EQ(firstDifference(literally(parameters, channels, sampleRateHz, input),
                                      render(*instance, input)),
                      "");
        }
    }
}

TEST_F(Chain, beginsWithTheDefaults) {
    AlgParameters defaults;
    defaults.hot = 0.07F;
    const Signal input = drums(2, 4000, 48000.0, 1);
    const auto instance = makeInstance(module());
    EXPECT_EQ(firstDifference(literally(defaults, 2, 48000.0, input), render(*instance, input)), "");
}

TEST_F(Chain, followsEachKnobFromTheNextBufferOn) {
    const Signal input = noise(2, 1000, 2, -3.0);
    AlgParameters loud; // The harmonics switch has an effect where the clipper works.
    loud.gain = 0.9F;
    loud.hot = 0.8F;
    for (const auto& [id, start] : automationOf(loud)) {
        if (id == "ASw") {
            continue; // The routine does not receive it.
        }
        SCOPED_TRACE(id);
        const auto still = makeInstance(module());
        const auto moved = makeInstance(module());
        automate(*still, automationOf(loud));
        automate(*moved, automationOf(loud));
        ASSERT_EQ(render(*still, input), render(*moved, input));

        moved->requestNormalized(id, start < 0.5 ? 1.0 : 0.0);
        EXPECT_EQ(moved->normalized(id), still->normalized(id)) << "the host has not answered yet";
        ASSERT_EQ(render(*still, input), render(*moved, input));

        moved->idle();
        EXPECT_NE(moved->normalized(id), still->normalized(id));
        // The channel link has an effect where the channels differ, the release knobs after the
        // reduction has decreased.
        Signal loudThenSoft = input;
        for (std::size_t frame = 500; frame < 1000; ++frame) {
            loudThenSoft[0][frame] *= 0.01F;
            loudThenSoft[1][frame] *= 0.02F;
        }
        EXPECT_NE(render(*still, loudThenSoft), render(*moved, loudThenSoft));
    }
}

TEST_F(Chain, isHeardNeitherThroughTheBypassNorThroughAutoGain) {
    const Signal input = noise(2, 700, 3, 0.0);
    const auto bypassed = makeInstance(module());
    bypassed->setNormalized("MasterBypassID", 1.0);
    EXPECT_EQ(firstDifference(input, render(*bypassed, input)), "");

    const auto plain = makeInstance(module());
    const auto withAutoGain = makeInstance(module());
    withAutoGain->setNormalized("ASw", 1.0);
    EXPECT_EQ(render(*plain, input), render(*withAutoGain, input));
}

TEST_F(Chain, startsOverWithAReset) {
    const Signal input = swell(2, 2000, 4, 6.0);
    std::mt19937 random(5);
    const auto instance = makeInstance(module());
    automate(*instance, randomValues(random));
    const Signal first = render(*instance, input);
    EXPECT_NE(render(*instance, input), first);
    instance->reset();
    EXPECT_EQ(firstDifference(first, render(*instance, input)), "");
}

TEST_F(Chain, raisesEveryMeter) {
    const auto instance = makeInstance(module());
    instance->setNormalized("Gain", 1.0);
    render(*instance, noise(2, 4000, 6, 0.0));
    ASSERT_EQ(instance->meters().ids().size(), 4U);
    for (std::size_t tap = 0; tap < 4; ++tap) {
        EXPECT_GT(instance->meters().value(tap), 0.0F) << tap;
    }
}

} // namespace
} // namespace varno::test
