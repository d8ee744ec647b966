#include "AudioBlock.h"

#include <algorithm>

namespace varno {

AudioBlock::AudioBlock(int channels, int capacityFrames)
    : mCapacityFrames(capacityFrames),
      mSamples(static_cast<std::size_t>(channels) * static_cast<std::size_t>(capacityFrames)),
      mExact(mSamples.size()),
      mChannels(static_cast<std::size_t>(channels)) {
    for (std::size_t c = 0; c < mChannels.size(); ++c)
        mChannels[c] = mSamples.data() + c * static_cast<std::size_t>(capacityFrames);
}

const double* AudioBlock::exact(int channel) const {
    return mExact.data() + static_cast<std::size_t>(channel) * static_cast<std::size_t>(mCapacityFrames);
}

void AudioBlock::setInterleaved(const double* samples, int frames) {
    const std::size_t channelCount = mChannels.size();
    for (std::size_t c = 0; c < channelCount; ++c) {
        double* exactOut = mExact.data() + c * static_cast<std::size_t>(mCapacityFrames);
        for (std::size_t i = 0; i < static_cast<std::size_t>(frames); ++i) {
            exactOut[i] = samples[i * channelCount + c];
            mChannels[c][i] = static_cast<float>(exactOut[i]);
        }
    }
    mFrames = frames;
}

void AudioBlock::setPlanar(const float* const* samples, int frames) {
    for (std::size_t c = 0; c < mChannels.size(); ++c) {
        std::copy_n(samples[c], frames, mChannels[c]);
        std::copy_n(samples[c], frames, mExact.data() + c * static_cast<std::size_t>(mCapacityFrames));
    }
    mFrames = frames;
}

void AudioBlock::setSilence(int frames) {
    std::fill(mSamples.begin(), mSamples.end(), 0.0F);
    std::fill(mExact.begin(), mExact.end(), 0.0);
    mFrames = frames;
}

} // namespace varno
