#include "LV2/Plugin.h"

#include <algorithm>
#include <cmath>

namespace varno {

Plugin::Plugin(std::shared_ptr<Module> module, std::int32_t channels, double sampleRateHz,
               const LV2_Inline_Display* display)
    : mEffect(std::move(module),
              {.channels = channels, .sampleRateHz = sampleRateHz, .canChangeQuality = true}),
      mPorts(portsOf(instance())),
      mValues(mEffect.values()),
      mUnconnected(mPorts.size()),
      mOwnValues(mPorts.size()),
      mInputPort(firstPort(PortKind::kAudioIn)),
      mOutputPort(firstPort(PortKind::kAudioOut)),
      mControlPort(firstPort(PortKind::kParameter)),
      mEnabledPort(firstPort(PortKind::kEnabled)),
      mMeterPort(firstPort(PortKind::kMeter)),
      mLatencyPort(firstPort(PortKind::kLatency)),
      mQualityPort(firstPort(PortKind::kQuality)),
      mInputs(static_cast<std::size_t>(channels)),
      mOutputs(static_cast<std::size_t>(channels)),
      mSilence(kBufferFrames),
      mNowhere(kBufferFrames),
      mDisplay(display) {
    for (const auto& meter : instance().effect().meters) {
        mIsReduction.push_back(integerProperty(meter.properties, AAX_eProperty_Meter_Kind) ==
                               AAX_eMeterKind_GainReduction);
    }
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
            mOwnValues[port.index] = static_cast<float>(instance().parameters()[port.item].defaultNormalized);
        }
    }
    mOwnValues[mEnabledPort] = 1.0F;
    mOwnValues[mQualityPort] = 1.0F;
    mConnected = mUnconnected;
}

void Plugin::connect(std::uint32_t port, void* data) noexcept {
    if (port < mConnected.size()) {
        mConnected[port] = data != nullptr ? static_cast<float*>(data) : mUnconnected[port];
    }
}

void Plugin::activate() {
    mEffect.reset();
    mValues.restart();
}

void Plugin::run(std::uint32_t frames) noexcept {
    // Written so that what is not a number counts as the default.
    mEffect.bypass().set(*mConnected[mEnabledPort] <= 0.0F);
    if (frames > 0) {
        readQuality();
        mValues.read(&mConnected[mControlPort]);
    }
    for (std::uint32_t done = 0; done < frames;) {
        const auto most = static_cast<std::int32_t>(std::min<std::uint32_t>(frames - done, kBufferFrames));
        const std::int32_t length = mEffect.begin(most);
        point(done);
        mEffect.process(mInputs.data(), mOutputs.data(), length);
        showMeters(length);
        done += static_cast<std::uint32_t>(length);
    }
    if (frames == 0) {
        showMeters(0);
    }
    *mConnected[mLatencyPort] = static_cast<float>(mEffect.oversampling().latencyFrames());
}

// Where the module is busy, the next run tries again.
void Plugin::readQuality() noexcept {
    const float found = *mConnected[mQualityPort];
    if (found == mSeenQuality || std::isnan(found)) {
        return;
    }
    if (mEffect.oversampling().setFactorBeforeBuffer(factorOfPort(found))) {
        mSeenQuality = found;
    }
}

void Plugin::point(std::uint32_t offset) noexcept {
    for (std::size_t channel = 0; channel < mInputs.size(); ++channel) {
        const float* const input = mConnected[mInputPort + channel];
        mInputs[channel] = input != nullptr ? input + offset : mSilence.data();
        float* const output = mConnected[mOutputPort + channel];
        mOutputs[channel] = output != nullptr ? output + offset : mNowhere.data();
    }
}

void Plugin::showMeters(std::int32_t frames) noexcept {
    float reduction = 0.0F;
    for (std::size_t tap = 0; tap < mEffect.meters(); ++tap) {
        const float shown = mEffect.showMeter(tap, frames);
        *mConnected[mMeterPort + tap] = shown;
        reduction = mIsReduction[tap] ? std::max(reduction, shown) : reduction;
    }
    mDisplay.show(reduction);
}

} // namespace varno
