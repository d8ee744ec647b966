#include "Host/Bypass.h"

#include <algorithm>
#include <cmath>

namespace varno {

namespace {

BypassFormat formatOf(const Oversampling& effect) {
    const InstanceSetup& setup = effect.instance().setup();
    return {static_cast<std::size_t>(setup.channels), setup.maximumFrames, setup.sampleRateHz,
            effect.mostLatencyFrames()};
}

} // namespace

BypassFade::BypassFade(const BypassFormat& format)
    : mKept(format.channels,
            std::vector<float>(static_cast<std::size_t>(format.mostLatencyFrames + format.maximumFrames))),
      mHistoryFrames(format.mostLatencyFrames),
      // The ends of a fade are two states at any rate.
      mFadeFrames(
          std::max(1, static_cast<std::int32_t>(std::lround(kBypassFadeSeconds * format.sampleRateHz)))) {
}

void BypassFade::restart() noexcept {
    mIsStarting = true;
    for (std::vector<float>& kept : mKept) {
        std::fill_n(kept.begin(), mHistoryFrames, 0.0F);
    }
}

void BypassFade::keep(std::span<const float* const> inputs, std::int32_t frames, bool isBypassed) noexcept {
    mEnd = isBypassed ? 0 : mFadeFrames;
    if (mIsStarting) {
        mPosition = mEnd;
        mIsStarting = false;
    }
    for (std::size_t channel = 0; channel < mKept.size(); ++channel) {
        if (isAllProcessed()) {
            keepEnd(mKept[channel], inputs[channel], frames);
        } else {
            std::copy_n(inputs[channel], frames, mKept[channel].begin() + mHistoryFrames);
        }
    }
}

void BypassFade::keepEnd(std::vector<float>& kept, const float* input, std::int32_t frames) const noexcept {
    const std::int32_t arriving = std::min(frames, mHistoryFrames);
    const std::int32_t staying = mHistoryFrames - arriving;
    std::copy_n(kept.begin() + arriving, staying, kept.begin());
    std::copy_n(input + (frames - arriving), arriving, kept.begin() + staying);
}

void BypassFade::blend(std::span<float* const> outputs, std::int32_t frames) noexcept {
    if (isAllProcessed()) {
        return;
    }
    for (std::size_t channel = 0; channel < mKept.size(); ++channel) {
        std::vector<float>& kept = mKept[channel];
        const float* const bypassed = kept.data() + (mHistoryFrames - mLatencyFrames);
        if (mPosition != mEnd) {
            fade(outputs[channel], bypassed, frames);
        } else {
            std::copy_n(bypassed, frames, outputs[channel]);
        }
        std::copy_n(kept.begin() + frames, mHistoryFrames, kept.begin());
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

Bypass::Bypass(Oversampling& effect)
    : mEffect(effect),
      mFade(formatOf(effect)),
      mInputs(static_cast<std::size_t>(effect.instance().setup().channels)),
      mOutputs(mInputs.size()) {
}

void Bypass::reset() {
    mEffect.reset();
    mFade.restart();
}

void Bypass::process(const float* const* inputs, float* const* outputs, std::int32_t frames) noexcept {
    const bool isBypassed = this->isBypassed();
    Instance& instance = mEffect.instance();
    instance.meters().setBypassed(isBypassed);
    if (frames == 0) {
        mEffect.process(inputs, outputs, 0);
    }
    for (std::int32_t done = 0; done < frames;) {
        const std::int32_t length =
            std::min({frames - done, instance.setup().maximumFrames, mEffect.framesHeld()});
        for (std::size_t channel = 0; channel < mInputs.size(); ++channel) {
            mInputs[channel] = inputs[channel] + done;
            mOutputs[channel] = outputs[channel] + done;
        }
        mFade.setLatency(mEffect.latencyFrames());
        mFade.keep(mInputs, length, isBypassed);
        mEffect.process(mInputs.data(), mOutputs.data(), length);
        mFade.blend(mOutputs, length);
        mEffect.fade(mOutputs.data(), length);
        done += length;
    }
}

} // namespace varno
