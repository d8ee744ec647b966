#include "Session/LoopPlayer.h"

#include "CommandLine/CommandError.h"
#include "CommandLine/Interruption.h"

#include <algorithm>
#include <cmath>
#include <samplerate.h>
#include <vector>

namespace varno {
namespace {

constexpr int kDecodedFrames = 32768;  // decoded at a time
constexpr std::size_t kSilence = 4096; // frames: most blocks are copied in one piece

void requireFit(double frames, std::size_t channels, const std::string& name) {
    const std::size_t most = AudioLoop::kMostSamples / channels;
    if (frames > static_cast<double>(most)) {
        throw WorkError(name + ": is too long to be played in a loop; expected at most " +
                        std::to_string(most) + " frames, found " + std::to_string(std::llround(frames)));
    }
}

std::vector<float> resampledChannel(const std::vector<float>& from, double ratio, std::size_t frames) {
    std::vector<float> to(frames);
    SRC_DATA data{};
    data.data_in = from.data();
    data.input_frames = static_cast<long>(from.size());
    data.data_out = to.data();
    data.output_frames = static_cast<long>(frames);
    data.src_ratio = ratio;
    if (const int error = src_simple(&data, SRC_SINC_MEDIUM_QUALITY, 1)) {
        throw WorkError(std::string("the sample rate cannot be converted: ") + src_strerror(error));
    }
    return to; // frames that the converter does not write stay silent
}

class SystemClock : public PlayerClock {
public:
    TimePoint now() override { return std::chrono::steady_clock::now(); }
    void sleepUntil(TimePoint time) override { std::this_thread::sleep_until(time); }
};

} // namespace

AudioLoop AudioLoop::of(AudioReader& reader) {
    const auto channels = static_cast<std::size_t>(reader.format().channels);
    const auto frames = static_cast<std::size_t>(reader.format().frames);
    requireFit(static_cast<double>(frames), channels, reader.name());
    std::vector<std::vector<float>> samples(channels);
    for (auto& channel : samples) {
        channel.reserve(frames);
    }
    AudioBlock block(reader.format().channels, kDecodedFrames);
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

AudioLoop AudioLoop::resampled(double fromHz, double toHz) const {
    const double ratio = toHz / fromHz;
    const double frames = std::max(1.0, std::round(static_cast<double>(mSamples.front().size()) * ratio));
    requireFit(frames, mSamples.size(), "the sound at " + std::to_string(std::lround(toHz)) + " Hz");
    std::vector<std::vector<float>> samples;
    for (const auto& channel : mSamples) {
        throwIfInterrupted();
        samples.push_back(resampledChannel(channel, ratio, static_cast<std::size_t>(frames)));
    }
    return AudioLoop(std::move(samples));
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

BlockTimes::TimePoint BlockTimes::due() const {
    const std::chrono::duration<double> played(static_cast<double>(mBlocks * mFormat.blockFrames) /
                                               mFormat.rateHz);
    return mStart + std::chrono::round<TimePoint::duration>(played);
}

void BlockTimes::countBlock(TimePoint now) {
    if (now - due() > kLongestLag) {
        mStart = now;
        mBlocks = 0;
    }
    ++mBlocks;
}

void playPaced(const PlayerFormat& format, const AudioPull& pull, PlayerClock& clock,
               const std::atomic<bool>& shallStop) {
    const auto blockFrames = static_cast<std::size_t>(format.blockFrames);
    std::vector<float> samples(blockFrames * static_cast<std::size_t>(format.channels));
    std::vector<float*> channels;
    for (std::size_t start = 0; start < samples.size(); start += blockFrames) {
        channels.push_back(samples.data() + start);
    }
    BlockTimes times(format, clock.now());
    while (!shallStop.load(std::memory_order_relaxed)) {
        pull(channels.data(), format.blockFrames);
        times.countBlock(clock.now());
        clock.sleepUntil(times.due());
    }
}

ClockedPlayer::ClockedPlayer(const PlayerFormat& format, AudioPull pull) {
    const SignalsBlocked inTheNewThread;
    mThread = std::thread([this, format, pull = std::move(pull)] {
        SystemClock clock;
        playPaced(format, pull, clock, mShallStop);
    });
}

ClockedPlayer::~ClockedPlayer() {
    mShallStop.store(true, std::memory_order_relaxed);
    mThread.join();
}

} // namespace varno
