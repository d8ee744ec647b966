#include "Shared/RunningEffect.h"

#include "DemoGain_Oversampling.h"

#include <algorithm>

namespace varno {

namespace {

InstanceSetup instanceSetupOf(const RunSetup& setup) {
    InstanceSetup result;
    result.channels = setup.channels;
    result.sampleRateHz = setup.sampleRateHz;
    result.maximumFrames = kBufferFrames;
    result.offline = setup.isOffline;
    return result;
}

} // namespace

RunningEffect::RunningEffect(std::shared_ptr<Module> module, const RunSetup& setup)
    : mInstance(std::move(module), instanceSetupOf(setup)),
      mValues(mInstance),
      mOversampling(mInstance, {.routineLatencyFrames = kDemoGain_LatencyFrames,
                                .factor = setup.quality,
                                .canChange = setup.canChangeQuality}),
      mBypass(mOversampling),
      mMeters(mInstance.meters().ids().size(), MeterHold(setup.sampleRateHz)) {
}

void RunningEffect::reset() {
    mBypass.reset();
    for (MeterHold& meter : mMeters) {
        meter.restart();
    }
}

std::int32_t RunningEffect::begin(std::int32_t most) noexcept {
    mValues.giveTo(mInstance);
    return std::min({most, kBufferFrames, mValues.framesHeld()});
}

void RunningEffect::process(const float* const* inputs, float* const* outputs, std::int32_t frames) noexcept {
    mBypass.process(inputs, outputs, frames);
    mValues.passed(frames);
}

} // namespace varno
