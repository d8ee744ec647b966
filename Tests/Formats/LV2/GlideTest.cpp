// What can be heard when a control port jumps.
#include "Tests/Formats/LV2/HostedPlugin.h"
#include "Tests/Integration/HostedEffect.h"
#include "Tests/Support/Signal.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

namespace varno::test {
namespace {

constexpr double kRateHz = 48000.0;
constexpr std::int32_t kRunFrames = 512;

// High-pass of second order with the damping of one section of a Butterworth filter of eighth order.
class HighPass {
public:
    HighPass(double frequencyHz, double quality) {
        const double w = 2.0 * std::numbers::pi * frequencyHz / kRateHz;
        const double alpha = std::sin(w) / (2.0 * quality);
        const double a0 = 1.0 + alpha;
        mB = {(1.0 + std::cos(w)) / 2.0 / a0, -(1.0 + std::cos(w)) / a0, (1.0 + std::cos(w)) / 2.0 / a0};
        mA = {-2.0 * std::cos(w) / a0, (1.0 - alpha) / a0};
    }

    double process(double x) {
        const double y = mB[0] * x + mB[1] * mX[0] + mB[2] * mX[1] - mA[0] * mY[0] - mA[1] * mY[1];
        mX = {x, mX[0]};
        mY = {y, mY[0]};
        return y;
    }

private:
    std::array<double, 3> mB{};
    std::array<double, 2> mA{};
    std::array<double, 2> mX{};
    std::array<double, 2> mY{};
};

// Mean square of what lies above 5 kHz, in dB, after the first 100 ms.
double levelAboveDB(const std::vector<float>& samples) {
    std::array filters = {HighPass(5000.0, 0.5098), HighPass(5000.0, 0.6013), HighPass(5000.0, 0.9),
                          HighPass(5000.0, 2.5629)};
    double sum = 0.0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        double sample = samples[i];
        for (HighPass& filter : filters) {
            sample = filter.process(sample);
        }
        sum += i < 4800 ? 0.0 : sample * sample;
    }
    return 10.0 * std::log10(sum / static_cast<double>(samples.size() - 4800) + 1e-20);
}

Signal sine() {
    Signal signal(2, std::vector<float>(96000));
    for (std::size_t i = 0; i < signal[0].size(); ++i) {
        const double phase = 2.0 * std::numbers::pi * 100.0 * static_cast<double>(i) / kRateHz;
        signal[0][i] = signal[1][i] = amplitudeOf(-12.0) * static_cast<float>(std::sin(phase));
    }
    return signal;
}

// Values that a port takes, one per run: a slow sweep up and down between the two.
float sweepValue(int run, float low, float high) {
    const double phase = 2.0 * std::numbers::pi * run / 60.0;
    return low + (high - low) * static_cast<float>(0.5 - 0.5 * std::cos(phase));
}

class Glide : public HostedEffect {
protected:
    // Level above 5 kHz where the parameter's values are in force at once.
    double atOnceDB(const std::string& id, float low, float high) {
        InstanceSetup setup;
        setup.maximumFrames = kRunFrames;
        Instance instance(this->module(), setup);
        int run = 0;
        return levelAboveDB(rendered([&](auto inputs, auto outputs, std::int32_t frames) {
            instance.setNormalized(id, sweepValue(run++, low, high));
            instance.process(inputs, outputs, frames);
        }));
    }

    static double glidingDB(const std::string& symbol, float low, float high) {
        HostedPlugin plugin(2);
        int run = 0;
        return levelAboveDB(rendered([&](auto inputs, auto outputs, std::int32_t frames) {
            plugin.port(symbol) = sweepValue(run++, low, high);
            plugin.process(inputs, outputs, frames);
        }));
    }

