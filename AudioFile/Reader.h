#ifndef VARNO_AUDIOFILE_READER_H
#define VARNO_AUDIOFILE_READER_H

#include "AudioFile/Block.h"
#include "AudioFile/Format.h"
#include "AudioFile/Metadata.h"
#include "Files/Transfer.h"

#include <cstdint>
#include <memory>
#include <string>

namespace varno {

/// Reads an audio file from its start to its end, in blocks of any size, in bounded memory. One thread at a
/// time.
class AudioReader {
public:
    struct Options {
        /// Called while a pipe is waited for and copied.
        GoOn goOn = {};
        /// Whether a file that is shorter than its header states is read as far as it goes; see truncation().
        bool acceptTruncated = false;
        /// Whether a pipe is read while it is written, where its container has the samples behind everything
        /// that describes them and they are uncompressed: WAV, W64, RF64, AIFF, CAF and AU. Such a reader
        /// reads no further than the frames that it returns, may not know their number, and knows no metadata
        /// that follows the samples. Any other pipe is first copied to an unnamed temporary file.
        bool whileWritten = false;
    };

    /// Opens a file, or standard input where `path` is "-".
    /// @throws FileError where there is no such file, it cannot be read, is a directory or a device, is
    ///         empty, is no audio that can be read, holds no frames, or holds fewer frames than its header
    ///         states
    AudioReader(const std::string& path, Options options);
    explicit AudioReader(const std::string& path)
        : AudioReader(path, Options{}) {}
    ~AudioReader();

    AudioReader(const AudioReader&) = delete;
    AudioReader& operator=(const AudioReader&) = delete;

    /// The path as given; "standard input" for "-".
    const std::string& name() const;

    /// Its `frames` are kUnknownFrames where only reading shows the length.
    const AudioFormat& format() const;
    const FileMetadata& metadata() const;

    /// Fills the block with the next frames, as many as it can hold or are left.
    /// @param block of as many channels as the file
    /// @return frames read; fewer than asked for only at the end, 0 after it
    /// @throws FileError where the file ends before the frames its header states or cannot be decoded
    int read(AudioBlock& block);

    /// Whether a pipe is read while it is written.
    bool isWhileWritten() const;

    /// One line for the user where a file is shorter than its header states, once that is known; else empty.
    const std::string& truncation() const;

    /// Reads the rest of a pipe whose last frame has been read, up to 64 MiB, so that its writer can end;
    /// nothing for other files. @return its bytes @throws FileError
    std::int64_t skipRest();

private:
    struct State;
    std::unique_ptr<State> mState;
};

} // namespace varno

#endif
