#include "Host/Bypass.h"

#include <algorithm>
#include <cmath>

namespace varno {

namespace {

BypassFormat formatOf(const InstanceSetup& setup, std::int32_t latencyFrames) {
    return {static_cast<std::size_t>(setup.channels), setup.maximumFrames, setup.sampleRateHz, latencyFrames};
}

} // namespace

BypassFade::BypassFade(const BypassFormat& format)
    : mKept(format.channels,
            std::vector<float>(static_cast<std::size_t>(format.latencyFrames + format.maximumFrames))),
      mLatencyFrames(format.latencyFrames),
      // The ends of a fade are two states at any rate.
      mFadeFrames(
          std::max(1, static_cast<std::int32_t>(std::lround(kBypassFadeSeconds * format.sampleRateHz)))) {
}

void BypassFade::restart() noexcept {
    mIsStarting = true;
    for (std::vector<float>& kept : mKept) {
        std::fill_n(kept.begin(), mLatencyFrames, 0.0F);
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
            std::copy_n(inputs[channel], frames, mKept[channel].begin() + mLatencyFrames);
        }
    }
}

void BypassFade::keepEnd(std::vector<float>& kept, const float* input, std::int32_t frames) const noexcept {
    const std::int32_t arriving = std::min(frames, mLatencyFrames);
    const std::int32_t staying = mLatencyFrames - arriving;
    std::copy_n(kept.begin() + arriving, staying, kept.begin());
    std::copy_n(input + (frames - arriving), arriving, kept.begin() + staying);
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
        std::copy_n(kept.begin() + frames, mLatencyFrames, kept.begin());
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

Bypass::Bypass(Instance& instance, std::int32_t latencyFrames)
    : mInstance(instance),
      mFade(formatOf(instance.setup(), latencyFrames)),
      mInputs(static_cast<std::size_t>(instance.setup().channels)),
      mOutputs(mInputs.size()) {
}

void Bypass::process(const float* const* inputs, float* const* outputs, std::int32_t frames) noexcept {
    const bool isBypassed = this->isBypassed();
    mInstance.meters().setBypassed(isBypassed);
    if (frames == 0) {
        mInstance.process(inputs, outputs, 0);
    }
    for (std::int32_t done = 0; done < frames;) {
        const std::int32_t length = std::min(frames - done, mInstance.setup().maximumFrames);
        for (std::size_t channel = 0; channel < mInputs.size(); ++channel) {
            mInputs[channel] = inputs[channel] + done;
            mOutputs[channel] = outputs[channel] + done;
        }
        mFade.keep(mInputs, length, isBypassed);
        mInstance.process(mInputs.data(), mOutputs.data(), length);
        mFade.blend(mOutputs, length);
        done += length;
    }
}

} // namespace varno
