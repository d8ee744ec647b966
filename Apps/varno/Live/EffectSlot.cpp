#include "EffectSlot.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace varno {

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

} // namespace varno
