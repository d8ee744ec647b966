// Whether the dynamics of the effect are the same at any factor.
#include "DemoGain_Coefficients.h"
#include "DemoGain_MeterLaw.h"
#include "GUI/DemoGain_GUI_VST/DemoGain_VolumeMatch.h"
#include "Measure/MeasuredEffect.h"
#include "Tests/Integration/OversampledEffect.h"

#include <cmath>
#include <cstddef>
#include <gtest/gtest.h>
#include <iterator>

namespace varno::test {
namespace {

constexpr double kRateHz = 48000.0;
constexpr int kCurves = 8;

double ratioOf(int curve) {
    return curve / static_cast<double>(kCurves - 1);
}

class OversamplingDynamicsTest : public OversampledEffect {
protected:
    // Gain reduction in dB of a constant, frame by frame: as the tap shows it where it falls at once.
    std::vector<double> reductions(OversampledInstance& effect, float constant, std::size_t frames) {
        std::vector<double> found(frames);
        for (double& reduction : found) {
            std::vector<float> sound{constant};
            effect->instance().meters().reset();
            effect.process(sound);
            reduction = -static_cast<double>(effect->instance().meters().value(0)) / DemoGain::kMeterPerDB;
        }
        return found;
    }

    // Frames until a share of a change is done.
    static double framesTo(const std::vector<double>& reductions, double from, double to, double share) {
        const double goal = from + (to - from) * share;
        for (std::size_t frame = 1; frame < reductions.size(); ++frame) {
            const double before = reductions[frame - 1];
            const double after = reductions[frame];
            if ((before - goal) * (after - goal) <= 0.0 && before != after) {
                return static_cast<double>(frame) + (goal - before) / (after - before);
            }
        }
        ADD_FAILURE() << "never reached";
        return 0.0;
    }
};

TEST_F(OversamplingDynamicsTest, SteadyLevelsAreThoseOfOne) {
    for (int curve = 0; curve < kCurves; ++curve) {
        for (const double levelDB : {-24.0, -12.0, 0.0}) {
            double expectedDB = 0.0;
            for (const std::int32_t factor : kOversamplingFactors) {
                OversampledInstance effect(module(), factor, 1, kRateHz,
                                           {{"Ratio", ratioOf(curve)}, {"Hot", 0.0}});
                std::vector<float> sound = sine(997.0, levelDB, 3.0, kRateHz);
                effect.process(sound);
                const double foundDB = 20.0 * std::log10(rms(lastSecond(sound, kRateHz)));
                expectedDB = factor == 1 ? foundDB : expectedDB;
                EXPECT_NEAR(foundDB, expectedDB, 0.1) << "curve " << curve + 1 << ", " << factor << "x";
            }
        }
    }
}

TEST_F(OversamplingDynamicsTest, TimesAreThoseOfOne) {
    constexpr float kLoud = 0.5F;
    constexpr float kSoft = 0.0F;
    constexpr std::size_t kFrames = 24000;
    constexpr int kSlowCurve = 5; // its release takes up to seven times as long
    constexpr std::size_t kSlowFrames = 250000;
    struct Part {
        double share;     // of the release
        double tolerance; // of the time at 1x
    };
    constexpr Part kParts[] = {{0.5, 0.05}, {0.8, 0.08}, {0.9, 0.08}};
    for (int curve = 0; curve < kCurves; ++curve) {
        for (const double knob : {0.0, 0.5}) {
            double attackOfOne = 0.0;
            double releaseOfOne[std::size(kParts)] = {};
            for (const std::int32_t factor : kOversamplingFactors) {
                SCOPED_TRACE(testing::Message()
                             << "curve " << curve + 1 << ", knobs at " << knob << ", " << factor << "x");
                OversampledInstance effect(module(), factor, 1, kRateHz,
                                           {{"Ratio", ratioOf(curve)}, {"Atk", knob}, {"Rls", knob}});
                const std::vector<double> attack = reductions(effect, kLoud, kFrames);
                const std::vector<double> release =
                    reductions(effect, kSoft, curve == kSlowCurve ? kSlowFrames : kFrames);
                const double delay = (effect->latencyFrames() - 1.0) / 2.0;
                const auto expectAsOfOne = [&](double found, double& ioOfOne, double tolerance) {
                    if (factor == 1) {
                        ioOfOne = found;
                    }
                    EXPECT_NEAR(found, ioOfOne, std::max(1.0, tolerance * ioOfOne));
                };
                // The attack is the first follower's: half of what is reached in the end.
                expectAsOfOne(framesTo(attack, 0.0, attack.back(), 0.25) - delay, attackOfOne, 0.05);
                for (std::size_t i = 0; i < std::size(kParts); ++i) {
                    SCOPED_TRACE(testing::Message() << "release to " << kParts[i].share);
                    expectAsOfOne(framesTo(release, release.front(), 0.0, kParts[i].share) - delay,
                                  releaseOfOne[i], kParts[i].tolerance);
                }
            }
        }
    }
}

// A series of measurements of the editor, on bursts of noise and bass.
TEST_F(OversamplingDynamicsTest, AutoGainFindsTheSame) {
    constexpr std::uint32_t kTickMs = 30;
    constexpr std::size_t kTickFrames = 1440;
    const Signal music = drums(1, 100 * kTickFrames, kRateHz, 7);
    const auto matchedDB = [&](std::int32_t factor) {
        OversampledInstance effect(module(), factor, 1, kRateHz, {{"Hot", 0.3}, {"Gain", 0.5}});
        Instance& instance = effect->instance();
        DemoGain_VolumeMatch match;
        match.RequestRestart();
        std::uint32_t ticksMs = 0;
        for (auto next = music[0].begin(); next != music[0].end(); next += kTickFrames) {
            std::vector<float> sound(next, next + kTickFrames);
            effect.process(sound);
            const MeterBank& meters = instance.meters();
            const auto volume =
                match.Tick(ticksMs, meters.value(2), meters.value(3), instance.normalized("Volume"));
            if (volume) {
                instance.setNormalized("Volume", *volume);
            }
            ticksMs += kTickMs;
        }
        return static_cast<double>(DemoGain_LevelDB(static_cast<float>(instance.normalized("Volume"))));
    };
    const double once = matchedDB(1);
    EXPECT_GT(std::abs(once), 3.0); // there is something to match
    EXPECT_LT(once, 19.0);          // and it is in reach
    for (const std::int32_t factor : {2, 4, 8}) {
        EXPECT_NEAR(matchedDB(factor), once, 0.5) << factor;
    }
}

// Dry and wet sound have the same delay: half of each combs nothing where the effect does nothing else.
TEST_F(OversamplingDynamicsTest, DryAndWetSoundCancel) {
    for (const std::int32_t factor : {2, 4, 8}) {
        const ParameterValues values = {{"Mix", 1.0}, {"Hot", 0.0}};
        OversampledInstance effect(module(), factor, 1, kRateHz, values);
        const std::vector<float> dry = sine(5000.0, -40.0, 0.5, kRateHz);
        for (const double mix : {1.0, 0.5}) {
            OversampledInstance mixed(module(), factor, 1, kRateHz, {{"Mix", mix}, {"Hot", 0.0}});
            std::vector<float> sound = dry;
            mixed.process(sound);
            double rest = 0.0;
            const auto latency = static_cast<std::size_t>(mixed->latencyFrames());
            for (std::size_t frame = 4000; frame < sound.size(); ++frame) {
                rest = std::max(rest, std::abs(double{sound[frame]} - double{dry[frame - latency]}));
            }
            // Half of the sound 1 % apart in gain, and none by phase: a frame of delay would leave 32 %.
            EXPECT_LT(rest, 0.02 * 0.01) << factor << "x, Mix " << mix;
        }
    }
}

} // namespace
} // namespace varno::test
