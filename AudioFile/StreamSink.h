#ifndef VARNO_AUDIOFILE_STREAMSINK_H
#define VARNO_AUDIOFILE_STREAMSINK_H

#include "AudioFile/Format.h"
#include "AudioFile/Metadata.h"
#include "AudioFile/VirtualFile.h"

#include <cstdint>
#include <exception>
#include <optional>
#include <string>
#include <vector>

namespace varno {

/// Lets libsndfile write a WAV file of which every byte is final as soon as it has been taken, for a pipe.
/// What libsndfile writes at places that have been taken is dropped: it is the header once more, with the
/// sizes of what came so far. The sizes are therefore set here, in advance. One thread at a time.
class StreamSink final : public VirtualFile {
public:
    /// Whether a file of this container can be written so. The sizes of all others have more places, or their
    /// samples depend on what follows.
    static bool canWrite(Container container) { return container == Container::kWav; }

    /// @param format with its final number of frames, or kUnknownFrames: the sizes are all ones then, which
    ///        readers take for unknown
    explicit StreamSink(const AudioFormat& format);

    /// @throws std::bad_alloc where there was no memory for what libsndfile has written
    void throwIfFailed() const;

    /// Chunks to be written as well: after the samples, or before those of unknown number. Called before the
    /// first take(). @throws FileError
    void setChunks(const std::vector<CarriedChunk>& chunks);

    /// @param newFrames that libsndfile has been given since the last call; at least one before the first
    /// @return the bytes that have come since, with their final values
    std::string take(std::int64_t newFrames);

    /// @return the bytes after the last sample, once libsndfile has closed the file
    std::string takeEnd();

private:
    sf_count_t length() noexcept override;
    sf_count_t seek(sf_count_t offset, int whence) noexcept override;
    sf_count_t write(const void* data, sf_count_t count) noexcept override;
    sf_count_t tell() noexcept override { return mPosition; }

    std::string takeWaiting();
    void setSizes(std::string& header) const;

    std::int64_t mFrames;
    std::int64_t mFrameBytes;
    std::string mChunks; // as bytes
    bool mHasHeader = false;
    std::string mWaiting;     // not taken yet
    sf_count_t mTaken = 0;    // bytes
    sf_count_t mPosition = 0; // of libsndfile in the file
    std::exception_ptr mFailure;
};

} // namespace varno

#endif
