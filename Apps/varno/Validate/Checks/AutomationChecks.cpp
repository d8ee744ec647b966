// What is heard of values that change while a low tone runs: everything above 5 kHz comes from the change.
#include "Validate/Check.h"
#include "Validate/Checks/Effects.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <numbers>

namespace varno::validate {
namespace {

using signals::Signal;

constexpr double kToneHz = 100.0;
constexpr double kToneDB = -12.0;
constexpr double kFromHz = 5000.0;
// What a plug-in needs to settle, then what is measured.
constexpr std::size_t kSettlingFrames = 8192;
constexpr std::size_t kMeasuredFrames = 24576;
// A host's usual buffer, and the interval of its automation.
constexpr std::int32_t kStepBuffer = 512;
constexpr std::size_t kStepFrames = 2048;
constexpr std::int32_t kGlideBuffer = 32;
constexpr std::size_t kGlideFrames = 4096;
constexpr double kSilenceDB = -200.0;

Signal tone(const Effect& effect) {
    std::vector<float> samples;
    for (std::size_t frame = 0; frame < kSettlingFrames + kMeasuredFrames; ++frame) {
        samples.push_back(signals::amplitudeOf(kToneDB) *
                          static_cast<float>(std::sin(2.0 * std::numbers::pi * kToneHz *
                                                      static_cast<double>(frame) / kCheckedRateHz)));
    }
    return Signal(static_cast<std::size_t>(effect.info.inputs), samples);
}

// A high pass of eighth order, Butterworth: four sections one after the other.
class HighPass {
public:
    HighPass() {
        const double w = std::tan(std::numbers::pi * kFromHz / kCheckedRateHz);
        for (std::size_t i = 0; i < mSections.size(); ++i) {
            const double angle = std::numbers::pi * (2.0 * static_cast<double>(i) + 1.0) /
                                 (4.0 * static_cast<double>(mSections.size()));
            const double damping = 2.0 * std::sin(angle);
            const double scale = 1.0 / (1.0 + damping * w + w * w);
            mSections[i] = {.gain = scale,
                            .first = 2.0 * (w * w - 1.0) * scale,
                            .second = (1.0 - damping * w + w * w) * scale};
        }
    }

    double operator()(double sample) {
        for (Section& section : mSections) {
            sample = section(sample);
        }
        return sample;
    }

private:
    struct Section {
        double gain = 0.0;
        double first = 0.0;
        double second = 0.0;
        std::array<double, 2> state{};

        double operator()(double sample) {
            const double output = gain * sample + state[0];
            state[0] = -2.0 * gain * sample - first * output + state[1];
            state[1] = gain * sample - second * output;
            return output;
        }
    };

