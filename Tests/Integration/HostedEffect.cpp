#include "Tests/Integration/HostedEffect.h"

namespace varno::test {

std::unique_ptr<Instance> makeInstance(const std::shared_ptr<Module>& module, std::int32_t channels,
                                       double sampleRateHz) {
    InstanceSetup setup;
    setup.channels = channels;
    setup.sampleRateHz = sampleRateHz;
    setup.maximumFrames = 256;
    return std::make_unique<Instance>(module, setup);
}

void automate(Instance& instance, const ParameterValues& values) {
    for (const auto& [id, value] : values) {
        instance.setNormalized(id, value);
    }
}

ParameterValues valuesOf(const Instance& instance) {
    ParameterValues values;
    for (const ParameterInfo& parameter : instance.parameters()) {
        values[parameter.id] = instance.normalized(parameter.id);
    }
    return values;
}

ParameterValues randomValues(std::mt19937& ioEngine) {
    ParameterValues values = automationOf({});
    values.erase("MasterBypassID");
    for (auto& [id, value] : values) {
        value = static_cast<float>(ioEngine()) / static_cast<float>(std::mt19937::max());
    }
    return values;
}

ParameterValues automationOf(const AlgParameters& p) {
    return {{"MasterBypassID", p.bypass ? 1.0 : 0.0},
            {"Gain", p.gain},
            {"HP", p.highPass},
            {"Band", p.band},
            {"Atk", p.attack},
            {"Rls", p.release},
            {"ASw", 0.0},
            {"UK", p.uk},
            {"Volume", p.volume},
            {"Hot", p.hot},
            {"Ratio", p.ratio},
            {"Mix", p.mix},
            {"HSw", p.harmonics},
            {"LinkSw", p.link}};
}

BufferProcessor processorOf(Instance& instance) {
    return [&instance](const float* const* inputs, float* const* outputs, std::int32_t frames) {
        instance.process(inputs, outputs, frames);
    };
}

Signal render(Instance& instance, const Signal& input) {
    RenderPlan plan;
    plan.blocks = {64, 1, 250, 0, 700, 37};
    const RenderOutcome outcome = renderChecked(processorOf(instance), input, plan);
    EXPECT_EQ(textOf(outcome.complaints), "");
    return outcome.output;
}

} // namespace varno::test
