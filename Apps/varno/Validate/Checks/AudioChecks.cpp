// Sound: what a plug-in does with its buffers, and that the same input gives the same output.
#include "Validate/Check.h"
#include "Validate/Checks/Effects.h"

#include <cmath>
#include <thread>

namespace varno::validate {
namespace {

using signals::BufferLayout;
using signals::firstDifference;
using signals::RenderOutcome;
using signals::Signal;

constexpr std::size_t kMusicFrames = 12000;

std::string layoutName(BufferLayout layout) {
    switch (layout) {
    case BufferLayout::kSeparate:
        return "separate buffers";
    case BufferLayout::kInPlace:
        return "outputs in the place of their inputs";
    case BufferLayout::kCrossed:
        return "outputs in the place of other inputs";
    case BufferLayout::kSharedInput:
        return "one input for all channels";
    }
    return {};
}

void failComplaints(Context& context, const RenderOutcome& outcome, const std::string& where) {
    for (const std::string& complaint : outcome.complaints) {
        context.fail(std::string(complaint).append(" with ").append(where),
                     "every output sample written and finite, and nothing else");
    }
}

void checkLayout(Context& context, const Effect& effect, const Signal& input, BufferLayout layout,
                 bool isRepeatableEffect) {
    context.step(effect.info.id + " with " + layoutName(layout));
    const auto instance = effect.create();
    const RenderOutcome outcome = render(effect, *instance, input, {.layout = layout});
    // Of what lies in shared memory, the checker sees every sample as written.
    failComplaints(context, outcome, layoutName(layout));
    Signal same = input;
    if (layout == BufferLayout::kSharedInput) {
        same.assign(input.size(), input.front());
    }
    const auto other = effect.create();
    const std::string difference = firstDifference(render(effect, *other, same).output, outcome.output);
    if (!difference.empty() && isRepeatableEffect) {
        const std::string seen = "other samples with " + layoutName(layout) + ": " + difference;
        if (layout == BufferLayout::kCrossed) {
            failModule(context, seen, "the samples of separate buffers");
        } else {
            context.fail(seen, "the samples of separate buffers");
        }
    }
}

void checkBuffers(Context& context) {
    forEachEffect(context, [&](const Effect& effect) {
        const Signal input = music(effect, kMusicFrames, context.seed());
        const bool repeats = isRepeatable(effect, input);
        const auto instance = effect.create();
        const Capabilities can = instance->capabilities();
        const std::size_t offset = can.hasUnalignedBuffers ? 1 : 0;
        const std::vector<std::int32_t> blocks = {1024, 333};
        failComplaints(context, render(effect, *instance, input, {.blocks = blocks, .offset = offset}),
                       "separate buffers");
        checkLayout(context, effect, input, BufferLayout::kSharedInput, repeats);
        if (can.runsInPlace && effect.info.inputs == effect.info.outputs) {
            checkLayout(context, effect, input, BufferLayout::kInPlace, repeats);
            checkLayout(context, effect, input, BufferLayout::kCrossed, repeats);
        }
    });
}

void checkSlicing(Context& context) {
    const std::vector<std::vector<std::int32_t>> slicings = {
        {1}, {17}, {64}, {127}, {256}, {4096}, {0, 511, 1, 32}, {2048, 3, 0, 700, 129}};
    forEachEffect(context, [&](const Effect& effect) {
        const Signal input = music(effect, kMusicFrames, context.seed());
        const auto reference = effect.create();
        const Signal expected = render(effect, *reference, input).output;
        for (const std::vector<std::int32_t>& blocks : slicings) {
            const std::string name = "buffers of " +
                                     std::to_string(blocks.front() > 0 ? blocks[0] : blocks[1]) +
                                     (blocks.size() > 1 ? " and other lengths" : " frames");
            context.step(effect.info.id + " with " + name);
            const auto instance = effect.create();
            const std::string difference =
                firstDifference(expected, render(effect, *instance, input, {.blocks = blocks}).output);
            if (!difference.empty()) {
                failModule(context,
                           std::string("other samples with ").append(name).append(": ").append(difference),
                           "the samples of buffers of 1024 frames");
                return;
            }
        }
    });
}

void checkRepeating(Context& context) {
    forEachEffect(context, [&](const Effect& effect) {
        const Signal input = music(effect, kMusicFrames, context.seed());
        const auto instance = effect.create();
        const Signal first = render(effect, *instance, input).output;
        const auto other = effect.create();
        std::string difference = firstDifference(first, render(effect, *other, input).output);
        if (!difference.empty()) {
            failModule(context, "two new instances differ: " + difference, "the same samples");
            return;
        }
        if (instance->capabilities().hasReset) {
            context.step(effect.info.id + " after a reset");
            instance->reset();
            difference = firstDifference(first, render(effect, *instance, input).output);
            if (!difference.empty()) {
                failModule(context, "an instance that was reset differs: " + difference,
                           "the samples of a new one");
            }
        }
    });
}

void checkInstances(Context& context) {
    constexpr std::size_t kThreads = 8;
    constexpr std::size_t kEach = 8;
    forEachEffect(context, [&](const Effect& effect) {
        const Signal input = music(effect, kMusicFrames / 4, context.seed());
        if (!isRepeatable(effect, input)) {
            context.note("not compared: its sound differs from run to run");
            return;
        }
        const auto alone = effect.create();
        const Signal expected = render(effect, *alone, input).output;
        std::vector<std::unique_ptr<PluginInstance>> instances(kThreads * kEach);
        for (auto& instance : instances) {
            instance = effect.create();
        }
        std::vector<std::string> differences(kThreads);
        std::vector<std::thread> threads;
        for (std::size_t thread = 0; thread < kThreads; ++thread) {
            threads.emplace_back([&, thread] {
                for (std::size_t i = 0; i < kEach && differences[thread].empty(); ++i) {
                    differences[thread] = firstDifference(
                        expected,
                        render(effect, *instances[thread * kEach + i], input, {.blocks = {1024}}).output);
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        for (const std::string& difference : differences) {
            context.expect(difference.empty(), "one of 64 instances on 8 threads differs: " + difference,
                           "the samples of an instance alone");
        }
    });
}

void checkRates(Context& context) {
    constexpr double kRates[] = {8000.0,   11025.0,  22050.0,   32000.0,   44100.0,
                                 48000.0,  88200.0,  96000.0,   176400.0,  192000.0,
                                 384000.0, 768000.0, 1234.5678, 45678.901, 123456.78};
    forEachEffect(context, [&](const Effect& effect) {
        const Signal input = music(effect, kMusicFrames, context.seed());
        std::string refused;
        for (const double rateHz : kRates) {
            std::string name = std::to_string(rateHz);
            name.erase(name.find_last_not_of('0') + 1);
            name.erase(name.find_last_not_of('.') + 1);
            context.step(effect.info.id + " at " + name + " Hz");
            try {
                const auto instance = effect.create(rateHz);
                context.expect(std::isfinite(largestOf(render(effect, *instance, input).output)),
                               "a sample that is not finite at " + name + " Hz",
                               "finite sound, or no instance");
            } catch (const PluginError&) {
                refused += (refused.empty() ? "" : ", ") + name;
            }
        }
        if (!refused.empty()) {
            context.note("refuses rates of " + refused + " Hz");
        }
    });
}

constexpr Check kAudioChecks[] = {
    {.id = "audio-buffers",
     .title = "Only the outputs are written, whole and finite, wherever buffers lie",
     .run = checkBuffers},
    {.id = "audio-slicing", .title = "The lengths of buffers do not change the sound", .run = checkSlicing},
    {.id = "audio-repeating",
     .title = "New instances and those that were reset sound alike",
     .run = checkRepeating},
    {.id = "audio-instances",
     .title = "64 instances on 8 threads do not affect each other",
     .timeLimitS = 60,
     .run = checkInstances},
    {.id = "audio-rates",
     .title = "Every sample rate is refused or processed",
     .timeLimitS = 60,
     .run = checkRates},
};

} // namespace

std::span<const Check> audioChecks() {
    return kAudioChecks;
}

} // namespace varno::validate