    static std::vector<float> rendered(const BufferProcessor& process) {
        return renderChecked(process, sine(), {.blocks = {kRunFrames}}).output[0];
    }
};

struct Sweep {
    const char* id;
    const char* symbol;
    float low;
    float high;
    double gainDB; // By how much the glide is quieter, at least.
};

TEST_F(Glide, takesTheZipperOutOfPortsThatMoveOncePerRun) {
    for (const Sweep& sweep :
         {Sweep{"Gain", "gain", 0.3F, 0.7F, 12.0}, Sweep{"Volume", "volume", 0.2F, 0.8F, 12.0},
          Sweep{"Mix", "mix", 0.0F, 1.0F, 12.0}}) {
        const double atOnce = atOnceDB(sweep.id, sweep.low, sweep.high);
        const double gliding = glidingDB(sweep.symbol, sweep.low, sweep.high);
        RecordProperty(sweep.symbol, std::to_string(atOnce) + " dB at once, " + std::to_string(gliding));
        EXPECT_LT(gliding, atOnce - sweep.gainDB) << sweep.id << ", at once " << atOnce << " dB";
    }
}

TEST_F(Glide, endsAtTheValueItself) {
    const Signal input = sine();
    HostedPlugin moved(2);
    HostedPlugin there(2);
    there.set({{"volume", 0.875F}, {"mix", 0.3F}});
    int run = 0;
    const auto process = [&](const float* const* inputs, float* const* outputs, std::int32_t frames) {
        if (run++ == 2) {
            moved.set({{"volume", 0.875F}, {"mix", 0.3F}});
        }
        moved.process(inputs, outputs, frames);
    };
    const std::vector<float> found = renderChecked(process, input, {.blocks = {kRunFrames}}).output[0];
    const std::vector<float> expected =
        renderChecked(there.processor(), input, {.blocks = {kRunFrames}}).output[0];
    // The processing of these values keeps no state: from the end of the glide on, the output is that of the
    // new values.
    const auto end = 2 * kRunFrames + 480 + 32;
    EXPECT_NE(found[end - 100], expected[end - 100]);
    EXPECT_TRUE(std::equal(found.begin() + end, found.end(), expected.begin() + end));
}

// A plug-in's output for the sine, where the port `symbol` jumps at frame 1024, in runs of `block` frames.
std::vector<float> jumpAt1024(const std::string& symbol, float value, std::int32_t block) {
    HostedPlugin plugin(2);
    std::int32_t done = 0;
    const auto process = [&](const float* const* inputs, float* const* outputs, std::int32_t frames) {
        if (done == 1024) {
            plugin.port(symbol) = value;
        }
        plugin.process(inputs, outputs, frames);
        done += frames;
    };
    return renderChecked(process, sine(), {.blocks = {block}}).output[0];
}

TEST_F(Glide, isTheSameForEverySlicing) {
    const std::vector<float> expected = jumpAt1024("gain", 0.9F, 1024);
    for (const std::int32_t block : {1, 16, 64, 256}) {
        EXPECT_EQ(firstDifference(expected, jumpAt1024("gain", 0.9F, block)), "") << block;
    }
}

TEST_F(Glide, isNotForSwitchesAndChoices) {
    const std::pair<const char*, const char*> choices[] = {
        {"hp", "HP"}, {"uk", "UK"}, {"hsw", "HSw"}, {"ratio", "Ratio"}};
    for (const auto& [symbol, id] : choices) {
        const auto instance = makeInstance(module());
        std::int32_t done = 0;
        const auto process = [&, name = id](auto inputs, auto outputs, std::int32_t frames) {
            if (done == 1024) {
                instance->setNormalized(name, 1.0);
            }
            instance->process(inputs, outputs, frames);
            done += frames;
        };
        const std::vector<float> atOnce = renderChecked(process, sine(), {.blocks = {256}}).output[0];
        EXPECT_EQ(firstDifference(atOnce, jumpAt1024(symbol, 1.0F, 256)), "") << symbol;
    }
}

TEST_F(Glide, isNotBeforeTheFirstRun) {
    HostedPlugin early(2);
    early.port("gain") = 0.9F;
    early.run(0); // nothing is processed, so it does not count
    early.port("gain") = 0.1F;
    HostedPlugin plain(2);
    plain.port("gain") = 0.1F;
    EXPECT_EQ(firstDifference(renderChecked(plain.processor(), sine()).output,
                              renderChecked(early.processor(), sine()).output),
              "");
}

} // namespace
} // namespace varno::test
