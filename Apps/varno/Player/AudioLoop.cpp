#include "AudioLoop.h"

#include "CommandError.h"
#include "Interruption.h"

#include <algorithm>

namespace varno {
namespace {

constexpr int kReadFrames = 32768;     // decoded at a time
constexpr std::size_t kSilence = 4096; // frames, so that a block seldom meets the end

} // namespace

AudioLoop AudioLoop::of(AudioReader& reader) {
    const auto channels = static_cast<std::size_t>(reader.format().channels);
    const auto frames = static_cast<std::size_t>(reader.format().frames);
    if (frames > kMostSamples / channels) {
        throw WorkError(reader.name() + ": is too long to be played in a loop; expected at most " +
                        std::to_string(kMostSamples / channels) + " frames, found " + std::to_string(frames));
    }
    std::vector<std::vector<float>> samples(channels);
    for (auto& channel : samples) {
        channel.reserve(frames);
    }
    AudioBlock block(reader.format().channels, kReadFrames);
    while (reader.read(block) > 0) {
        throwIfInterrupted();
        for (std::size_t channel = 0; channel < channels; ++channel) {
            const float* from = block.samples()[channel];
            samples[channel].insert(samples[channel].end(), from, from + block.frames());
        }
    }
    return AudioLoop(std::move(samples));
}

AudioLoop AudioLoop::silence(int channels) {
    return AudioLoop({static_cast<std::size_t>(channels), std::vector<float>(kSilence)});
}

AudioLoop::AudioLoop(std::vector<std::vector<float>> samples)
    : mSamples(std::move(samples)) {
}

void AudioLoop::read(float* const* channels, int frames) noexcept {
    const std::size_t length = mSamples.front().size();
    for (std::size_t done = 0, wanted = static_cast<std::size_t>(frames); done < wanted;) {
        const std::size_t count = std::min(wanted - done, length - mNext);
        for (std::size_t channel = 0; channel < mSamples.size(); ++channel) {
            std::copy_n(mSamples[channel].data() + mNext, count, channels[channel] + done);
        }
        done += count;
        mNext = (mNext + count) % length;
    }
}

} // namespace varno
