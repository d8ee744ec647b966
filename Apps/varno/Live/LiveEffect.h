#ifndef VARNO_APPS_VARNO_LIVE_LIVEEFFECT_H
#define VARNO_APPS_VARNO_LIVE_LIVEEFFECT_H

#include "EffectSlot.h"
#include "LiveBackend.h"

#include <memory>
#include <optional>

namespace varno {

/// An effect in live use: an instance at the sound system's rate, and another one with the same values where
/// the rate changes. [main]
class LiveEffect {
public:
    /// @param channels of the module's variant @throws HostError where the rate is refused
    LiveEffect(std::shared_ptr<Module> module, int channels, double rateHz);

    /// The present one, until setRate().
    Instance& instance() { return *mInstance; }
    /// What the sound system calls; only while this object lives. [main], the call itself [audio]
    LiveProcess process();
    /// Goes on at another rate, with the same values; silence meanwhile. Nobody else may use instance().
    /// @throws HostError where the rate is refused
    void setRate(double rateHz);

private:
    std::shared_ptr<Module> mModule;
    EffectSlot mSlot;
    std::unique_ptr<Instance> mInstance;
};

} // namespace varno

#endif
