#ifndef VARNO_AUDIOFILE_SNDFILE_H
#define VARNO_AUDIOFILE_SNDFILE_H

#include "AudioFile/Format.h"
#include "AudioFile/Metadata.h"

#include <memory>
#include <optional>
#include <sndfile.h>

namespace varno {

struct SndfileCloser {
    void operator()(SNDFILE* file) const { sf_close(file); }
};

/// Owns an open file of libsndfile and closes it.
using SndfileOwner = std::unique_ptr<SNDFILE, SndfileCloser>;

/// The format of a file that libsndfile has opened.
AudioFormat audioFormatOf(const SF_INFO& info);

/// The record with which libsndfile opens a file of this format for writing; nothing where it cannot write
/// one.
std::optional<SF_INFO> sndfileInfoOf(const AudioFormat& format);

/// Whether libsndfile writes files of this format, channel count and sample rate. Opens such a file in
/// memory.
bool canWrite(const AudioFormat& format);

/// The metadata that libsndfile reads, which is everything but the chunks. @param file open for reading
FileMetadata readMetadata(SNDFILE* file, int channels);

/// Sets text and channel map of a file that has just been opened for writing.
/// @return whether the container holds all of the text
bool writeMetadata(SNDFILE* file, Container container, const FileMetadata& metadata);

/// Lets libsndfile write to an open file of the system and keeps the first error: libsndfile does not report
/// every failed write, above all none while it closes a file. One thread at a time.
class SndfileSink {
public:
    /// @param descriptor open for reading and writing; stays the caller's
    explicit SndfileSink(int descriptor)
        : mDescriptor(descriptor) {}

    /// Opens the file for writing through this sink, which must outlive it. @return null where libsndfile
    /// refuses
    SndfileOwner open(SF_INFO& info);

    /// The system's number of the first error, 0 if there was none.
    int error() const { return mError; }

private:
    static sf_count_t length(void* user);
    static sf_count_t seek(sf_count_t offset, int whence, void* user);
    static sf_count_t read(void* data, sf_count_t count, void* user);
    static sf_count_t write(const void* data, sf_count_t count, void* user);
    static sf_count_t tell(void* user);

    sf_count_t remember(sf_count_t result);

    int mDescriptor;
    int mError = 0;
};

} // namespace varno

#endif
