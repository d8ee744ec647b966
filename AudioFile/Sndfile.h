#ifndef VARNO_AUDIOFILE_SNDFILE_H
#define VARNO_AUDIOFILE_SNDFILE_H

#include "AudioFile/Format.h"
#include "AudioFile/Metadata.h"
#include "AudioFile/VirtualFile.h"

#include <optional>
#include <sndfile.h>
#include <vector>

namespace varno {

/// The format of a file that libsndfile has opened.
AudioFormat audioFormatOf(const SF_INFO& info);

/// The record with which libsndfile opens a file of this format for writing; nothing where it cannot write
/// one.
std::optional<SF_INFO> sndfileInfoOf(const AudioFormat& format);

/// Whether libsndfile writes files of this format, channel count and sample rate. Opens such a file in
/// memory.
bool canWrite(const AudioFormat& format);

/// The cue points of a file. @param file open for reading
std::vector<CuePoint> readCues(SNDFILE* file);

/// The channel map of a file: libsndfile's SF_CHANNEL_MAP_ numbers, one per channel; empty where it has none.
/// @param file open for reading
std::vector<int> readChannelMap(SNDFILE* file, int channels);

/// @param file open for writing, without samples so far
void writeChannelMap(SNDFILE* file, std::vector<int> map);

/// Lets libsndfile read an open file of the system without a claim to its descriptor, which libsndfile closes
/// where it cannot open a file. It begins at the start, whatever the file's position. One thread at a time.
class SndfileSource final : public VirtualFile {
public:
    /// Where libsndfile believes the file to end before it has read so far: where it does, or so far behind
    /// that it never gets there. It reads no further than the length that it estimates from the size of an
    /// MPEG audio file without a stated length.
    enum class End { kShown, kFar };

    /// @param descriptor open for reading, able to seek; stays the caller's
    explicit SndfileSource(int descriptor, End end = End::kShown)
        : VirtualFile(SFM_READ),
          mDescriptor(descriptor),
          mEnd(end) {}

    /// The system's number of the first error, 0 if there was none.
    int error() const { return mError; }

private:
    sf_count_t length() noexcept override;
    sf_count_t seek(sf_count_t offset, int whence) noexcept override;
    sf_count_t read(void* data, sf_count_t count) noexcept override;
    sf_count_t tell() noexcept override { return mPosition; }

    int mDescriptor;
    End mEnd;
    sf_count_t mPosition = 0;
    int mError = 0;
};

/// Lets libsndfile write to an open file of the system and keeps the first error: libsndfile does not report
/// every failed write, above all none while it closes a file. One thread at a time.
class SndfileSink final : public VirtualFile {
public:
    /// @param descriptor open for reading and writing; stays the caller's
    explicit SndfileSink(int descriptor)
        : VirtualFile(SFM_WRITE),
          mDescriptor(descriptor) {}

    /// The system's number of the first error, 0 if there was none.
    int error() const { return mError; }

private:
    sf_count_t length() noexcept override;
    sf_count_t seek(sf_count_t offset, int whence) noexcept override;
    sf_count_t read(void* data, sf_count_t count) noexcept override;
    sf_count_t write(const void* data, sf_count_t count) noexcept override;
    sf_count_t tell() noexcept override;

    sf_count_t remember(sf_count_t result);

    int mDescriptor;
    int mError = 0;
};

} // namespace varno

#endif
