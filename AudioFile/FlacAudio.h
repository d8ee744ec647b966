#ifndef VARNO_AUDIOFILE_FLACAUDIO_H
#define VARNO_AUDIOFILE_FLACAUDIO_H

#include "AudioFile/VirtualFile.h"

#include <cstdint>
#include <string>

namespace varno {

/// Lets libsndfile read a FLAC file as one without tags, pictures and cue sheets: it refuses files in which
/// they are damaged or too many, although the samples can be read. One thread at a time.
class FlacAudio final : VirtualFile {
public:
    /// @param descriptor open for reading; stays the caller's @param mostBytes of metadata that is skipped
    FlacAudio(int descriptor, std::int64_t mostBytes);

    /// Opens the samples through this object, which must outlive the result. @return null where the file is
    /// no FLAC file or libsndfile refuses it
    SndfileOwner open(SF_INFO& info);

private:
    sf_count_t length() noexcept override { return mBytes; }
    sf_count_t seek(sf_count_t offset, int whence) noexcept override;
    sf_count_t read(void* data, sf_count_t count) noexcept override;
    sf_count_t tell() noexcept override { return mPosition; }

    int mDescriptor;
    std::string mStart;             // magic and stream information, marked as the last block
    std::int64_t mSkippedBytes = 0; // of the file after these
    std::int64_t mBytes = 0;        // as libsndfile sees the file
    std::int64_t mPosition = 0;
};

} // namespace varno

#endif
