#include "LV2/BypassFade.h"

#include <algorithm>
#include <cmath>

namespace varno {

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

} // namespace varno
