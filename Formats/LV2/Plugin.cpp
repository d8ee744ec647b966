#include "Plugin.h"

#include <algorithm>

namespace varno {

namespace {

InstanceSetup setupFor(int32_t channels, double sampleRateHz) {
    InstanceSetup setup;
    setup.channels = channels;
    setup.sampleRateHz = sampleRateHz;
    setup.maximumFrames = kBufferFrames;
    return setup;
}

} // namespace

Plugin::Plugin(std::shared_ptr<Module> module, int32_t channels, double sampleRateHz)
    : mInstance(std::move(module), setupFor(channels, sampleRateHz)),
      mPorts(portsOf(mInstance)),
      mValues(mInstance, mPorts),
      mBypass(static_cast<size_t>(channels), kBufferFrames, sampleRateHz),
      mMeters(mInstance.meters().ids().size(), {MeterHold(sampleRateHz)}),
      mFirstControl(std::ranges::find(mPorts, PortKind::Parameter, &PortInfo::kind)->index),
      mInputPorts(static_cast<size_t>(channels)),
      mOutputPorts(static_cast<size_t>(channels)),
      mInputs(static_cast<size_t>(channels)),
      mOutputs(static_cast<size_t>(channels)),
      mSilence(kBufferFrames),
      mNowhere(kBufferFrames) {
}

void Plugin::connect(uint32_t port, void* data) noexcept {
    if (port >= mPorts.size()) {
        return;
    }
    auto* const samples = static_cast<float*>(data);
    const PortInfo& info = mPorts[port];
    switch (info.kind) {
    case PortKind::AudioIn:
        mInputPorts[info.item] = samples;
        break;
    case PortKind::AudioOut:
        mOutputPorts[info.item] = samples;
        break;
    case PortKind::Parameter:
        mValues.connect(info.index - mFirstControl, samples);
        break;
    case PortKind::Enabled:
        mEnabledPort = samples;
        break;
    case PortKind::Meter:
        mMeters[info.item].port = samples;
        break;
    case PortKind::Latency:
        mLatencyPort = samples;
        break;
    }
}

void Plugin::activate() {
    mInstance.reset();
    mValues.restart();
    mBypass.restart();
    for (Meter& meter : mMeters) {
        meter.hold.restart();
    }
}

bool Plugin::isEnabled() const noexcept {
    return mEnabledPort == nullptr || !(*mEnabledPort <= 0.0F);
}

void Plugin::run(uint32_t frames) noexcept {
    const bool enabled = isEnabled();
    if (frames > 0) {
        mValues.read();
    }
    for (uint32_t done = 0; done < frames;) {
        mValues.giveTo(mInstance);
        const auto atMost = static_cast<uint32_t>(std::min(kBufferFrames, mValues.framesHeld()));
        const auto length = static_cast<int32_t>(std::min(frames - done, atMost));
        point(done);
        process(length, enabled);
        mValues.passed(length);
        done += static_cast<uint32_t>(length);
    }
    if (frames == 0) {
        tell(0);
    }
    if (mLatencyPort != nullptr) {
        *mLatencyPort = static_cast<float>(kLatencyFrames);
    }
}

void Plugin::point(uint32_t offset) noexcept {
    for (size_t channel = 0; channel < mInputs.size(); ++channel) {
        const float* const input = mInputPorts[channel];
        mInputs[channel] = input != nullptr ? input + offset : mSilence.data();
        float* const output = mOutputPorts[channel];
        mOutputs[channel] = output != nullptr ? output + offset : mNowhere.data();
    }
}

void Plugin::process(int32_t frames, bool enabled) noexcept {
    mBypass.keep(mInputs, frames);
    mInstance.process(mInputs.data(), mOutputs.data(), frames);
    mBypass.blend(mOutputs, frames, enabled);
    tell(frames);
}

void Plugin::tell(int32_t frames) noexcept {
    const MeterBank& meters = mInstance.meters();
    for (size_t tap = 0; tap < mMeters.size(); ++tap) {
        const float shown = mMeters[tap].hold.show(meters.value(tap), frames);
        if (mMeters[tap].port != nullptr) {
            *mMeters[tap].port = shown;
        }
    }
}

} // namespace varno
