#include "Play/LiveEffect.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace varno {
namespace {

// An instance processes at most this many frames at a time, independent of the sound system's period: its
// coefficients and meters change once per buffer.
constexpr int kLiveBlockFrames = 512;

std::unique_ptr<Instance> makeInstance(const std::shared_ptr<Module>& module, int channels, double rateHz) {
    return std::make_unique<Instance>(
        module,
        InstanceSetup{.channels = channels, .sampleRateHz = rateHz, .maximumFrames = kLiveBlockFrames});
}

void copyValues(const Instance& from, Instance& to) {
    for (const auto& parameter : from.parameters()) {
        to.setNormalized(parameter.id, from.normalized(parameter.id));
    }
}

} // namespace

void EffectSlot::take() {
    mIsWanted.store(true, std::memory_order_release);
    while (mInstance.exchange(nullptr, std::memory_order_acquire) == nullptr) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1)); // the audio thread has it
    }
}

void EffectSlot::process(const float* const* inputs, float* const* outputs, int channels,
                         int frames) noexcept {
    Instance* const instance = mIsWanted.load(std::memory_order_acquire)
                                   ? nullptr
                                   : mInstance.exchange(nullptr, std::memory_order_acquire);
    if (instance != nullptr) {
        instance->process(inputs, outputs, frames);
        mInstance.store(instance, std::memory_order_release);
        return;
    }
    for (int channel = 0; channel < channels; ++channel) {
        std::fill_n(outputs[channel], frames, 0.0F);
    }
}

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
