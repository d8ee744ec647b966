/// The sample buffers between the stages of the routine. A buffer of the host is processed in chunks of a few
/// frames; a row holds one value for each sample of a chunk.
#ifndef VARNO_SOURCE_ALG_DEMOGAIN_CHUNKROWS_H
#define VARNO_SOURCE_ALG_DEMOGAIN_CHUNKROWS_H

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace DemoGain {

/// Frames of a chunk. With fewer, vectors of mono samples are half empty; with more, filling the pipeline
/// costs more in short buffers.
inline constexpr std::size_t kChunkFrames = 8;
/// Frames of a chunk of one mono instance in long buffers. A chunk of kChunkFrames is a single vector there,
/// with nothing to do while an operation waits for the one before.
inline constexpr std::size_t kLongChunkFrames = 2 * kChunkFrames;
/// Samples of a chunk.
template<std::size_t kLanes, std::size_t kFrames>
inline constexpr std::size_t kRowSize = kFrames* kLanes;

/// Bytes that a row is aligned to: a cache line.
inline constexpr std::size_t kRowAlignment = 64;

/// One value per sample of a chunk, frame after frame: the lanes of a frame stand side by side.
template<std::size_t kLanes, std::size_t kFrames = kChunkFrames>
struct alignas(kRowAlignment) Row {
    float v[kRowSize<kLanes, kFrames>];
};

/// Chunks that a ring holds: more than the pipeline has stages, and enough for the post sections, which read
/// the last chunks of a buffer.
inline constexpr std::size_t kRingChunks = 8;

/// A ring buffer of the last chunks' rows. Chunk i is there until chunk i + kRingChunks overwrites it.
template<std::size_t kLanes, std::size_t kFrames = kChunkFrames>
class RowRing {
public:
    float* operator[](std::size_t chunk) { return mRows[chunk % kRingChunks].v; }
    const float* operator[](std::size_t chunk) const { return mRows[chunk % kRingChunks].v; }
    /// A frame of the buffer, by its number. The rest of its chunk follows.
    const float* frame(std::size_t frame) const {
        return (*this)[frame / kFrames] + frame % kFrames * kLanes;
    }

private:
    Row<kLanes, kFrames> mRows[kRingChunks];
};

/// Delay of the longest feed-forward sum, in frames.
inline constexpr std::size_t kHistoryFrames = 2;

/// A ring buffer from which a chunk can also be read with a delay.
template<std::size_t kLanes, std::size_t kFrames>
class DelayRing {
public:
    // Only what is read before it is written gets a value: clearing the rest would cost time in every buffer.
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
    DelayRing() { std::fill_n(mSamples, kLead, 0.0F); }

    float* operator[](std::size_t chunk) { return mSamples + kLead + place(chunk); }
    const float* operator[](std::size_t chunk) const { return mSamples + kLead + place(chunk); }
    /// The chunk delayed by one frame: it begins with the last frame of the previous chunk. Not aligned.
    const float* delayed(std::size_t chunk) const { return (*this)[chunk] - kLanes; }
    /// The kHistoryFrames frames before the first chunk.
    float* history() { return mSamples + kLead - kHistoryFrames * kLanes; }
    /// To be called when the samples of `chunk` are complete: behind the last chunk of the ring follows the
    /// first, which needs the end of the last as its history.
    void close(std::size_t chunk) {
        if (chunk % kRingChunks == kRingChunks - 1) {
            std::copy_n(std::end(mSamples) - kLead, kLead, mSamples);
        }
    }

private:
    static constexpr std::size_t kLead = kRowAlignment / sizeof(float);
    static std::size_t place(std::size_t chunk) { return chunk % kRingChunks * kRowSize<kLanes, kFrames>; }

    alignas(kRowAlignment) float mSamples[kLead + kRingChunks * kRowSize<kLanes, kFrames>];
};

/// The rows between the stages, in the order of the signal path. A row without a ring holds one chunk: it is
/// read before the next chunk is written to it. What has no initialiser is written before it is read.
template<std::size_t kLanes, std::size_t kFrames = kChunkFrames>
// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): clearing costs time in every buffer
struct ChunkRows {
    RowRing<kLanes, kFrames> mRaw;     ///< The host's input.
    DelayRing<kLanes, kFrames> mInput; ///< The input, sanitised.
    Row<kLanes, kFrames>
        mInputHistory{}; ///< Its last frames as the high-pass keeps them, at the end of the row.
    Row<kLanes, kFrames> mHighPassForward;  ///< Feed-forward sum of the high-pass.
    Row<kLanes, kFrames> mHighPassed;       ///< Output of the high-pass.
    DelayRing<kLanes, kFrames> mDetectorIn; ///< Detector input: the sanitised input, high-passed or not.
    Row<kLanes, kFrames> mAllPassForward;   ///< Feed-forward sum of the all-pass.
    Row<kLanes, kFrames> mAllPassed;        ///< Output of the all-pass.
    Row<kLanes, kFrames> mLevel;            ///< Level of the detector signal, linear, then in dB.
    Row<kLanes, kFrames> mGain;             ///< Output of the gain computer, dB.
    Row<kLanes, kFrames> mReduction;        ///< Gain reduction, dB.
    Row<kLanes, kFrames> mDriven;           ///< Delayed input after input gain, gain reduction and drive.
    Row<kLanes, kFrames> mClipTarget;       ///< Clip target: the clip gain that the level calls for.
    Row<kLanes, kFrames> mClipTargetTerm;   ///< The target's term in the recovery of the clip gain.
    Row<kLanes, kFrames> mClipGain;         ///< Smoothed clip gain, linear.
    RowRing<kLanes, kFrames> mClipped;      ///< The driven signal after the clip gain.
    Row<kLanes, kFrames> mShaped{};         ///< Output of the waveshaper.
    Row<kLanes, kFrames> mShapedDifference; ///< Each shaped sample less the one before it.
    Row<kLanes, kFrames> mDcBlocked;        ///< Output of the DC blocker.
    /// Per frame, for each instance the terms that its first channel's input and output add to the level
    /// averages.
    alignas(kRowAlignment) float mLevels[2 * kRowSize<kLanes, kFrames>];
};

} // namespace DemoGain

#endif
