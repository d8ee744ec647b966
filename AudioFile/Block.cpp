#include "AudioFile/Block.h"

#include <algorithm>

namespace varno {

namespace {

constexpr float kPerStepOf16Bits = 1.0F / 32768.0F;

} // namespace

AudioBlock::AudioBlock(int channels, int capacityFrames)
    : mCapacityFrames(capacityFrames),
      mSamples(static_cast<std::size_t>(channels) * static_cast<std::size_t>(capacityFrames)),
      mChannels(static_cast<std::size_t>(channels)) {
    for (std::size_t c = 0; c < mChannels.size(); ++c) {
        mChannels[c] = mSamples.data() + c * static_cast<std::size_t>(capacityFrames);
    }
}

const double* AudioBlock::exact(int channel) const {
    if (!mHasExact) {
        return nullptr;
    }
    return mExact.data() + static_cast<std::size_t>(channel) * static_cast<std::size_t>(mCapacityFrames);
}

void AudioBlock::setInterleaved(const std::int16_t* samples, int frames) {
    for (std::size_t c = 0; c < mChannels.size(); ++c) {
        takeChannel(samples, {c, mChannels.size()}, static_cast<std::size_t>(frames), mChannels[c],
                    [](std::int16_t sample) { return static_cast<float>(sample) * kPerStepOf16Bits; });
    }
    mFrames = frames;
    mHasExact = false;
}

void AudioBlock::setInterleaved(const float* samples, int frames) {
    for (std::size_t c = 0; c < mChannels.size(); ++c) {
        takeChannel(samples, {c, mChannels.size()}, static_cast<std::size_t>(frames), mChannels[c],
                    [](float sample) { return sample; });
    }
    mFrames = frames;
    mHasExact = false;
}

void AudioBlock::setInterleaved(const double* samples, int frames) {
    mExact.resize(mSamples.size());
    for (std::size_t c = 0; c < mChannels.size(); ++c) {
        double* exactOut = mExact.data() + c * static_cast<std::size_t>(mCapacityFrames);
        takeChannel(samples, {c, mChannels.size()}, static_cast<std::size_t>(frames), exactOut,
                    [](double sample) { return sample; });
        std::transform(exactOut, exactOut + frames, mChannels[c],
                       [](double sample) { return static_cast<float>(sample); });
    }
    mFrames = frames;
    mHasExact = true;
}

void AudioBlock::setPlanar(const float* const* samples, int frames) {
    for (std::size_t c = 0; c < mChannels.size(); ++c) {
        std::copy_n(samples[c], frames, mChannels[c]);
    }
    mFrames = frames;
    mHasExact = false;
}

// What follows exact samples is held a second time as well: a delay may move some of them into it.
void AudioBlock::setSilence(int frames) {
    std::fill(mSamples.begin(), mSamples.end(), 0.0F);
    if (mHasExact) {
        std::fill(mExact.begin(), mExact.end(), 0.0);
    }
    mFrames = frames;
}

void AudioBlock::delay(int channel, HeldSamples& held) {
    float* const singles = mChannels[static_cast<std::size_t>(channel)];
    double* const exacts = mHasExact ? mExact.data() + (singles - mSamples.data()) : nullptr;
    std::vector<double>& line = held.samples;
    if (exacts != nullptr) {
        line.insert(line.end(), exacts, exacts + mFrames);
        std::copy_n(line.begin(), mFrames, exacts);
    } else {
        line.insert(line.end(), singles, singles + mFrames);
    }
    std::transform(line.begin(), line.begin() + mFrames, singles,
                   [](double sample) { return static_cast<float>(sample); });
    line.erase(line.begin(), line.begin() + mFrames);
}

void AudioBlock::removeFirst(int frames) {
    for (float* const singles : mChannels) {
        std::copy(singles + frames, singles + mFrames, singles);
        if (mHasExact) {
            double* const exacts = mExact.data() + (singles - mSamples.data());
            std::copy(exacts + frames, exacts + mFrames, exacts);
        }
    }
    mFrames -= frames;
}

} // namespace varno
