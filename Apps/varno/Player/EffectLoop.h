#ifndef VARNO_APPS_VARNO_PLAYER_EFFECTLOOP_H
#define VARNO_APPS_VARNO_PLAYER_EFFECTLOOP_H

#include "AudioLoop.h"
#include "Host/Instance.h"

namespace varno {

/// A loop heard through an effect: what a player pulls its blocks from.
class EffectLoop {
public:
    /// @param instance of as many channels; outlives this object, nothing else processes it
    EffectLoop(Instance& instance, AudioLoop loop)
        : mInstance(instance),
          mLoop(std::move(loop)) {}

    /// Writes the next frames to one pointer per channel. No lock, no allocation, no system call, no
    /// exception. [audio]
    void pull(float* const* channels, int frames) noexcept {
        mLoop.read(channels, frames);
        mInstance.process(channels, channels, frames);
    }

private:
    Instance& mInstance;
    AudioLoop mLoop;
};

} // namespace varno

#endif
