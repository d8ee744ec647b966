#include "Tests/RealTime/AudioClient.h"

#include "Host/Oversampling/RateConverter.h"

namespace varno::test {
namespace {

constexpr std::size_t kSoundFrames = 48000;

} // namespace

AudioClient::AudioClient()
    : mSound(drums(2, kSoundFrames, kRateHz, 20261123)),
      mOutput(silence(2, kLongestBlock)) {
    mOutputs[0] = mOutput[0].data();
    mOutputs[1] = mOutput[1].data();
}

std::span<const float> AudioClient::output(std::size_t channel, int frames) const {
    return {mOutputs[channel], static_cast<std::size_t>(frames)};
}

void AudioClient::nextInput(int frames) {
    if (mPosition + static_cast<std::size_t>(frames) > kSoundFrames) {
        mPosition = 0;
    }
    for (std::size_t channel = 0; channel < 2; ++channel) {
        mInputs[channel] = mSound[channel].data() + mPosition;
    }
    mPosition += static_cast<std::size_t>(frames);
}

double AudioClient::normalizedFrom(std::mt19937& ioRandom) {
    return static_cast<double>(ioRandom()) / static_cast<double>(std::mt19937::max());
}

std::int32_t AudioClient::factorFrom(std::mt19937& ioRandom) {
    return kOversamplingFactors[ioRandom() % kOversamplingFactors.size()];
}

} // namespace varno::test
