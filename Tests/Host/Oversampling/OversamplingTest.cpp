#include "Host/Oversampling/Oversampling.h"

#include "Host/Bypass.h"
#include "Host/InstanceHost.h"
#include "Tests/Host/FixtureAlgorithm.h"
#include "Tests/Host/FixtureTest.h"
#include "Tests/Reference/ReferenceHalfBand.h"
#include "Tests/Support/RenderChecker.h"
#include "Tests/Support/Signal.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <thread>

namespace varno {
namespace {

using test::BufferLayout;
using test::firstDifference;
using test::noise;
using test::renderChecked;
using test::Signal;

constexpr std::size_t kFadeFrames = 960; // 20 ms at 48 kHz

class OversamplingTest : public FixtureTest {
protected:
    static test::BufferProcessor processorOf(Oversampling& effect) {
        return [&](const float* const* inputs, float* const* outputs, std::int32_t frames) {
            if (frames >= 0) {
                effect.process(inputs, outputs, frames);
            }
        };
    }

    // The fixture's routine multiplies by the gain; from sample `change` of the higher rate on by another
    // one.
    static std::vector<float> literal(const std::vector<float>& input, int factor, float before, float after,
                                      std::size_t change) {
        std::vector<float> high = reference::raised(input, factor);
        for (std::size_t i = 0; i < high.size(); ++i) {
            high[i] *= i < change ? before : after;
        }
        // A routine without latency: one sample is missing to the last of a frame.
        high.insert(high.begin(), 0.0F);
        high.pop_back();
        return reference::lowered(high, factor);
    }

