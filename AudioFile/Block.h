#ifndef VARNO_AUDIOFILE_BLOCK_H
#define VARNO_AUDIOFILE_BLOCK_H

#include <cstddef>
#include <cstdint>
#include <vector>

namespace varno {

/// The samples of one channel that AudioBlock::delay() holds back, at first silence. @param frames of delay
struct HeldSamples {
    explicit HeldSamples(int frames)
        : samples(static_cast<std::size_t>(frames)) {}
    std::vector<double> samples;
};

/// A run of frames between reader, effect and writer, in planar order, as single precision samples. Where the
/// source has a format that single precision cannot hold, 32-bit integers or doubles, each sample is held a
/// second time, exactly as in the file: the writer compares both to find the samples that the effect left
/// unchanged, and writes those exactly. One thread at a time.
class AudioBlock {
public:
    /// @param channels at least 1
    /// @param capacityFrames most frames the block can hold, at least 1
    AudioBlock(int channels, int capacityFrames);

    AudioBlock(const AudioBlock&) = delete;
    AudioBlock& operator=(const AudioBlock&) = delete;

    int channels() const { return static_cast<int>(mChannels.size()); }
    int capacityFrames() const { return mCapacityFrames; }

    /// Frames held now, 0 to capacityFrames().
    int frames() const { return mFrames; }

    /// The single precision samples, full scale +-1: one pointer per channel to capacityFrames() samples.
    /// Owned by the block. They may be processed in place; the exact values do not change.
    float* const* samples() { return mChannels.data(); }
    const float* const* samples() const { return mChannels.data(); }

    /// The exact samples of one channel, full scale +-1; null where the block was given single precision
    /// samples, or integers that single precision holds.
    const double* exact(int channel) const;

    /// Copies frames of interleaved samples, full scale +-1 or 16 bits. @param frames 0 to capacityFrames()
    void setInterleaved(const std::int16_t* samples, int frames);
    void setInterleaved(const float* samples, int frames);
    void setInterleaved(const double* samples, int frames);

    /// Copies planar samples, one pointer per channel. @param frames 0 to capacityFrames()
    void setPlanar(const float* const* samples, int frames);

    /// Digital silence, for the tail after the end of a file. @param frames 0 to capacityFrames()
    void setSilence(int frames);

    /// Delays one channel, also its exact samples, which therefore stay exact. @param held of this channel,
    /// the same for all blocks of a file
    void delay(int channel, HeldSamples& held);

    /// Removes the first frames. @param frames 0 to frames()
    void removeFirst(int frames);

private:
    int mCapacityFrames;
    int mFrames = 0;
    bool mHasExact = false;
    std::vector<float> mSamples;
    std::vector<double> mExact; // empty until it is needed
    std::vector<float*> mChannels;
};

/// One channel among those of interleaved frames.
struct ChannelPlace {
    std::size_t channel; ///< from 0
    std::size_t channels;
};

/// Copies one channel of interleaved frames to `out`, each sample through `convert`. One and two channels
/// have loops of their own: the compiler vectorizes only where it knows the distance between samples.
template<class In, class Out, class Convert>
void takeChannel(const In* interleaved, ChannelPlace place, std::size_t frames, Out* out, Convert convert) {
    const auto take = [&](std::size_t channels) {
        for (std::size_t frame = 0; frame < frames; ++frame) {
            out[frame] = convert(interleaved[frame * channels + place.channel]);
        }
    };
    if (place.channels == 1) {
        take(1);
    } else if (place.channels == 2) {
        take(2);
    } else {
        take(place.channels);
    }
}

/// Interleaves planar channels. @param sampleAt returns the sample of a channel and a frame
template<class Out, class SampleAt>
void interleave(std::size_t channels, std::size_t frames, Out* out, SampleAt sampleAt) {
    const auto put = [&](std::size_t count) {
        for (std::size_t frame = 0; frame < frames; ++frame) {
            for (std::size_t channel = 0; channel < count; ++channel) {
                out[frame * count + channel] = sampleAt(channel, frame);
            }
        }
    };
    if (channels == 1) {
        put(1);
    } else if (channels == 2) {
        put(2);
    } else {
        put(channels);
    }
}

} // namespace varno

#endif
