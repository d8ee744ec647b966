/// The effect at a multiple of the sound's rate.
#ifndef VARNO_TESTS_INTEGRATION_OVERSAMPLEDEFFECT_H
#define VARNO_TESTS_INTEGRATION_OVERSAMPLEDEFFECT_H

#include "DemoGain_Oversampling.h"
#include "Host/Oversampling/Oversampling.h"
#include "Surround/Settings/EffectHost.h"
#include "Tests/Integration/HostedEffect.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace varno::test {

/// An instance with all factors that its rate allows.
class OversampledInstance {
public:
    OversampledInstance(const std::shared_ptr<Module>& module, std::int32_t factor, std::int32_t channels,
                        double sampleRateHz, const ParameterValues& values)
        : mInstance(makeInstance(module, channels, sampleRateHz)),
          mOversampling(*mInstance, {.routineLatencyFrames = kDemoGain_LatencyFrames, .factor = factor}) {
        automate(*mInstance, values);
    }

    Oversampling* operator->() { return &mOversampling; }

    /// Processes a sound of one channel in place.
    void process(std::vector<float>& sound) {
        float* const channel = sound.data();
        mOversampling.process(&channel, &channel, static_cast<std::int32_t>(sound.size()));
    }

private:
    std::unique_ptr<Instance> mInstance;
    Oversampling mOversampling;
};

/// As HostedEffect, with the rules of the effect for oversampling.
class OversampledEffect : public HostedEffect {
protected:
    OversampledEffect() { options.oversampling = effectHostOptions().oversampling; }
};

} // namespace varno::test

#endif
