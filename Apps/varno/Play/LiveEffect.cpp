#include "Play/LiveEffect.h"

#include "DemoGain_Oversampling.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace varno {
namespace {

// An instance processes at most this many frames at a time, independent of the sound system's period: its
// coefficients and meters change once per buffer.
constexpr int kLiveBlockFrames = 512;

InstanceSetup setupFor(int channels, double rateHz) {
    return {.channels = channels, .sampleRateHz = rateHz, .maximumFrames = kLiveBlockFrames};
}

void copyValues(const Instance& from, Instance& to) {
    for (const auto& parameter : from.parameters()) {
        to.setNormalized(parameter.id, from.normalized(parameter.id));
    }
}

} // namespace

void EffectSlot::take() {
    mIsWanted.store(true, std::memory_order_release);
    while (mEffect.exchange(nullptr, std::memory_order_acquire) == nullptr) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1)); // the audio thread has it
    }
}

void EffectSlot::process(const float* const* inputs, float* const* outputs, int channels,
                         int frames) noexcept {
    Bypass* const effect = mIsWanted.load(std::memory_order_acquire)
                               ? nullptr
                               : mEffect.exchange(nullptr, std::memory_order_acquire);
    if (effect != nullptr) {
        effect->process(inputs, outputs, frames);
        mEffect.store(effect, std::memory_order_release);
        return;
    }
    for (int channel = 0; channel < channels; ++channel) {
        std::fill_n(outputs[channel], frames, 0.0F);
    }
}

LiveEffect::Running::Running(const std::shared_ptr<Module>& module, int channels, double rateHz,
                             std::int32_t quality)
    : instance(module, setupFor(channels, rateHz)),
      effect(instance,
             {.routineLatencyFrames = kDemoGain_LatencyFrames, .factor = quality, .canChange = true}),
      bypass(effect) {
}

LiveEffect::LiveEffect(std::shared_ptr<Module> module, int channels, double rateHz, std::int32_t quality)
    : mModule(std::move(module)),
      mRunning(std::make_unique<Running>(mModule, channels, rateHz, quality)) {
    mSlot.give(mRunning->bypass);
}

LiveProcess LiveEffect::process() {
    return [this, channels = mRunning->instance.setup().channels](const float* const* inputs,
                                                                  float* const* outputs, int frames) {
        mSlot.process(inputs, outputs, channels, frames);
    };
}

void LiveEffect::setRate(double rateHz) {
    auto next = std::make_unique<Running>(mModule, mRunning->instance.setup().channels, rateHz,
                                          mRunning->effect.wish());
    copyValues(mRunning->instance, next->instance);
    next->bypass.set(isBypassed());
    mSlot.take();
    mRunning = std::move(next);
    mSlot.give(mRunning->bypass);
}

} // namespace varno
