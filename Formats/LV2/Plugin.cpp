#include "LV2/Plugin.h"

#include <algorithm>
#include <cmath>

namespace varno {

namespace {

InstanceSetup setupFor(std::int32_t channels, double sampleRateHz) {
    InstanceSetup setup;
    setup.channels = channels;
    setup.sampleRateHz = sampleRateHz;
    setup.maximumFrames = kBufferFrames;
    return setup;
}

} // namespace

BypassFade::BypassFade(std::size_t channels, std::int32_t maximumFrames, double sampleRateHz)
    : mKept(channels, std::vector<float>(static_cast<std::size_t>(kLatencyFrames + maximumFrames))),
      mFadeFrames(static_cast<std::int32_t>(std::lround(kFadeSeconds * sampleRateHz))) {
}

void BypassFade::restart() noexcept {
    mIsStarting = true;
    for (std::vector<float>& kept : mKept) {
        std::fill_n(kept.begin(), kLatencyFrames, 0.0F);
    }
}

void BypassFade::keep(std::span<const float* const> inputs, std::int32_t frames, bool isEnabled) noexcept {
    mEnd = isEnabled ? mFadeFrames : 0;
    if (mIsStarting) {
        mPosition = mEnd;
        mIsStarting = false;
    }
    for (std::size_t channel = 0; channel < mKept.size(); ++channel) {
        if (isAllProcessed()) {
            mKept[channel].front() = inputs[channel][frames - kLatencyFrames];
        } else {
            std::copy_n(inputs[channel], frames, mKept[channel].begin() + kLatencyFrames);
        }
    }
}

void BypassFade::blend(std::span<float* const> outputs, std::int32_t frames) noexcept {
    if (isAllProcessed()) {
        return;
    }
    for (std::size_t channel = 0; channel < mKept.size(); ++channel) {
        std::vector<float>& kept = mKept[channel];
        if (mPosition != mEnd) {
            fade(outputs[channel], kept.data(), frames);
        } else {
            std::copy_n(kept.begin(), frames, outputs[channel]);
        }
        std::copy_n(kept.begin() + frames, kLatencyFrames, kept.begin());
    }
    mPosition += std::clamp(mEnd - mPosition, -frames, frames);
}

void BypassFade::fade(float* output, const float* bypassed, std::int32_t frames) const noexcept {
    const std::int32_t direction = mEnd > mPosition ? 1 : -1;
    for (std::int32_t frame = 0; frame < frames; ++frame) {
        const std::int32_t position = std::clamp(mPosition + direction * (frame + 1), 0, mFadeFrames);
        if (position == 0) {
            output[frame] = bypassed[frame];
        } else if (position < mFadeFrames) {
            const float share = static_cast<float>(position) / static_cast<float>(mFadeFrames);
            output[frame] = bypassed[frame] + (output[frame] - bypassed[frame]) * share;
        }
    }
}

MeterHold::MeterHold(double sampleRateHz)
    : mHoldFrames(static_cast<std::int32_t>(std::ceil(kMeterHoldSeconds * sampleRateHz))) {
}

void MeterHold::restart() noexcept {
    mFramesLeft = 0;
    mShown = 0.0F;
}

Plugin::Plugin(std::shared_ptr<Module> module, std::int32_t channels, double sampleRateHz)
    : mInstance(std::move(module), setupFor(channels, sampleRateHz)),
      mPorts(portsOf(mInstance)),
      mValues(mInstance, mPorts),
      mBypass(static_cast<std::size_t>(channels), kBufferFrames, sampleRateHz),
      mMeters(mInstance.meters().ids().size(), MeterHold(sampleRateHz)),
      mUnconnected(mPorts.size()),
      mOwnValues(mPorts.size()),
      mInputPort(firstPort(PortKind::kAudioIn)),
      mOutputPort(firstPort(PortKind::kAudioOut)),
      mControlPort(firstPort(PortKind::kParameter)),
      mEnabledPort(firstPort(PortKind::kEnabled)),
      mMeterPort(firstPort(PortKind::kMeter)),
      mLatencyPort(firstPort(PortKind::kLatency)),
      mInputs(static_cast<std::size_t>(channels)),
      mOutputs(static_cast<std::size_t>(channels)),
      mSilence(kBufferFrames),
      mNowhere(kBufferFrames) {
    unconnect();
}

std::size_t Plugin::firstPort(PortKind kind) const {
    return std::ranges::find(mPorts, kind, &PortInfo::kind)->index;
}

void Plugin::unconnect() {
    for (const PortInfo& port : mPorts) {
        if (port.kind != PortKind::kAudioIn && port.kind != PortKind::kAudioOut) {
            mUnconnected[port.index] = &mOwnValues[port.index];
        }
        if (port.kind == PortKind::kParameter) {
            mOwnValues[port.index] = static_cast<float>(mInstance.parameters()[port.item].defaultNormalized);
        }
    }
    mOwnValues[mEnabledPort] = 1.0F;
    mConnected = mUnconnected;
}

void Plugin::connect(std::uint32_t port, void* data) noexcept {
    if (port < mConnected.size()) {
        mConnected[port] = data != nullptr ? static_cast<float*>(data) : mUnconnected[port];
    }
}

void Plugin::activate() {
    mInstance.reset();
    mValues.restart();
    mBypass.restart();
    for (MeterHold& meter : mMeters) {
        meter.restart();
    }
}

void Plugin::run(std::uint32_t frames) noexcept {
    // Written so that what is not a number counts as the default.
    const bool isEnabled = !(*mConnected[mEnabledPort] <= 0.0F);
    if (frames > 0) {
        mValues.read(&mConnected[mControlPort]);
    }
    for (std::uint32_t done = 0; done < frames;) {
        mValues.giveTo(mInstance);
        const auto atMost = static_cast<std::uint32_t>(std::min(kBufferFrames, mValues.framesHeld()));
        const auto length = static_cast<std::int32_t>(std::min(frames - done, atMost));
        point(done);
        process(length, isEnabled);
        mValues.passed(length);
        done += static_cast<std::uint32_t>(length);
    }
    if (frames == 0) {
        showMeters(0);
    }
    *mConnected[mLatencyPort] = static_cast<float>(kLatencyFrames);
}

void Plugin::point(std::uint32_t offset) noexcept {
    for (std::size_t channel = 0; channel < mInputs.size(); ++channel) {
        const float* const input = mConnected[mInputPort + channel];
        mInputs[channel] = input != nullptr ? input + offset : mSilence.data();
        float* const output = mConnected[mOutputPort + channel];
        mOutputs[channel] = output != nullptr ? output + offset : mNowhere.data();
    }
}

void Plugin::process(std::int32_t frames, bool isEnabled) noexcept {
    mBypass.keep(mInputs, frames, isEnabled);
    mInstance.process(mInputs.data(), mOutputs.data(), frames);
    mBypass.blend(mOutputs, frames);
    showMeters(frames);
}

void Plugin::showMeters(std::int32_t frames) noexcept {
    const MeterBank& meters = mInstance.meters();
    for (std::size_t tap = 0; tap < mMeters.size(); ++tap) {
        *mConnected[mMeterPort + tap] = mMeters[tap].show(meters.value(tap), frames);
    }
}

} // namespace varno