    static float steepest(const std::vector<float>& sound) {
        float step = 0.0F;
        for (std::size_t frame = 1; frame < sound.size(); ++frame) {
            step = std::max(step, std::abs(sound[frame] - sound[frame - 1]));
        }
        return step;
    }
};

TEST_F(OversamplingTest, AtOneIsTheInstanceItself) {
    const Signal input = noise(2, 3000, 1, 0.0);
    const auto alone = makeInstance();
    const auto instance = makeInstance();
    Oversampling effect(*instance, {.canChange = true});
    const test::BufferProcessor process = [&](const float* const* inputs, float* const* outputs,
                                              std::int32_t frames) {
        alone->process(inputs, outputs, std::max(frames, 0));
    };
    const test::RenderPlan plan{.blocks = {64, 0, 1, 1500}};
    EXPECT_EQ(firstDifference(renderChecked(process, input, plan).output,
                              renderChecked(processorOf(effect), input, plan).output),
              "");
    EXPECT_EQ(instance->position(), 3000);
    EXPECT_EQ(effect.latencyFrames(), 0);
}

TEST_F(OversamplingTest, HasTheBitsOfTheLiteralEvaluationInAnyBlocks) {
    const Signal input = noise(2, 3000, 2, 0.0);
    for (const std::int32_t factor : {2, 4, 8}) {
        Signal expected;
        for (const std::vector<float>& channel : input) {
            expected.push_back(literal(channel, factor, 0.5F, 0.5F, 0));
        }
        for (const auto layout : {BufferLayout::kSeparate, BufferLayout::kInPlace}) {
            for (const std::vector<std::int32_t>& blocks :
                 {std::vector<std::int32_t>{1}, {64, 0, 1, 1500}, {3000}}) {
                const auto instance = makeInstance();
                Oversampling effect(*instance, {.factor = factor});
                const auto outcome =
                    renderChecked(processorOf(effect), input, {.layout = layout, .blocks = blocks});
                EXPECT_EQ(test::textOf(outcome.complaints), "");
                EXPECT_EQ(firstDifference(expected, outcome.output), "") << factor;
            }
        }
    }
}

TEST_F(OversamplingTest, ReportsTheLatencyThatItHas) {
    for (const std::int32_t factor : kOversamplingFactors) {
        for (const std::int32_t routine : {0, 1}) {
            // The fixture has no latency: what the routine's would be is missing in front.
            const std::int32_t frames = oversampledLatency(factor, routine);
            EXPECT_GE(frames * factor, 2 * converterDelay(factor) + routine - (factor - 1));
            EXPECT_LT(frames * factor, 2 * converterDelay(factor) + routine + factor);
        }
        const auto instance = makeInstance({.channels = 1});
        Oversampling effect(*instance, {.factor = factor});
        EXPECT_EQ(effect.latencyFrames(), oversampledLatency(factor, 0));
        EXPECT_EQ(effect.mostLatencyFrames(), effect.latencyFrames());
        Signal impulse(1, std::vector<float>(400));
        impulse[0][100] = 1.0F;
        const Signal output = renderChecked(processorOf(effect), impulse).output;
        const auto peak = std::ranges::max_element(output[0]) - output[0].begin();
        EXPECT_EQ(peak, 100 + effect.latencyFrames()) << factor;
    }
    EXPECT_EQ(oversampledLatency(1, 1), 1);
    EXPECT_EQ(oversampledLatency(2, 1), 41);
    EXPECT_EQ(oversampledLatency(4, 1), 46);
    EXPECT_EQ(oversampledLatency(8, 1), 48);
}

TEST_F(OversamplingTest, ASettingActsOnTheSoundOfItsFrame) {
    const Signal input = noise(1, 2000, 3, 0.0);
    for (const int factor : {2, 4, 8}) {
        for (const std::size_t frame : {std::size_t{0}, std::size_t{1}, std::size_t{700}}) {
            const auto instance = makeInstance({.channels = 1});
            Oversampling effect(*instance, {.factor = factor});
            std::vector<float> sound = input[0];
            float* first = sound.data();
            effect.process(&first, &first, static_cast<std::int32_t>(frame));
            const BufferValue value{static_cast<std::size_t>(instance->parameter("Gain")->index), 0.25};
            ASSERT_TRUE(instance->setBeforeBuffer({&value, 1}));
            float* second = sound.data() + frame;
            effect.process(&second, &second, static_cast<std::int32_t>(sound.size() - frame));
            // Before the first frame, all sound is that of the new setting.
            const std::size_t change = frame == 0 ? 0
                                                  : frame * static_cast<std::size_t>(factor) +
                                                        static_cast<std::size_t>(converterDelay(factor));
            EXPECT_EQ(firstDifference(literal(input[0], factor, 0.5F, 0.25F, change), sound), "")
                << factor << "x at " << frame;
        }
    }
}

TEST_F(OversamplingTest, AnUnscaledCoefficientIsItsRootAboveOne) {
    options.oversampling.coefficients = {
        {fixture::kGain, fixture::kGain, [](float gain) { return gain < 0.5F; }}};
    const Signal ones(1, std::vector<float>(500, 1.0F));
    for (const std::int32_t factor : kOversamplingFactors) {
        for (const double gain : {0.25, 0.75}) {
            const auto instance = makeInstance({.channels = 1});
            Oversampling effect(*instance, {.factor = factor});
            instance->setNormalized("Gain", gain);
            const Signal output = renderChecked(processorOf(effect), ones).output;
            const double expected = gain < 0.5 ? std::pow(gain, 1.0 / factor) : gain;
            EXPECT_NEAR(output[0].back(), expected, 1e-6) << factor << "x at " << gain;
        }
    }
}

TEST_F(OversamplingTest, ShowsMetersAndPositionOfTheSound) {
    const auto instance = makeInstance({.channels = 1});
    Oversampling effect(*instance, {.factor = 4});
    const Signal loud(1, std::vector<float>(1000, 0.75F));
    renderChecked(processorOf(effect), loud, {.blocks = {100}});
    EXPECT_EQ(instance->position(), 1000);
    EXPECT_NEAR(instance->meters().value(0), 0.75F, 0.1F); // rings beyond the step
    EXPECT_GT(instance->meters().peak(0), 0.74F);
    // They fall as they do at the rate itself, once the filters have rung out.
    renderChecked(processorOf(effect), Signal(1, std::vector<float>(100)));
    const float before = instance->meters().value(0);
    const Signal silence(1, std::vector<float>(4800));
    renderChecked(processorOf(effect), silence, {.blocks = {100}});
    EXPECT_NEAR(20.0F * std::log10(before / instance->meters().value(0)), 1.2F, 0.05F);
    instance->meters().reset();
    renderChecked(processorOf(effect), silence, {.blocks = {100}});
    EXPECT_EQ(instance->meters().peak(0), 0.0F);
}

TEST_F(OversamplingTest, UsesTheHighestFactorThatFitsAndKeepsTheWish) {
    options.sampleRates = {1.0, 200000.0};
    EXPECT_EQ(fittingFactor(8, options.sampleRates, 48000.0), 4);
    EXPECT_EQ(fittingFactor(8, options.sampleRates, 25000.0), 8);
    EXPECT_EQ(fittingFactor(2, options.sampleRates, 25000.0), 2);
    EXPECT_EQ(fittingFactor(8, options.sampleRates, 100001.0), 1);
    const auto instance = makeInstance({.channels = 1});
    Oversampling effect(*instance, {.factor = 8, .canChange = true});
    EXPECT_EQ(effect.wish(), 8);
    EXPECT_EQ(effect.factor(), 4);
    EXPECT_EQ(effect.latencyFrames(), oversampledLatency(4, 0));
    effect.setFactor(2);
    EXPECT_EQ(effect.factor(), 2);
    effect.setFactor(8);
    EXPECT_EQ(effect.wish(), 8);
    EXPECT_EQ(effect.factor(), 4);
}

// Around a change, in blocks of 100: before and after it, what each factor makes alone; between, no step that
// is much higher than the sound's own.
TEST_F(OversamplingTest, AChangeFadesOutAndIn) {
    constexpr double kTurn = 2.0 * std::numbers::pi * 500.0 / 48000.0;
    Signal sine(1, std::vector<float>(6000));
    for (std::size_t frame = 0; frame < sine[0].size(); ++frame) {
        sine[0][frame] = static_cast<float>(std::sin(kTurn * static_cast<double>(frame)));
    }
    for (const std::int32_t from : kOversamplingFactors) {
        for (const std::int32_t to : kOversamplingFactors) {
            if (from == to) {
                continue;
            }
            const auto instance = makeInstance({.channels = 1});
            Oversampling effect(*instance, {.factor = from, .canChange = true});
            Bypass bypass(effect);
            std::int32_t done = 0;
            std::vector<std::int32_t> latencies;
            const auto process = [&](const float* const* inputs, float* const* outputs, std::int32_t frames) {
                if (done == 2000) {
                    effect.setFactor(to);
                }
                bypass.process(inputs, outputs, frames);
                latencies.push_back(effect.latencyFrames());
                done += frames;
            };
            const std::vector<float> found = renderChecked(process, sine, {.blocks = {100}}).output[0];
            const float own = 0.5F * static_cast<float>(kTurn);
            EXPECT_LE(steepest({found.begin() + 300, found.end()}), 1.1F * own) << from << " to " << to;
            // Silent where the paths change, after half of the fade.
            EXPECT_EQ(found[2000 + kFadeFrames / 2 - 1], 0.0F);
            EXPECT_EQ(latencies[23], oversampledLatency(from, 0));
            EXPECT_EQ(latencies[24], oversampledLatency(to, 0));
            for (std::size_t frame = 300; frame < found.size(); ++frame) {
                const bool isBefore = frame < 2000;
                if (isBefore || frame >= 2000 + kFadeFrames - 1) {
                    const auto latency = static_cast<double>(oversampledLatency(isBefore ? from : to, 0));
                    ASSERT_NEAR(found[frame], 0.5 * std::sin(kTurn * (static_cast<double>(frame) - latency)),
                                1e-5)
                        << from << " to " << to << ", frame " << frame;
                }
            }
            EXPECT_EQ(instance->position(), 6000);
        }
    }
}

TEST_F(OversamplingTest, ABypassedSoundIsDelayedAsMuch) {
    const Signal input = noise(1, 6000, 4, 0.0);
    const auto instance = makeInstance({.channels = 1});
    Oversampling effect(*instance, {.routineLatencyFrames = 1, .factor = 4, .canChange = true});
    Bypass bypass(effect);
    bypass.set(true);
    std::int32_t done = 0;
    const auto process = [&](const float* const* inputs, float* const* outputs, std::int32_t frames) {
        if (done == 3000) {
            effect.setFactor(1);
        }
        bypass.process(inputs, outputs, frames);
        done += frames;
    };
    const std::vector<float> found = renderChecked(process, input, {.blocks = {250}}).output[0];
    for (std::size_t frame = 0; frame < found.size(); ++frame) {
        const std::size_t latency = frame < 3000 ? 46 : 1;
        if (frame < 3000 || frame >= 3000 + kFadeFrames) {
            ASSERT_EQ(found[frame], frame < latency ? 0.0F : input[0][frame - latency]) << frame;
        }
    }
}

TEST_F(OversamplingTest, AnyFactorHasTheSettingsOfTheInstance) {
    const auto instance = makeInstance({.channels = 1});
    Oversampling effect(*instance, {.factor = 2, .canChange = true});
    Bypass bypass(effect);
    const Signal ones(1, std::vector<float>(3000, 1.0F));
    const auto process = [&](const float* const* inputs, float* const* outputs, std::int32_t frames) {
        bypass.process(inputs, outputs, frames);
    };
    const auto last = [&] { return renderChecked(process, ones).output[0].back(); };
    instance->setNormalized("Gain", 0.25);
    EXPECT_NEAR(last(), 0.25F, 1e-6F);
    instance->setNormalized("Gain", 0.75);
    effect.setFactor(8);
    EXPECT_NEAR(last(), 0.75F, 1e-6F);
    const BufferValue value{static_cast<std::size_t>(instance->parameter("Gain")->index), 0.125};
    instance->setBeforeBuffer({&value, 1});
    EXPECT_NEAR(last(), 0.125F, 1e-6F);
    effect.setFactor(1);
    instance->setNormalized("Gain", 1.0);
    EXPECT_NEAR(last(), 1.0F, 1e-6F);
    EXPECT_TRUE(effect.setFactorBeforeBuffer(2));
    EXPECT_NEAR(last(), 1.0F, 1e-6F);
}

TEST_F(OversamplingTest, WishesDuringAChangeAreMetInTheEnd) {
    const auto instance = makeInstance({.channels = 1});
    Oversampling effect(*instance, {.canChange = true});
    Bypass bypass(effect);
    std::vector<float> ones(100, 1.0F);
    float* const channel = ones.data();
    const std::int32_t wishes[] = {8, 1, 4, 4, 2, 8, 1, 2};
    for (const std::int32_t wish : wishes) {
        effect.setFactor(wish);
        bypass.process(&channel, &channel, 100);
        instance->setNormalized("Gain", 1.0 / wish);
    }
    std::vector<float> rest(4000, 1.0F);
    float* const end = rest.data();
    bypass.process(&end, &end, 4000);
    EXPECT_EQ(effect.latencyFrames(), oversampledLatency(2, 0));
    EXPECT_NEAR(rest.back(), 0.5F, 1e-6F);
}

TEST_F(OversamplingTest, DoesNotWaitOnTheAudioThread) {
    const auto instance = makeInstance();
    Oversampling effect(*instance, {.canChange = true});
    const MainGate::Scope otherCall(instance->host().state().gate, "test");
    bool isDone = true;
    std::thread([&] { isDone = effect.setFactorBeforeBuffer(2); }).join();
    EXPECT_FALSE(isDone);
    EXPECT_EQ(effect.wish(), 1);
}

TEST_F(OversamplingTest, AResetStartsAtTheWishedFactor) {
    const auto instance = makeInstance({.channels = 1});
    Oversampling effect(*instance, {.canChange = true});
    Bypass bypass(effect);
    const Signal input = noise(1, 1000, 6, 0.0);
    const auto process = [&](const float* const* inputs, float* const* outputs, std::int32_t frames) {
        bypass.process(inputs, outputs, frames);
    };
    renderChecked(process, input);
    effect.setFactor(4);
    bypass.reset();
    EXPECT_EQ(effect.latencyFrames(), oversampledLatency(4, 0));
    EXPECT_EQ(instance->position(), 0);
    const Signal expected = {literal(input[0], 4, 0.5F, 0.5F, 0)};
    EXPECT_EQ(firstDifference(expected, renderChecked(process, input).output), "");
    bypass.reset();
    EXPECT_EQ(firstDifference(expected, renderChecked(process, input).output), "");
}

TEST_F(OversamplingTest, BeforeTheFirstFrameAChangeIsDoneAtOnce) {
    const auto instance = makeInstance({.channels = 1});
    Oversampling effect(*instance, {.canChange = true});
    Bypass bypass(effect);
    instance->setNormalized("Gain", 0.25);
    ASSERT_TRUE(effect.setFactorBeforeBuffer(4));
    const Signal input = noise(1, 1000, 7, 0.0);
    const auto process = [&](const float* const* inputs, float* const* outputs, std::int32_t frames) {
        bypass.process(inputs, outputs, frames);
    };
    EXPECT_EQ(firstDifference({literal(input[0], 4, 0.25F, 0.25F, 0)}, renderChecked(process, input).output),
              "");
}

TEST_F(OversamplingTest, AnInstanceContinuesFromTheNamedState) {
    options.oversampling.stateField = fixture::kState;
    options.oversampling.carriedState = {{0, sizeof(fixture::State::frames)}, {8, 1000}};
    const auto from = makeInstance({.channels = 1});
    const auto to = makeInstance({.channels = 1});
    std::vector<float> sound(100);
    float* const channel = sound.data();
    from->process(&channel, &channel, 100);
    to->process(&channel, &channel, 7);
    to->continueFrom(*from);
    const auto* const state =
        reinterpret_cast<const fixture::State*>(to->privateData(fixture::kState).data());
    EXPECT_EQ(state->frames, 100);
    EXPECT_EQ(state->start, fixture::kStart); // beyond the state: left out
}

} // namespace
} // namespace varno
