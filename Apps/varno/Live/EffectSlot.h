#ifndef VARNO_APPS_VARNO_LIVE_EFFECTSLOT_H
#define VARNO_APPS_VARNO_LIVE_EFFECTSLOT_H

#include "Host/Instance.h"

#include <atomic>

namespace varno {

/// The place where a sound system's thread finds the instance to process with. Whoever uses the instance
/// holds it meanwhile, so that the place is empty; the audio thread never waits for it.
class EffectSlot {
public:
    /// Puts an instance into the empty place. It outlives its stay there. [main]
    void give(Instance& instance) {
        mInstance.store(&instance, std::memory_order_release);
        mIsWanted.store(false, std::memory_order_release);
    }
    /// Empties the place; returns once the audio thread has left the instance, after one block at most. The
    /// instance must have been given. [main]
    void take();
    /// Processes a block; silence where the place is empty. [audio]
    void process(const float* const* inputs, float* const* outputs, int channels, int frames) noexcept;

private:
    std::atomic<Instance*> mInstance{nullptr};
    std::atomic<bool> mIsWanted{
        false}; ///< By the main thread: the audio thread leaves it alone from then on.
};

} // namespace varno

#endif
