#ifndef VARNO_AUDIOFILE_BLOCK_H
#define VARNO_AUDIOFILE_BLOCK_H

#include <cstddef>
#include <cstdint>
#include <vector>

namespace varno {

/// A run of frames between reader, effect and writer, in planar order, as the single precision values that
/// the effect takes. Where the source is of a format that single precision cannot hold, a 32-bit integer or a
/// double, each sample is held a second time, exactly as the file has it: the writer sees from both which
/// samples the effect left alone and writes those back exactly. One thread at a time.
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
    /// Owned by the block. They may be processed in place: the exact values stay.
    float* const* samples() { return mChannels.data(); }
    const float* const* samples() const { return mChannels.data(); }

    /// The exact samples of one channel, full scale +-1; null where the block was given single precision
    /// samples, or integers that single precision holds.
    const double* exact(int channel) const;

    /// Takes over frames of interleaved samples, full scale +-1 or 16 bits. @param frames 0 to
    /// capacityFrames()
    void setInterleaved(const std::int16_t* samples, int frames);
    void setInterleaved(const float* samples, int frames);
    void setInterleaved(const double* samples, int frames);

    /// Takes over planar samples, one pointer per channel. @param frames 0 to capacityFrames()
    void setPlanar(const float* const* samples, int frames);

    /// Digital silence, for the tail after the end of a file. @param frames 0 to capacityFrames()
    void setSilence(int frames);

private:
    int mCapacityFrames;
    int mFrames = 0;
    bool mHasExact = false;
    std::vector<float> mSamples;
    std::vector<double> mExact; // empty until it is needed
    std::vector<float*> mChannels;
};

} // namespace varno

#endif
