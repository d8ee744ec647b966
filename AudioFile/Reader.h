#ifndef VARNO_AUDIOFILE_READER_H
#define VARNO_AUDIOFILE_READER_H

#include "AudioFile/Block.h"
#include "AudioFile/Format.h"
#include "AudioFile/Metadata.h"
#include "AudioFile/Transfer.h"

#include <memory>
#include <string>

namespace varno {

/// Reads an audio file from its start to its end, in blocks of any size, in bounded memory. One thread at a
/// time.
class AudioReader {
public:
    /// Opens a file, or standard input where `path` is "-". A pipe is first copied to an unnamed temporary
    /// file, since most containers cannot be read without seeking.
    /// @param goOn called while a pipe is waited for and copied; not kept
    /// @throws AudioFileError where there is no such file, it cannot be read, is a directory or a device, is
    ///         empty, is no audio that can be read, holds no frames, or holds fewer frames than its header
    ///         states
    explicit AudioReader(const std::string& path, const GoOn& goOn = {});
    ~AudioReader();

    AudioReader(const AudioReader&) = delete;
    AudioReader& operator=(const AudioReader&) = delete;

    /// The path as given; "standard input" for "-".
    const std::string& name() const;

    const AudioFormat& format() const;
    const FileMetadata& metadata() const;

    /// Fills the block with the next frames, as many as it can hold or are left.
    /// @param block of as many channels as the file
    /// @return frames read; 0 at the end
    /// @throws AudioFileError where the file ends before the frames its header states or cannot be decoded
    int read(AudioBlock& block);

private:
    struct State;
    std::unique_ptr<State> mState;
};

} // namespace varno

#endif
