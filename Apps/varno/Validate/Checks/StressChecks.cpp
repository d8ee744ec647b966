// Sound at its limits: extreme settings, samples that are none, silence, the caller's floating-point mode.
#include "Validate/Check.h"
#include "Validate/Checks/Effects.h"

#include <algorithm>
#include <cfenv>
#include <cmath>
#include <ctime>
#include <functional>
#include <limits>

namespace varno::validate {
namespace {

using signals::Signal;

constexpr std::int32_t kBlock = 512;

std::string cornerText(const PluginInstance& instance, const ValueVector& values) {
    std::string text;
    constexpr std::size_t kMostNamed = 20;
    for (std::size_t i = 0; i < std::min(values.size(), kMostNamed); ++i) {
        const Parameter& parameter = instance.parameters()[i];
        text += (text.empty() ? "" : " ") + parameter.id + (values[i] > parameter.minimum ? "+" : "-");
    }
    return text + (values.size() > kMostNamed ? " ..." : "");
}

// Each parameter at its upper end or at its lower one.
ValueVector cornerOf(const PluginInstance& instance, const std::function<bool(std::size_t)>& isUpper) {
    ValueVector values;
    for (std::size_t i = 0; i < instance.parameters().size(); ++i) {
        const Parameter& parameter = instance.parameters()[i];
        values.push_back(isUpper(i) ? parameter.maximum : parameter.minimum);
    }
    return values;
}

// Every parameter at one of its ends: all of them where they are few, else at random.
void checkCorners(Context& context) {
    constexpr std::size_t kMostExhaustive = 13;
    const std::size_t most = std::size_t{1} << (context.isFull() ? kMostExhaustive : 10U);
    forEachEffect(context, [&](const Effect& effect) {
        const Signal input = music(effect, 3 * kBlock, context.seed());
        const auto instance = effect.create();
        const std::size_t count = instance->parameters().size();
        const bool isAll = count < 63 && (std::uint64_t{1} << count) <= most;
        const std::uint64_t corners = isAll ? std::uint64_t{1} << count : most;
        std::mt19937_64 random(context.seed());
        float loudest = 0.0F;
        for (std::uint64_t corner = 0; corner < corners; ++corner) {
            const ValueVector values = cornerOf(
                *instance, [&](std::size_t i) { return (isAll ? (corner >> i) & 1U : random() & 1U) != 0; });
            context.step(effect.info.id + " at " + cornerText(*instance, values));
            setAll(*instance, values);
            const float peak = largestOf(render(effect, *instance, input, {.blocks = {kBlock}}).output);
            if (!context.expect(std::isfinite(peak),
                                "a sample that is not finite at " + cornerText(*instance, values),
                                "finite sound at every corner of the settings")) {
                return;
            }
            loudest = std::max(loudest, peak);
        }
        constexpr float kLoud = 100.0F; // +40 dBFS
        if (loudest > kLoud) {
            context.note(effect.info.id + " reaches " +
                         std::to_string(static_cast<int>(std::lround(20.0 * std::log10(loudest)))) +
                         " dBFS at a corner of its settings");
        }
    });
}

struct BadSample {
    const char* name;
    float value;
};

// Each is one sample of the first channel. The output must be finite again; how soon, and whether nothing of
// it is left, a module's architecture promises alone.
void checkBadSamples(Context& context) {
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    const BadSample bad[] = {{"a sample that is no number", std::numeric_limits<float>::quiet_NaN()},
                             {"an infinite sample", kInfinity},
                             {"a negative infinite sample", -kInfinity},
                             {"the largest sample", std::numeric_limits<float>::max()},
                             {"a sample of 1e30", 1e30F}};
    constexpr std::size_t kAfter = 96256;
    forEachEffect(context, [&](const Effect& effect) {
        const Signal clean = music(effect, kAfter, context.seed());
        for (const BadSample& sample : bad) {
            context.step(effect.info.id + " after " + sample.name);
            Signal input = clean;
            input[0][100] = sample.value;
            const auto instance = effect.create();
            const Signal output = render(effect, *instance, input, {.blocks = {kBlock}}).output;
            for (const std::vector<float>& samples : output) {
                const auto last = std::find_if(samples.rbegin(), samples.rend(),
                                               [](float each) { return !std::isfinite(each); });
                const auto until = samples.rend() - last;
                if (until == static_cast<std::ptrdiff_t>(kAfter)) {
                    context.fail("sound that is not finite 2 s after " + std::string(sample.name),
                                 "finite sound again");
                } else if (until > kBlock) {
                    failModule(context,
                               "sound that is not finite for " + std::to_string(until) + " frames after " +
                                   sample.name,
                               "finite sound from the next buffer on");
                }
            }
        }
    });
}

std::int64_t threadNanoseconds() {
    std::timespec now{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    constexpr std::int64_t kPerSecond = 1'000'000'000;
    return static_cast<std::int64_t>(now.tv_sec) * kPerSecond + now.tv_nsec;
}

// The shortest of several parts of the time that the signal takes: what else runs only adds to it.
std::int64_t shortestTime(const Effect& effect, PluginInstance& instance, const Signal& input, int parts) {
    std::int64_t shortest = std::numeric_limits<std::int64_t>::max();
    for (int part = 0; part < parts; ++part) {
        const std::int64_t start = threadNanoseconds();
        (void)render(effect, instance, input, {.blocks = {kBlock}});
        shortest = std::min(shortest, threadNanoseconds() - start);
    }
    return shortest;
}

void checkSilence(Context& context) {
    constexpr std::size_t kPartFrames = 24064;
    forEachEffect(context, [&](const Effect& effect) {
        const auto instance = effect.create();
        const Signal noise = music(effect, kPartFrames, context.seed());
        const Signal silence = signals::silence(noise.size(), kPartFrames);
        const std::int64_t loud = shortestTime(effect, *instance, noise, 5);
        std::size_t subnormal = 0;
        for (int part = 0; part < 6; ++part) {
            for (const std::vector<float>& samples :
                 render(effect, *instance, silence, {.blocks = {kBlock}}).output) {
                subnormal += static_cast<std::size_t>(std::ranges::count_if(
                    samples, [](float sample) { return std::fpclassify(sample) == FP_SUBNORMAL; }));
            }
        }
        context.expect(subnormal == 0,
                       std::to_string(subnormal) + " subnormal samples in silence after sound", "none");
        const std::int64_t silent = shortestTime(effect, *instance, silence, 5);
        constexpr std::int64_t kMostTimes = 5;
        context.expect(silent <= kMostTimes * loud,
                       "silence takes " + std::to_string(silent / std::max<std::int64_t>(loud, 1)) +
                           " times as long as sound",
                       "no more than 5 times");
    });
}

// What the caller computes afterwards: whether it rounds to nearest, and whether subnormals stay.
std::string alteredMode() {
    volatile float smallest = std::numeric_limits<float>::min();
    volatile float half = 0.5F;
    const bool flushes = smallest * half == 0.0F;
    return std::fegetround() != FE_TONEAREST ? "another rounding"
           : flushes                         ? "subnormal numbers flushed to zero"
                                             : "";
}

void expectOwnMode(Context& context, const std::string& when) {
    if (const std::string altered = alteredMode(); !altered.empty()) {
        context.fail(altered + " " + when, "the caller's floating-point mode");
        std::fesetenv(FE_DFL_ENV);
    }
}

// A library that is linked for fast arithmetic alters it when it is loaded.
void checkFloatMode(Context& context) {
    const auto plugin = context.open();
    expectOwnMode(context, "after loading");
    forEachEffect(context, [&](const Effect& effect) {
        const auto instance = effect.create();
        expectOwnMode(context, "after making an instance of " + effect.info.id);
        (void)render(effect, *instance, music(effect, 4096, context.seed()));
        expectOwnMode(context, "after a buffer of " + effect.info.id);
    });
}

constexpr Check kStressChecks[] = {
    {.id = "audio-corners",
     .title = "Every parameter at either end gives finite sound",
     .timeLimitS = 60,
     .run = checkCorners},
    {.id = "audio-bad-samples",
     .title = "Sound recovers from samples that are not finite or huge",
     .timeLimitS = 60,
     .run = checkBadSamples},
    {.id = "audio-silence",
     .title = "Silence is no more work than sound, and ends in zeros",
     .timeLimitS = 60,
     .run = checkSilence},
    {.id = "audio-float-mode",
     .title = "The caller's floating-point mode is as before",
     .run = checkFloatMode},
};

} // namespace

std::span<const Check> stressChecks() {
    return kStressChecks;
}

} // namespace varno::validate
