#ifndef VARNO_APPS_VARNO_PLAY_LIVEEFFECT_H
#define VARNO_APPS_VARNO_PLAY_LIVEEFFECT_H

#include "Host/Bypass.h"
#include "Host/Instance.h"
#include "Session/LiveBackend.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>

namespace varno {

/// Hands an instance with its bypass to a sound system's thread and takes it back. The thread that uses it
/// has removed it from the slot meanwhile; the audio thread never waits.
class EffectSlot {
public:
    /// Puts an instance into the empty slot. It must exist until take() has returned. [main]
    void give(Bypass& effect) {
        mEffect.store(&effect, std::memory_order_release);
        mIsWanted.store(false, std::memory_order_release);
    }
    /// Empties the slot; returns once the audio thread no longer uses the instance, after one block at most.
    /// An instance must have been given. [main]
    void take();
    /// Processes a block; silence where the slot is empty. [audio]
    void process(const float* const* inputs, float* const* outputs, int channels, int frames) noexcept;

private:
    std::atomic<Bypass*> mEffect{nullptr};
    std::atomic<bool> mIsWanted{false}; ///< By the main thread: the audio thread then outputs silence.
};

/// An effect in live use: an instance at the sound system's rate, and another one with the same values where
/// the rate changes. [main]
class LiveEffect {
public:
    /// @param channels of the module's variant @param quality factor of oversampling
    /// @throws HostError where the rate is refused
    LiveEffect(std::shared_ptr<Module> module, int channels, double rateHz, std::int32_t quality = 1);

    /// The present one, until setRate().
    Instance& instance() { return mRunning->instance; }
    /// The bypass without clicks, which a change of the rate does not end; the effect's own master bypass is
    /// a parameter.
    void setBypassed(bool isBypassed) { mRunning->bypass.set(isBypassed); }
    bool isBypassed() const { return mRunning->bypass.isBypassed(); }
    /// The factor of oversampling, and the latency that it brings; see Oversampling.
    Oversampling& oversampling() { return mRunning->effect; }
    /// What the sound system calls; only while this object lives. [main], the call itself [audio]
    LiveProcess process();
    /// Continues at another rate with the same values, bypass and wish for a quality; silence meanwhile.
    /// Nothing else may use instance().
    /// @throws HostError where the rate is refused
    void setRate(double rateHz);

private:
    struct Running {
        Running(const std::shared_ptr<Module>& module, int channels, double rateHz, std::int32_t quality);

        Instance instance;
        Oversampling effect;
        Bypass bypass;
    };

    std::shared_ptr<Module> mModule;
    EffectSlot mSlot;
    std::unique_ptr<Running> mRunning;
};

} // namespace varno

#endif