    std::array<Section, 4> mSections;
};

// Mean square above kFromHz, of the channel that has most; infinite where a sample is no number.
double powerAbove(const Signal& signal) {
    double most = 0.0;
    for (const std::vector<float>& samples : signal) {
        HighPass filter;
        double sum = 0.0;
        for (std::size_t frame = 0; frame < samples.size(); ++frame) {
            const double high = filter(static_cast<double>(samples[frame]));
            sum += frame < kSettlingFrames ? 0.0 : high * high;
        }
        most = std::isfinite(sum) ? std::max(most, sum / static_cast<double>(kMeasuredFrames)) : HUGE_VAL;
    }
    return most;
}

double levelOf(double power) {
    constexpr double kMostDB = 999.0;
    return power > 0.0 ? std::clamp(10.0 * std::log10(power), kSilenceDB, kMostDB) : kSilenceDB;
}

// Renders the tone with the value of one parameter at each buffer, 0 to 1 of its range.
double powerWith(const Effect& effect, std::size_t index, std::int32_t buffer, const Signal& input,
                 const std::function<double(std::size_t frame)>& valueAt) {
    const auto instance = effect.create();
    const Parameter& parameter = instance->parameters()[index];
    std::size_t frame = 0;
    const signals::BufferProcessor process = [&](const float* const* inputs, float* const* outputs,
                                                 std::int32_t frames) {
        instance->set(index, parameter.minimum + valueAt(frame) * (parameter.maximum - parameter.minimum));
        instance->process(inputs, outputs, frames);
        frame += static_cast<std::size_t>(frames);
    };
    const signals::RenderPlan plan{.blocks = {buffer},
                                   .outputs = static_cast<std::size_t>(effect.info.outputs)};
    return powerAbove(signals::renderChecked(process, input, plan).output);
}

double stepAt(std::size_t frame) {
    return (frame / kStepFrames) % 2 == 0 ? 0.0 : 1.0;
}

double glideAt(std::size_t frame) {
    const double place = static_cast<double>(frame % (2 * kGlideFrames)) / static_cast<double>(kGlideFrames);
    return place < 1.0 ? place : 2.0 - place;
}

// What a change adds to what the tone alone has, in dBFS.
struct Heard {
    std::string name;
    double stepDB = kSilenceDB;
    double glideDB = kSilenceDB; ///< Of a parameter without steps.
};

Heard hear(const Effect& effect, const Parameter& parameter, std::size_t index, const Signal& input) {
    double still = 0.0;
    for (const double place : {0.0, 0.5, 1.0}) {
        still =
            std::max(still, powerWith(effect, index, kStepBuffer, input, [&](std::size_t) { return place; }));
    }
    const auto added = [&](std::int32_t buffer, double (*valueAt)(std::size_t)) {
        return levelOf(powerWith(effect, index, buffer, input, valueAt) - still);
    };
    Heard heard{.name = parameter.name, .stepDB = added(kStepBuffer, stepAt)};
    if (parameter.steps == 0) {
        heard.glideDB = added(kGlideBuffer, glideAt);
    }
    return heard;
}

// The loudest of them, in words.
std::string worstText(std::vector<Heard> all, double Heard::*level) {
    constexpr std::size_t kMostNamed = 3;
    std::ranges::sort(all, std::greater(), level);
    std::string text;
    for (std::size_t i = 0; i < std::min(all.size(), kMostNamed); ++i) {
        if (all[i].*level > kSilenceDB) {
            text += (i == 0 ? "" : ", ") + all[i].name + " " + std::to_string(std::lround(all[i].*level));
        }
    }
    return text.empty() ? "nothing" : text + " dBFS";
}

// The most of a value that glides. A module reads its values for each buffer, in steps of 1/128 here; more is
// a click of its own. Other formats leave open how a value glides, but what is louder than the tone is a
// fault.
double mostGlideDB(const Context& context) {
    constexpr double kOfModules = -40.0;
    constexpr double kOfTheTone = kToneDB - 3.0;
    return context.format() == Format::kModule ? kOfModules : kOfTheTone;
}

void checkAutomation(Context& context) {
    forEachEffect(context, [&](const Effect& effect) {
        const Signal input = tone(effect);
        std::vector<Heard> all;
        const auto instance = effect.create();
        for (std::size_t index = 0; index < instance->parameters().size(); ++index) {
            const Parameter& parameter = instance->parameters()[index];
            if (!parameter.isAutomatable || parameter.isBypass) {
                continue;
            }
            context.step(effect.info.id + ", " + parameter.name);
            all.push_back(hear(effect, parameter, index, input));
            context.expect(all.back().glideDB <= mostGlideDB(context),
                           std::to_string(std::lround(all.back().glideDB)) + " dBFS above 5 kHz while " +
                               parameter.name + " glides",
                           "at most " + std::to_string(std::lround(mostGlideDB(context))));
        }
        context.note(effect.info.id + " (" + std::to_string(effect.info.inputs) +
                     " in), above 5 kHz: stepped " + worstText(all, &Heard::stepDB) + "; gliding " +
                     worstText(all, &Heard::glideDB));
    });
}

constexpr Check kAutomationChecks[] = {
    {.id = "audio-automation",
     .title = "A value that glides makes no noise above 5 kHz; what steps make is stated",
     .timeLimitS = 120,
     .run = checkAutomation},
};

} // namespace

std::span<const Check> automationChecks() {
    return kAutomationChecks;
}

} // namespace varno::validate
