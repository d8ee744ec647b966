#include "Validate/Checks/Effects.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace varno::validate {

using signals::Signal;

void forEachEffect(Context& context, const std::function<void(const Effect& effect)>& check) {
    const auto plugin = context.open();
    bool isAny = false;
    for (const PluginInfo& info : plugin->plugins()) {
        if (info.obstacle.empty() && info.outputs > 0) {
            isAny = true;
            context.step(info.id);
            check({*plugin, info});
        }
    }
    if (!isAny) {
        context.skip(obstaclesOf(*plugin));
    }
    for (const std::string& complaint : plugin->takeComplaints()) {
        context.fail(complaint, "nothing against the rules of the format");
    }
}

void failModule(Context& context, const std::string& seen, const std::string& expected) {
    if (context.format() == Format::kModule) {
        context.fail(seen, expected);
    } else {
        context.note(seen);
    }
}

signals::BufferProcessor processorOf(PluginInstance& instance) {
    return [&instance](const float* const* inputs, float* const* outputs, std::int32_t frames) {
        instance.process(inputs, outputs, frames);
    };
}

Signal music(const Effect& effect, std::size_t frames, std::uint64_t seed) {
    const auto channels = static_cast<std::size_t>(effect.info.inputs);
    const auto start = static_cast<std::uint32_t>(seed);
    Signal signal = signals::drums(channels, frames, kCheckedRateHz, start);
    const Signal soft = signals::noise(channels, frames, start + 1, -24.0);
    for (std::size_t channel = 0; channel < channels; ++channel) {
        for (std::size_t frame = 0; frame < frames; ++frame) {
            signal[channel][frame] += soft[channel][frame];
        }
    }
    return signal;
}

signals::RenderOutcome render(const Effect& effect, PluginInstance& instance, const Signal& input,
                              signals::RenderPlan plan) {
    if (plan.blocks.empty()) {
        plan.blocks = {1024};
    }
    plan.outputs = static_cast<std::size_t>(effect.info.outputs);
    return signals::renderChecked(processorOf(instance), input, plan);
}

float largestOf(const Signal& signal) {
    float most = 0.0F;
    for (const std::vector<float>& samples : signal) {
        for (const float sample : samples) {
            const float size = std::fabs(sample);
            most = std::isnan(size) ? std::numeric_limits<float>::infinity() : std::max(most, size);
        }
    }
    return most;
}

bool isRepeatable(const Effect& effect, const Signal& input) {
    const auto first = effect.create();
    const auto second = effect.create();
    return signals::firstDifference(render(effect, *first, input).output,
                                    render(effect, *second, input).output)
        .empty();
}

double randomValue(const Parameter& parameter, std::mt19937_64& random) {
    const double span = parameter.maximum - parameter.minimum;
    if (parameter.steps > 1) {
        const auto step = static_cast<double>(random() % static_cast<std::uint64_t>(parameter.steps));
        return parameter.minimum + step * span / static_cast<double>(parameter.steps - 1);
    }
    // Single precision, which is what some formats keep.
    constexpr double kMost = 18446744073709551615.0;
    const double value = parameter.minimum + static_cast<double>(random()) / kMost * span;
    return std::clamp(static_cast<double>(static_cast<float>(value)), parameter.minimum, parameter.maximum);
}

ValueVector randomValues(const PluginInstance& instance, std::mt19937_64& random) {
    ValueVector values;
    for (const Parameter& parameter : instance.parameters()) {
        const double value = randomValue(parameter, random);
        values.push_back(parameter.isBypass ? parameter.defaultValue : value);
    }
    return values;
}

void setAll(PluginInstance& instance, const ValueVector& values) {
    for (std::size_t index = 0; index < values.size(); ++index) {
        instance.set(index, values[index]);
    }
}

ValueVector allValues(PluginInstance& instance) {
    ValueVector values;
    for (std::size_t index = 0; index < instance.parameters().size(); ++index) {
        values.push_back(instance.get(index));
    }
    return values;
}

} // namespace varno::validate
