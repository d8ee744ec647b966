#include "LiveEffect.h"

namespace varno {
namespace {

// Whatever the sound system's period is, an instance takes at most so many frames at a time: its coefficients
// and meters move once per buffer.
constexpr int kMostFrames = 512;

std::unique_ptr<Instance> makeInstance(const std::shared_ptr<Module>& module, int channels, double rateHz) {
    return std::make_unique<Instance>(
        module, InstanceSetup{.channels = channels, .sampleRateHz = rateHz, .maximumFrames = kMostFrames});
}

void copyValues(const Instance& from, Instance& to) {
    for (const auto& parameter : from.parameters()) {
        to.setNormalized(parameter.id, from.normalized(parameter.id));
    }
}

} // namespace

LiveEffect::LiveEffect(std::shared_ptr<Module> module, int channels, double rateHz)
    : mModule(std::move(module)),
      mInstance(makeInstance(mModule, channels, rateHz)) {
    mSlot.give(*mInstance);
}

LiveProcess LiveEffect::process() {
    return [this, channels = mInstance->setup().channels](const float* const* inputs, float* const* outputs,
                                                          int frames) {
        mSlot.process(inputs, outputs, channels, frames);
    };
}

void LiveEffect::setRate(double rateHz) {
    auto next = makeInstance(mModule, mInstance->setup().channels, rateHz);
    copyValues(*mInstance, *next);
    mSlot.take();
    mInstance = std::move(next);
    mSlot.give(*mInstance);
}

} // namespace varno
