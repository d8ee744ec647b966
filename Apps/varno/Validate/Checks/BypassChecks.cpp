// Bypass and latency.
#include "Validate/Check.h"
#include "Validate/Checks/Effects.h"

#include <algorithm>

namespace varno::validate {
namespace {

using signals::Signal;

// A host's switch glides where the format has it so: a second is more than any takes.
constexpr std::size_t kSettleFrames = 48128;
constexpr std::size_t kComparedFrames = 12032;

// What bypass copies: music, then subnormal numbers, which a module copies as well.
Signal bypassedInput(const Context& context, const Effect& effect) {
    Signal input = music(effect, kSettleFrames + kComparedFrames, context.seed());
    if (context.format() == Format::kModule) {
        const Signal tiny = signals::subnormals(input.size(), kComparedFrames / 2, 1);
        for (std::size_t channel = 0; channel < input.size(); ++channel) {
            std::ranges::copy(tiny[channel], input[channel].end() - kComparedFrames / 2);
        }
    }
    return input;
}

// The first frame that is not the input delayed, of those that are compared; nothing where all are.
std::string firstWrong(const Signal& input, const Signal& output, std::size_t delay) {
    for (std::size_t channel = 0; channel < output.size(); ++channel) {
        const auto begin = input[channel].begin() + static_cast<std::ptrdiff_t>(kSettleFrames - delay);
        const std::vector<float> expected(begin, begin + kComparedFrames);
        const std::vector<float> found(output[channel].begin() + kSettleFrames, output[channel].end());
        const std::string difference = signals::firstDifference(expected, found);
        if (!difference.empty()) {
            return "channel " + std::to_string(channel) + ", " + difference;
        }
    }
    return {};
}

void checkBypassed(Context& context, const Effect& effect, const std::string& settings, std::size_t bypass,
                   double (*valueOf)(const Parameter& parameter)) {
    const auto instance = effect.create();
    for (std::size_t index = 0; index < instance->parameters().size(); ++index) {
        const Parameter& parameter = instance->parameters()[index];
        if (index != bypass) {
            instance->set(index, valueOf(parameter));
            continue;
        }
        // The other end than that of the default: a plug-in begins without bypass.
        const bool isDefaultMinimum =
            parameter.defaultValue - parameter.minimum <= parameter.maximum - parameter.defaultValue;
        instance->set(index, isDefaultMinimum ? parameter.maximum : parameter.minimum);
    }
    const Signal input = bypassedInput(context, effect);
    const Signal output = render(effect, *instance, input).output;
    const std::int32_t latency = instance->capabilities().hasLatency ? instance->latencyFrames() : 0;
    if (!context.expect(latency >= 0 && static_cast<std::size_t>(latency) < kSettleFrames,
                        "a latency of " + std::to_string(latency) + " frames " + settings,
                        "one of less than a second")) {
        return;
    }
    // A module's own bypass is a copy; the latency of its routine is none of its business.
    const std::size_t delay = context.format() == Format::kModule ? 0 : static_cast<std::size_t>(latency);
    const std::string wrong = firstWrong(input, output, delay);
    context.expect(wrong.empty(), "a bypass that changes the sound " + settings + ": " + wrong,
                   "the input, " + std::to_string(delay) + " frames later");
}

void checkBypass(Context& context) {
    bool isAny = false;
    forEachEffect(context, [&](const Effect& effect) {
        const auto instance = effect.create();
        const auto& parameters = instance->parameters();
        const auto found = std::ranges::find_if(parameters, &Parameter::isBypass);
        if (found == parameters.end() || effect.info.inputs != effect.info.outputs) {
            return;
        }
        isAny = true;
        const auto bypass = static_cast<std::size_t>(found - parameters.begin());
        checkBypassed(context, effect, "at its defaults", bypass,
                      [](const Parameter& parameter) { return parameter.defaultValue; });
        checkBypassed(context, effect, "with everything at its least", bypass,
                      [](const Parameter& parameter) { return parameter.minimum; });
        checkBypassed(context, effect, "with everything at its most", bypass,
                      [](const Parameter& parameter) { return parameter.maximum; });
    });
    if (!isAny) {
        context.skip("no effect has a bypass that the format knows as such");
    }
}

constexpr Check kBypassChecks[] = {
    {.id = "bypass-null",
     .title = "Bypass is the input, later by the latency that is reported",
     .run = checkBypass},
};

} // namespace

std::span<const Check> bypassChecks() {
    return kBypassChecks;
}

} // namespace varno::validate
