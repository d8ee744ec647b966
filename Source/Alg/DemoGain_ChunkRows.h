/// What the stages of the routine hand to each other while a buffer is processed.
#ifndef VARNO_SOURCE_ALG_DEMOGAIN_CHUNKROWS_H
#define VARNO_SOURCE_ALG_DEMOGAIN_CHUNKROWS_H

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace DemoGain {

/// Frames of a chunk. With fewer, vectors of mono samples are half empty; with more, short buffers pay more
/// for filling the pipeline.
inline constexpr std::size_t kChunkFrames = 8;
/// Samples of a chunk.
template<std::size_t kChannels>
inline constexpr std::size_t kRowSize = kChunkFrames* kChannels;

/// Bytes that a row is aligned to: a cache line.
inline constexpr std::size_t kRowAlignment = 64;

/// One value per sample of a chunk, frame by frame: the samples of a frame stand side by side, left then
/// right.
template<std::size_t kChannels>
struct alignas(kRowAlignment) Row {
    float v[kRowSize<kChannels>];
};

/// Chunks that a ring holds: more than the pipeline is deep, and enough for the tail that the post sections
/// need.
inline constexpr std::size_t kRingChunks = 8;

/// Rows of the last chunks. Chunk i is found until chunk i + kRingChunks takes its place.
template<std::size_t kChannels>
class RowRing {
public:
    float* operator[](std::size_t chunk) { return mRows[chunk % kRingChunks].v; }
    const float* operator[](std::size_t chunk) const { return mRows[chunk % kRingChunks].v; }

private:
    Row<kChannels> mRows[kRingChunks];
};

/// Frames before a chunk that its stages look back to.
inline constexpr std::size_t kLateFrames = 2;

/// A ring in which a chunk can also be read late.
template<std::size_t kChannels>
class DelayRing {
public:
    DelayRing() { std::fill_n(mSamples, kLead, 0.0F); }

    float* operator[](std::size_t chunk) { return mSamples + kLead + place(chunk); }
    const float* operator[](std::size_t chunk) const { return mSamples + kLead + place(chunk); }
    /// The chunk one frame late: its first frame is the last one of the chunk before. Not aligned.
    const float* late(std::size_t chunk) const { return (*this)[chunk] - kChannels; }
    /// The kLateFrames frames before the first chunk.
    float* before() { return mSamples + kLead - kLateFrames * kChannels; }
    /// To be called once the samples of `chunk` are complete: what follows the last place of the ring is its
    /// first.
    void close(std::size_t chunk) {
        if (chunk % kRingChunks == kRingChunks - 1) {
            std::copy_n(std::end(mSamples) - kLead, kLead, mSamples);
        }
    }

private:
    static constexpr std::size_t kLead = kRowAlignment / sizeof(float);
    static std::size_t place(std::size_t chunk) { return chunk % kRingChunks * kRowSize<kChannels>; }

    alignas(kRowAlignment) float mSamples[kLead + kRingChunks * kRowSize<kChannels>];
};

/// The rows between the stages, in the order of the signal path. A row without a ring holds one chunk at a
/// time: its reader runs before its writer comes to the next chunk.
template<std::size_t kChannels>
struct ChunkRows {
    RowRing<kChannels> mRaw;     ///< Input as it came.
    DelayRing<kChannels> mInput; ///< Input as it is processed.
    /// Its last frames as the high-pass remembers them, at the end of the row.
    Row<kChannels> mInputBefore{};
    Row<kChannels> mHighPassFed; ///< What the high-pass takes of its input.
    Row<kChannels> mHighPassed;
    DelayRing<kChannels> mHeard; ///< What the detector hears: the input, high-passed or not.
    Row<kChannels> mAllPassFed;  ///< What the all-pass takes of it.
    Row<kChannels> mAllPassed;
    Row<kChannels> mLevel;      ///< Level of the detector signal, linear, then in dB.
    Row<kChannels> mGain;       ///< Gain that the curve asks for, dB.
    Row<kChannels> mReduction;  ///< Gain reduction, dB.
    Row<kChannels> mDriven;     ///< Delayed input after input gain, reduction and drive.
    Row<kChannels> mClipTarget; ///< Clip gain that the level asks for.
    Row<kChannels> mClipShare;  ///< What a recovering clip gain takes on of it with one sample.
    Row<kChannels> mClipGain;
    RowRing<kChannels> mClipped;
    Row<kChannels> mShaped{};
    Row<kChannels> mShapedSteps; ///< From each shaped sample to the next.
    Row<kChannels> mBlocked;     ///< Without the constant part.
    /// Per frame what the first channel's input and output add to their averages.
    alignas(kRowAlignment) float mLevels[2 * kChunkFrames];
};

} // namespace DemoGain

#endif
