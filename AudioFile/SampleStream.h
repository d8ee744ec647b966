#ifndef VARNO_AUDIOFILE_SAMPLESTREAM_H
#define VARNO_AUDIOFILE_SAMPLESTREAM_H

#include "AudioFile/VirtualFile.h"
#include "Files/Transfer.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace varno {

/// What a SampleStream reads.
struct StreamSource {
    FileDescriptor file;     ///< at its next byte; need not be able to seek
    std::string name;        ///< for messages
    std::vector<char> ahead; ///< bytes of samples that have been read from the file already
    std::int64_t mostBytes;  ///< of samples
    GoOn goOn = {};          ///< called while a pipe is waited for
};

/// Uncompressed samples of a file, read and decoded in the order of their bytes: a read takes no more bytes
/// than it returns frames of. So pipes can be decoded while they are written, and samples that libsndfile
/// does not find by the file's header. One thread at a time.
class SampleStream final : VirtualFile {
public:
    /// Whether a format can be decoded here. @param info as libsndfile reports it of the file's header
    static bool canDecode(const SF_INFO& info);

    /// @param info for which canDecode() is true
    SampleStream(const SF_INFO& info, StreamSource source);

    int frameBytes() const { return mFrameBytes; }

    /// Waits for the first frame. @return whether there is one @throws FileError
    bool waitForFrame();

    /// Waits for so many frames or the end, then makes them available to libsndfile's next read calls.
    /// @return how many have come; bytes at the end that are no whole frame are dropped @throws
    /// FileError
    std::int64_t receive(std::int64_t frames);

    /// Decodes the frames that receive() has returned; owned by this object.
    SNDFILE* decoder() { return mDecoder.get(); }

    /// Reads what follows the samples, up to 64 MiB, so that the writer of a pipe can end. @return bytes of
    /// it @throws FileError
    std::int64_t skipRest();

private:
    sf_count_t length() noexcept override;
    sf_count_t seek(sf_count_t offset, int whence) noexcept override;
    sf_count_t read(void* data, sf_count_t count) noexcept override;
    sf_count_t tell() noexcept override { return 0; }

    std::size_t fill(std::size_t bytes);

    StreamSource mSource;
    int mFrameBytes;
    std::vector<char> mBytes; // received
    std::size_t mTaken = 0;   // of these, by the decoder
    SndfileOwner mDecoder;
};

} // namespace varno

#endif
